// QUB-BROWSER with many tabs, started the way the program starts. One of:
//   restore                     the last pages of the program folder come
//                               back; prints "ready <epoch ms>" once the tab
//                               in front has loaded and the window answers;
//   memory URL N WAIT           N tabs on URL, each loaded in front; WAIT s
//                               after the last load (past the discard time)
//                               prints "memory <KiB>" of the process tree and
//                               "discarded <tabs>", then shows tab 2 again and
//                               prints "reshow <ms>" until it has loaded;
//   cpu URL ANIMATED N WAIT     URL in front and N background tabs on
//                               ANIMATED; WAIT s after the last load (past the
//                               freeze time) prints "frozen <tabs>" and "cpu
//                               <ms>" the process tree used over 60 s.
// The times a tab rests after come from the folder's Browser.ini.
#include "BenchPage.h"
#include "ViewLoads.h"
#include "program/Program.h"

#include <QApplication>
#include <QTimer>

namespace {

using platform::BrowserView;
using State = platform::LifecycleFacet::State;

// Opens tabs with open(), and once all have loaded and wait seconds more
// have passed, calls then().
void afterLoads(int tabs, const std::function<BrowserView*()>& open, int wait,
                std::function<void()> then)
{
    std::vector<BrowserView*> opened;
    for (int i = 0; i < tabs; ++i)
        opened.push_back(open());
    bench::whenAllLoaded(opened,
                         [wait, then = std::move(then)] { QTimer::singleShot(wait * 1000, then); });
}

int count(const TabStrip& tabs, State state)
{
    int found = 0;
    for (BrowserView* view : tabs.tabViews())
        found += view->lifecycle().state() == state ? 1 : 0;
    return found;
}

// exit(), not quit(): quit() would close the window and ask the exit question.
void end()
{
    QCoreApplication::exit(0);
}

} // namespace

int main(int argc, char** argv)
{
    Program::prepare();
    QApplication app(argc, argv);
    const QStringList args = QApplication::arguments();
    const QString mode = args.value(1);
    Program program;
    TabStrip& tabs = program.window().parts().tabs;

    if (mode == QLatin1String("restore")) {
        if (!program.start({}))
            return 1;
        bench::whenLoaded(tabs.currentView(), [] {
            QTimer::singleShot(0, [] {
                bench::report("ready", bench::now());
                end();
            });
        });
    } else if (mode == QLatin1String("memory") && args.size() == 5) {
        const QString url = args[2];
        const int all = args[3].toInt();
        const int wait = args[4].toInt();
        if (!program.start(url))
            return 1;
        bench::whenLoaded(tabs.view(1), [&tabs, url, all, wait] {
            afterLoads(
                all - 1, [&tabs, url] { return tabs.view(tabs.newTab(url, true)); }, wait,
                [&tabs] {
                    bench::report("memory", bench::treePssKiB());
                    bench::report("discarded", count(tabs, State::Discarded));
                    const qint64 shown = bench::now();
                    bench::whenLoaded(tabs.view(2), [shown] {
                        bench::report("reshow", bench::now() - shown);
                        end();
                    });
                    tabs.activateTab(2);
                });
        });
    } else if (mode == QLatin1String("cpu") && args.size() == 6) {
        const QString url = args[2];
        const QString animated = args[3];
        const int background = args[4].toInt();
        const int wait = args[5].toInt();
        if (!program.start(url))
            return 1;
        bench::whenLoaded(tabs.view(1), [&tabs, animated, background, wait] {
            afterLoads(
                background, [&tabs, animated] { return tabs.view(tabs.newTab(animated, false)); },
                wait,
                [&tabs] {
                    bench::report("frozen", count(tabs, State::Frozen));
                    const qint64 before = bench::treeCpuMs();
                    QTimer::singleShot(60000, [before] {
                        bench::report("cpu", bench::treeCpuMs() - before);
                        end();
                    });
                });
        });
    } else {
        return 2;
    }
    // Ends without the exit question: nothing is saved.
    return program.run();
}
