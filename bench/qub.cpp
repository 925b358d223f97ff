// QUB-BROWSER under the benchmark: the real main window, started the way the
// program starts, with the page on its command line. Prints what floor.cpp
// prints, opening its tabs with the program's own new-tab operation. With
// "closeall" after the number of tabs it prints instead how long Close All
// takes once they have all loaded, until every view is gone.
#include "BenchPage.h"
#include "ViewLoads.h"
#include "core/Keys.h"
#include "program/Program.h"

#include <QApplication>
#include <QTimer>

namespace {

// Clicks Close All as the user would and reports when every tab's view is
// gone and the window answers again.
void closeAll(MainWindow& window)
{
    TabStrip& strip = window.parts().tabs;
    auto remaining = std::make_shared<int>(0);
    const qint64 started = bench::now();
    for (platform::BrowserView* view : strip.tabViews()) {
        ++*remaining;
        QObject::connect(view, &QObject::destroyed, [remaining, started] {
            if (--*remaining == 0)
                QTimer::singleShot(0, [started] {
                    bench::report("closeall", bench::now() - started);
                    QCoreApplication::exit(0);
                });
        });
    }
    commandbar::CommandBar& bar = window.parts().bar;
    bar.reportClick(bar.tool(QLatin1String(key::fileMenu), QLatin1String(key::closeAll)));
}

} // namespace

int main(int argc, char** argv)
{
    Program::prepare();
    QApplication app(argc, argv);
    const QStringList args = QApplication::arguments();
    if (args.size() < 3)
        return 2;
    const QString url = args[1];
    const int tabs = args[2].toInt();
    const bool closing = args.size() > 3 && args[3] == QLatin1String("closeall");

    Program program;
    MainWindow& window = program.window();
    int pending = 0;
    qint64 tabsStarted = 0;
    QObject::connect(&window.parts().tabs, &TabStrip::changed, &app, [&](const TabChange& change) {
        platform::BrowserView* view = change.view;
        if (change.kind != TabChange::Kind::Inserted || view->index() < 2 || pending == 0)
            return;
        bench::whenLoaded(view, [&] {
            if (--pending != 0)
                return;
            if (!closing)
                bench::report("tabs", bench::now() - tabsStarted);
            QTimer::singleShot(2000, &app, [&] {
                if (closing) {
                    closeAll(window);
                    return;
                }
                bench::report("memory10", bench::treePssKiB());
                // exit(), not quit(): quit() would close the window
                // and ask the exit question.
                QCoreApplication::exit(0);
            });
        });
    });
    if (!program.start(url))
        return 1;
    bench::whenLoaded(window.parts().tabs.view(1), [&] {
        bench::report("loaded", bench::now());
        QTimer::singleShot(2000, &app, [&] {
            if (!closing)
                bench::report("memory1", bench::treePssKiB());
            tabsStarted = bench::now();
            pending = tabs;
            for (int i = 0; i < tabs; ++i)
                window.parts().tabs.newTab(url, true);
        });
    });
    // Ends without the exit question: nothing is saved.
    return program.run();
}
