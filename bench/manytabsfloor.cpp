// The floor of bench/manytabs.cpp: a bare QWebEngineView program that opens
// every tab at once and loads it. One of:
//   restore URL N               N tabs on URL at the start, the last in
//                               front; "ready <epoch ms>" once that one has
//                               loaded and the window answers;
//   memory URL N WAIT           N tabs, each loaded in front; WAIT s after
//                               the last load, "memory <KiB>", then a new tab
//                               on URL and "fresh <ms>" until it has loaded;
//   cpu URL ANIMATED N WAIT     URL in front, N background tabs on ANIMATED;
//                               WAIT s after the last load, "cpu <ms>" the
//                               process tree used over 60 s.
#include "BenchPage.h"

#include <QApplication>
#include <QScreen>
#include <QTabWidget>
#include <QTimer>
#include <QWebEngineView>

namespace {

// Calls done() once every view has loaded.
void whenAllLoaded(const std::vector<QWebEngineView*>& views, std::function<void()> done)
{
    auto pending = std::make_shared<size_t>(views.size());
    for (QWebEngineView* view : views)
        QObject::connect(
            view, &QWebEngineView::loadFinished, view,
            [pending, done] {
                if (--*pending == 0)
                    done();
            },
            Qt::SingleShotConnection);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication app(argc, argv);
    const QStringList args = QApplication::arguments();
    const QString mode = args.value(1);
    if (args.size() < 4)
        return 2;
    const QUrl url = QUrl::fromUserInput(args[2]);
    QTabWidget window;
    // As the program does: without a window manager a maximise request is
    // not honoured, so the window is given the screen's size itself.
    window.setGeometry(window.screen()->availableGeometry());
    window.showMaximized();
    const auto open = [&](const QUrl& address, bool inFront) {
        auto* view = new QWebEngineView;
        const int index = window.addTab(view, QStringLiteral("tab"));
        if (inFront)
            window.setCurrentIndex(index);
        view->load(address);
        return view;
    };
    std::vector<QWebEngineView*> views;

    if (mode == QLatin1String("restore")) {
        for (int i = 0; i < args[3].toInt(); ++i)
            views.push_back(open(url, true));
        QObject::connect(
            views.back(), &QWebEngineView::loadFinished, &app,
            [] {
                QTimer::singleShot(0, [] {
                    bench::report("ready", bench::now());
                    QApplication::quit();
                });
            },
            Qt::SingleShotConnection);
    } else if (mode == QLatin1String("memory") && args.size() == 5) {
        const int wait = args[4].toInt();
        for (int i = 0; i < args[3].toInt(); ++i)
            views.push_back(open(url, true));
        whenAllLoaded(views, [&, wait] {
            QTimer::singleShot(wait * 1000, [&] {
                bench::report("memory", bench::treePssKiB());
                const qint64 started = bench::now();
                QWebEngineView* fresh = open(url, true);
                QObject::connect(fresh, &QWebEngineView::loadFinished, &app, [started] {
                    bench::report("fresh", bench::now() - started);
                    QApplication::quit();
                });
            });
        });
    } else if (mode == QLatin1String("cpu") && args.size() == 6) {
        const QUrl animated = QUrl::fromUserInput(args[3]);
        const int wait = args[5].toInt();
        open(url, true);
        for (int i = 0; i < args[4].toInt(); ++i)
            views.push_back(open(animated, false));
        whenAllLoaded(views, [wait] {
            QTimer::singleShot(wait * 1000, [] {
                const qint64 before = bench::treeCpuMs();
                QTimer::singleShot(60000, [before] {
                    bench::report("cpu", bench::treeCpuMs() - before);
                    QApplication::quit();
                });
            });
        });
    } else {
        return 2;
    }
    return QApplication::exec();
}
