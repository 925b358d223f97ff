// The program composed on fake views, with tabs that open, close, navigate,
// change title and come to the front at random until it is killed. At start
// it says which pages it was offered ("offered" and the addresses) and
// restores them all; then, after every change, "state", the time in ms since
// the epoch and the strip as a session, base64. Arguments: the program
// folder and a seed.
#include "session/SessionFiles.h"
#include "support/FakeApp.h"

#include <QApplication>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTimer>
#include <cstdio>

namespace {

void say(const QByteArray& line)
{
    std::fwrite(line.constData(), 1, size_t(line.size()), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

SessionState strip(TabStrip& tabs)
{
    SessionState state;
    for (platform::BrowserView* view : tabs.tabViews()) {
        if (view == tabs.currentView())
            state.current = int(state.tabs.size());
        state.tabs.append({view->locationUrl(), view->title()});
    }
    return state;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    const QStringList args = app.arguments();
    if (args.size() != 3)
        return 2;
    FakeApp program({});
    program.appDir = args[1];
    program.restart();
    QRandomGenerator random(args[2].toUInt());
    if (!program.window->start({}))
        return 2;
    MainWindow::Parts parts = program.window->parts();

    QStringList offered;
    if (parts.session.restorePage().pending()) {
        const QString page = static_cast<FakeBrowserView*>(parts.tabs.view(1))
                                 ->documentFacet.calls.filter(QRegularExpression("^write "))
                                 .constLast();
        static const QRegularExpression address("<span>([^<]*)</span>");
        QString form = QStringLiteral("http://restore.invalid/?version=0&do=restore");
        for (auto match = address.globalMatch(page); match.hasNext();) {
            offered << match.next().captured(1);
            form += QStringLiteral("&tab=%1").arg(offered.size() - 1);
        }
        program.factory.allows(*parts.tabs.view(1),
                               {QUrl(form), platform::NavigationRequest::Kind::Form, true});
        QCoreApplication::processEvents();
    }
    say("offered " + offered.join(' ').toUtf8());
    int pages = 0;
    const auto report = [&] {
        say("state " + QByteArray::number(QDateTime::currentMSecsSinceEpoch()) + ' ' +
            sessionText(strip(parts.tabs)).toBase64());
    };
    report();

    QTimer changes;
    changes.setSingleShot(true);
    QObject::connect(&changes, &QTimer::timeout, [&] {
        const std::vector<platform::BrowserView*> views = parts.tabs.tabViews();
        platform::BrowserView* some = views[random.bounded(int(views.size()))];
        const QString next = QStringLiteral("http://page-%1.test/").arg(++pages);
        switch (random.bounded(5)) {
        case 0:
            parts.tabs.newTab(next, random.bounded(2) == 0);
            break;
        case 1:
            parts.tabs.closeTab(some->index());
            break;
        case 2:
            some->navigate(next);
            break;
        case 3:
            static_cast<FakeBrowserView*>(some)->setTitle(QStringLiteral("Title %1").arg(pages));
            emit some->titleChanged(some->title());
            break;
        default:
            parts.tabs.activateTab(some->index());
        }
        report();
        changes.start(int(random.bounded(30, 300)));
    });
    changes.start(0);
    return QApplication::exec();
}
