// The floor: a bare QWebEngineView program doing what the benchmark asks of
// QUB-BROWSER. Prints "loaded <epoch ms>" when the page has loaded and its
// memory two seconds later, then opens tabs more views on it and prints
// "tabs <ms>" for all of them to load, and the memory two seconds after.
#include "BenchPage.h"

#include <QApplication>
#include <QScreen>
#include <QTabWidget>
#include <QTimer>
#include <QWebEngineView>

int main(int argc, char** argv)
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    const QStringList args = QApplication::arguments();
    if (args.size() < 3)
        return 2;
    const QUrl url = QUrl::fromUserInput(args[1]);
    const int tabs = args[2].toInt();

    QTabWidget window;
    auto* first = new QWebEngineView;
    window.addTab(first, QStringLiteral("first"));
    // As the program does: without a window manager a maximise request is
    // not honoured, so the window is given the screen's size itself.
    window.setGeometry(window.screen()->availableGeometry());
    window.showMaximized();
    int pending = 0;
    qint64 tabsStarted = 0;
    std::function<void()> openTabs;
    QObject::connect(
        first, &QWebEngineView::loadFinished, &app,
        [&] {
            bench::report("loaded", bench::now());
            QTimer::singleShot(2000, &app, [&] { openTabs(); });
        },
        Qt::SingleShotConnection);
    openTabs = [&] {
        bench::report("memory1", bench::treePssKiB());
        tabsStarted = bench::now();
        pending = tabs;
        for (int i = 0; i < tabs; ++i) {
            auto* view = new QWebEngineView;
            QObject::connect(view, &QWebEngineView::loadFinished, &app, [&] {
                if (--pending != 0)
                    return;
                bench::report("tabs", bench::now() - tabsStarted);
                QTimer::singleShot(2000, &app, [] {
                    bench::report("memory10", bench::treePssKiB());
                    QApplication::quit();
                });
            });
            window.setCurrentIndex(window.addTab(view, QStringLiteral("tab")));
            view->load(url);
        }
    };
    first->load(url);
    return QApplication::exec();
}
