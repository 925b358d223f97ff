// A storm of blocked windows: the real main window, with popups blocked, on a
// page that calls window.open a number of times as it loads. Prints how long
// until the running count reached that number, the longest the event loop
// went without answering, from the load and from the first window blocked, and
// how many tabs there are (only the page's own).
#include "BenchPage.h"
#include "LoopWatch.h"
#include "commandbar/Band.h"
#include "commandbar/Tool.h"
#include "core/Keys.h"
#include "program/Program.h"

#include <QApplication>
#include <QTimer>

int main(int argc, char** argv)
{
    Program::prepare();
    QApplication app(argc, argv);
    const QStringList args = QApplication::arguments();
    if (args.size() < 3)
        return 2;
    const QString url = args[1];
    const QString expected = QLatin1Char(':') + args[2];

    Program program;
    MainWindow& window = program.window();
    if (!program.start(QString()))
        return 1;
    commandbar::CommandBar& bar = window.parts().bar;
    commandbar::Tool* stop =
        bar.tool(QLatin1String(key::toolsMenu), QLatin1String(key::stopPopups));
    if (!stop->checked())
        bar.reportClick(stop);
    const commandbar::Tool* count =
        bar.tool(QLatin1String(key::statusBar), QStringLiteral("b_blocked"));

    LoopWatch heart;
    // From the first window blocked to the last: the storm itself, without
    // the page's load.
    std::unique_ptr<LoopWatch> during;
    QObject::connect(&bar, &commandbar::CommandBar::toolChanged, &app,
                     [&](const commandbar::Tool* tool) {
                         if (tool == count && !during)
                             during = std::make_unique<LoopWatch>();
                     });
    const qint64 started = bench::now();
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &app, [&] {
        const platform::BrowserView* page = window.parts().tabs.view(1);
        if (!count->caption().endsWith(expected) ||
            page->readyState() != platform::BrowserView::Complete)
            return;
        bench::report("storm", bench::now() - started);
        bench::report("gap", heart.longestGapMs());
        bench::report("stormgap", during ? during->longestGapMs() : -1);
        bench::report("tabs", static_cast<qint64>(window.parts().tabs.tabViews().size()));
        QCoreApplication::exit(0);
    });
    watch.start(20);
    window.parts().tabs.view(1)->navigate(url);
    return program.run();
}
