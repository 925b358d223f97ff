// QUB-BROWSER under the benchmark: the real main window, started the way the
// program starts, with the page on its command line. Prints what floor.cpp
// prints, opening its tabs with the program's own new-tab operation.
#include "BenchPage.h"
#include "app/MainWindow.h"
#include "platform/AppDir.h"
#include "platform/Dialogs.h"
#include "platform/Shell.h"
#include "platform/engine/WebEngineViewFactory.h"

#include <QApplication>

namespace {

// Calls done() once, when view has finished loading its page.
void whenLoaded(platform::BrowserView* view, std::function<void()> done)
{
    auto* watch = new QObject(view);
    QObject::connect(
        view, &platform::BrowserView::progressChanged, watch, [view, watch, done](int progress) {
            if (progress != -1 || view->readyState() != platform::BrowserView::Complete)
                return;
            watch->deleteLater();
            done();
        });
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    QApplication::setApplicationName(QStringLiteral("QUB-BROWSER"));
    QApplication app(argc, argv);
    const QStringList args = QApplication::arguments();
    if (args.size() < 3)
        return 2;
    const QString url = args[1];
    const int tabs = args[2].toInt();

    platform::QtDialogs dialogs;
    platform::DesktopShell shell;
    platform::SystemClock clock;
    platform::WebEngineViewFactory factory(dialogs);
    int code = 0;
    {
        MainWindow window(platform::appDir(), dialogs, shell, factory, clock);
        int pending = 0;
        qint64 tabsStarted = 0;
        QObject::connect(&window.parts().tabs, &TabStrip::viewCreated, &app,
                         [&](platform::BrowserView* view) {
                             if (view->index() < 2)
                                 return;
                             whenLoaded(view, [&] {
                                 if (--pending == 0) {
                                     bench::report("tabs", bench::now() - tabsStarted);
                                     // exit(), not quit(): quit() would close the window and ask
                                     // the exit question.
                                     QCoreApplication::exit(0);
                                 }
                             });
                         });
        if (!window.start(url))
            return 1;
        whenLoaded(window.parts().tabs.view(1), [&] {
            bench::report("loaded", bench::now());
            tabsStarted = bench::now();
            pending = tabs;
            for (int i = 0; i < tabs; ++i)
                window.parts().tabs.newTab(url, true);
        });
        // Ends without the exit question: nothing is saved.
        code = QApplication::exec();
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return code;
}
