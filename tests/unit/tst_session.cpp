// The session on the composed window over fake views: the file and its
// backups, the recorder following the tabs, the page that offers a crashed
// session back; and the hand-over between two starts of the program.
#include "platform/instance/HandOver.h"
#include "platform/instance/OneProgram.h"
#include "session/SessionFiles.h"
#include "session/SessionRecorder.h"
#include "support/FakeApp.h"
#include "support/Files.h"
#include "support/TestMain.h"

#include <QFile>
#include <QLocalSocket>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <unistd.h>

using namespace platform;

namespace {

SessionState sessionOf(std::initializer_list<SessionTab> tabs, int current)
{
    SessionState state;
    state.tabs = tabs;
    state.current = current;
    return state;
}

QStringList writesOf(BrowserView* view)
{
    return static_cast<FakeBrowserView*>(view)->documentFacet.calls.filter(
        QRegularExpression("^write "));
}

NavigationRequest formTo(const QString& address)
{
    return {QUrl(address), NavigationRequest::Kind::Form, true};
}

} // namespace

class SessionTest : public QObject
{
    Q_OBJECT
private slots:
    void init() { testsupport::failOnUnexpectedWarnings(); }

    void sessionFilesAreReadAsUntrustedText()
    {
        const SessionState state = sessionOf(
            {{"http://a.test/", "A \"quoted\" <title>"}, {{}, {}}, {"http://b.test/?q=1,2", "B"}},
            2);
        QCOMPARE(readSession(sessionText(state)), state);
        QCOMPARE(readSession(sessionText(state))->pages().size(), 2);

        for (const QByteArray& text :
             {QByteArray(), QByteArray("{"), QByteArray("[1,2]"), QByteArray("{\"tabs\":[]}"),
              QByteArray("{\"qub-browser-session\":2,\"tabs\":[]}"),
              QByteArray("{\"qub-browser-session\":1,\"tabs\":{}}")})
            QVERIFY2(!readSession(text), text.constData());

        // A shown tab that is not there is no shown tab; wrong types read as
        // empty; a too long address keeps its place but is never opened.
        QByteArray hostile = "{\"qub-browser-session\":1,\"current\":7,\"tabs\":[{\"address\":5},"
                             "\"x\",{\"address\":\"" +
                             QByteArray(SessionState::maxAddress + 1, 'a') +
                             "\"},{\"address\":\"http://c.test/\",\"title\":\"" +
                             QByteArray(SessionState::maxTitle + 9, 't') + "\"}]}";
        std::optional<SessionState> read = readSession(hostile);
        QVERIFY(read);
        QCOMPARE(read->current, -1);
        QCOMPARE(read->tabs.size(), 4);
        QCOMPARE(read->pages().size(), 1);
        QCOMPARE(read->pages()[0].title.size(), SessionState::maxTitle);

        QByteArray many = "{\"qub-browser-session\":1,\"current\":1500,\"tabs\":[";
        for (int n = 0; n < 1500; ++n)
            many += "{\"address\":\"http://x.test/\"},";
        many.chop(1);
        read = readSession(many + "]}");
        QCOMPARE(read->tabs.size(), SessionState::maxTabs);
        QCOMPARE(read->current, -1);
    }

    // A backup is taken at a run's first write and then once the interval
    // has passed; a new run goes on from what is on disk.
    void versionsRotateAndTheSessionStays()
    {
        QTemporaryDir dir;
        const QString folder = dir.path() + '/';
        {
            SessionFiles files(folder, std::chrono::milliseconds(0));
            for (const char* text : {"v1", "v2", "v3", "v4", "v5"})
                QVERIFY(files.write(text));
        }
        SessionFiles files(folder);
        const QList<QByteArray> expected = {"v5", "v4", "v3", "v2"};
        for (int version = 0; version <= SessionFiles::backups; ++version)
            QCOMPARE(readFile(files.fileName(version)), expected[version]);
        QVERIFY(files.write("v6"));
        QCOMPARE(readFile(files.fileName(0)), "v6");
        QCOMPARE(readFile(files.fileName(1)), "v5");
        QCOMPARE(readFile(files.fileName(3)), "v3");
        QVERIFY(!QFile::exists(folder + "Session.4.json"));
        QVERIFY(files.write("v7"));
        QCOMPARE(readFile(files.fileName(0)), "v7");
        QCOMPARE(readFile(files.fileName(1)), "v5");
        QCOMPARE(QFile::permissions(files.fileName(0)) & 0x0077, QFile::Permissions());
    }

    // The tabs are written as they change, and a clean end says so with the
    // tabs as they stood before shut-down closed them.
    void theRecorderFollowsTheTabs()
    {
        FakeApp app({"default.tb2", "lng.ini"});
        QVERIFY(app.window->start(QStringLiteral("http://one.test/")));
        MainWindow::Parts parts = app.window->parts();
        const SessionFiles& files = parts.session.files();
        QTRY_COMPARE(files.read(0), sessionOf({{"http://one.test/", {}}}, 0));

        parts.tabs.newTab(QStringLiteral("http://two.test/"), false);
        auto* two = static_cast<FakeBrowserView*>(parts.tabs.view(2));
        two->setTitle("Two");
        emit two->titleChanged("Two");
        QTRY_COMPARE(files.read(0),
                     sessionOf({{"http://one.test/", {}}, {"http://two.test/", "Two"}}, 0));
        parts.tabs.activateTab(2);
        QTRY_COMPARE(files.read(0)->current, 1);
        parts.tabs.closeTab(1);
        QTRY_COMPARE(files.read(0), sessionOf({{"http://two.test/", "Two"}}, 0));
        // Changes within a minute of the run's first write take no backup.
        QVERIFY(!files.read(1));

        app.dialogs.answers = {Dialogs::Answer::Yes};
        app.window->quit();
        SessionState clean = sessionOf({{"http://two.test/", "Two"}}, 0);
        clean.cleanExit = true;
        QCOMPARE(files.read(0), clean);
        app.restart();
        QVERIFY(app.window->start({}));
        QVERIFY(writesOf(app.window->parts().tabs.view(1)).isEmpty());
    }

    // After a run that did not end cleanly the first tab offers its pages;
    // nothing is written until the user chose, only the offer's own view
    // can choose, and a restore opens the chosen pages of the version shown.
    void aCrashedSessionIsOfferedBack()
    {
        FakeApp app({"default.tb2", "lng.ini"});
        SessionFiles crashed(app.appDir, std::chrono::milliseconds(0));
        QVERIFY(crashed.write(sessionText(sessionOf({{"http://old.test/", "Old"}}, 0))));
        const QByteArray latest = sessionText(sessionOf({{"http://a.test/", "<b>A</b>"},
                                                         {{}, {}},
                                                         {"http://b.test/", "B"},
                                                         {"http://c.test/", "C"}},
                                                        2));
        QVERIFY(crashed.write(latest));
        QVERIFY(app.window->start({}));
        MainWindow::Parts parts = app.window->parts();
        BrowserView* offer = parts.tabs.view(1);
        QStringList writes = writesOf(offer);
        QCOMPARE(writes.size(), 1);
        QVERIFY(writes[0].contains("http://c.test/") && writes[0].contains("&lt;b&gt;A&lt;/b&gt;"));
        QVERIFY(writes[0].contains(">Restore</button>") &&
                writes[0].contains(">Start new</button>"));
        QVERIFY(parts.session.restorePage().pending());
        // The new run's opening of its first tab is not written over the
        // session on offer.
        QTest::qWait(2 * SessionRecorder::delayMs);
        QCOMPARE(readFile(crashed.fileName(0)), latest);

        // Another tab's page cannot choose for the user.
        parts.tabs.newTab(QStringLiteral("http://evil.test/"), false);
        QVERIFY(app.factory.allows(*parts.tabs.view(2),
                                   formTo("http://restore.invalid/?version=0&tab=0&do=restore")));
        QVERIFY(!app.factory.allows(
            *offer, {QUrl("http://restore.invalid/?show=1"), NavigationRequest::Kind::Link, true}));
        QTRY_COMPARE(writesOf(offer).size(), 2);
        QVERIFY(writesOf(offer)[1].contains("http://old.test/"));
        QCOMPARE(readFile(crashed.fileName(0)), latest);

        // Pages 1 and 2 of the latest: b.test, shown last time, comes to the front.
        QVERIFY(!app.factory.allows(
            *offer, formTo("http://restore.invalid/?version=0&tab=1&tab=2&tab=9&do=restore")));
        QTRY_VERIFY(!parts.session.restorePage().pending());
        QCOMPARE(offer->locationUrl(), "http://b.test/");
        QCOMPARE(parts.tabs.tabViews().size(), size_t(3));
        QCOMPARE(parts.tabs.currentView(), offer);
        // c.test stands for its page and loads only when shown.
        auto* c = static_cast<FakeBrowserView*>(parts.tabs.tabViews()[2]);
        QCOMPARE(c->locationUrl(), "http://c.test/");
        QCOMPARE(c->title(), "C");
        QVERIFY(c->calls.filter("navigate").isEmpty());
        parts.tabs.activateTab(c->index());
        QCOMPARE(c->calls.filter("navigate"), QStringList{"navigate http://c.test/"});
        parts.tabs.activateTab(offer->index());
        QTRY_COMPARE(readFile(crashed.fileName(1)), latest);
        QCOMPARE(crashed.read(0)->pages().size(), 3);
        // Once chosen, the same request is a navigation like any other.
        QVERIFY(app.factory.allows(*offer,
                                   formTo("http://restore.invalid/?version=0&tab=0&do=restore")));

        // Going elsewhere from the offer counts as starting new.
        QVERIFY(crashed.write(latest));
        app.restart();
        // The first window's policies went with it: only the new one's are asked.
        QCOMPARE(app.factory.navigations.size(), size_t(2));
        QVERIFY(app.window->start({}));
        QVERIFY(app.window->parts().session.restorePage().pending());
        QVERIFY(
            app.factory.allows(*app.window->parts().tabs.view(1),
                               {QUrl("http://typed.test/"), NavigationRequest::Kind::Typed, true}));
        QVERIFY(!app.window->parts().session.restorePage().pending());
    }

    // Last pages wait to be shown; with RESTOREINBACKGROUND=1 they load one
    // at a time, each once the one before has loaded.
    void restoredTabsLoadInTheBackgroundOnlyWhenAsked()
    {
        FakeApp app({"default.tb2", "lng.ini"});
        const QByteArray lastPages = "http://a.test/\r\nhttp://b.test/\r\nhttp://c.test/\r\n";
        const auto loaded = [&app](int index, const char* address) {
            return static_cast<FakeBrowserView*>(app.window->parts().tabs.view(index))
                ->calls.contains(QStringLiteral("navigate ") + address);
        };
        writeFile(app.appDir + "LastPages.ini", lastPages);
        QVERIFY(app.window->start({}));
        QVERIFY(loaded(3, "http://c.test/"));
        QCoreApplication::processEvents();
        QVERIFY(!loaded(1, "http://a.test/") && !loaded(2, "http://b.test/"));

        app.restart();
        writeFile(app.appDir + "Browser.ini", "[QUB-BROWSER]\r\nRESTOREINBACKGROUND=1\r\n");
        writeFile(app.appDir + "LastPages.ini", lastPages);
        QVERIFY(app.window->start({}));
        auto* first = static_cast<FakeBrowserView*>(app.window->parts().tabs.view(1));
        QVERIFY(loaded(1, "http://a.test/"));
        first->setReadyState(BrowserView::Loading);
        QCoreApplication::processEvents();
        QVERIFY(!loaded(2, "http://b.test/"));
        first->setReadyState(BrowserView::Complete);
        emit first->documentComplete();
        QVERIFY(loaded(2, "http://b.test/"));
        QCOMPARE(app.window->parts().state.currentTab, 3);
    }

    void handOverMessagesAreCheckedWhole()
    {
        for (const QString& address : {QString(), QStringLiteral("http://ü.test/a b?\"x\"")})
            QCOMPARE(handover::addressOf(handover::message(address)), address);
        const QByteArray good = handover::message("http://a.test/");
        QVERIFY(!handover::addressOf(good.chopped(1)));
        QVERIFY(!handover::addressOf("qub-browser hand-over 2\nhttp://a.test/\n"));
        QVERIFY(!handover::addressOf(good + "more\n"));
        QVERIFY(!handover::addressOf(good.chopped(1) + "\x1b[2J\n"));
        QVERIFY(!handover::addressOf(good.chopped(1) + "\xff\xfe\n"));
        QVERIFY(handover::message(QString(handover::maxMessage, 'a')).isEmpty());
    }

    // Two programs over one runtime folder: the later hands over and the
    // first opens; a garbled message or another user's socket does nothing.
    void laterStartsHandOverToTheFirst()
    {
        QTemporaryDir dir;
        QFile::setPermissions(dir.path(), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        OneProgram first(dir.path());
        QCOMPARE(first.begin({}), OneProgram::Start::First);
        QSignalSpy handed(&first, &OneProgram::addressHandedOver);
        {
            OneProgram second(dir.path());
            QCOMPARE(second.begin("http://later.test/"), OneProgram::Start::HandedOver);
            QCOMPARE(OneProgram(dir.path()).begin({}), OneProgram::Start::HandedOver);
        }
        QTRY_COMPARE(handed.size(), 2);
        QCOMPARE(handed[0][0].toString(), "http://later.test/");
        QCOMPARE(handed[1][0].toString(), QString());

        QLocalSocket garbled;
        garbled.connectToServer(first.socketPath());
        QVERIFY(garbled.waitForConnected());
        garbled.write("qub-browser hand-over 1\nhttp://a.test/\nhttp://b.test/\n");
        QTRY_COMPARE(garbled.state(), QLocalSocket::UnconnectedState);
        QCOMPARE(handed.size(), 2);

        if (geteuid() == 0) {
            QVERIFY(::chown(qPrintable(first.socketPath()), 65534, 65534) == 0);
            OneProgram stranger(dir.path());
            QCOMPARE(stranger.begin("http://trap.test/"), OneProgram::Start::Refused);
            QVERIFY(stranger.problem().contains("another user"));
            QTest::qWait(100);
            QCOMPARE(handed.size(), 2);
        }
    }
};

QUB_TEST_MAIN(SessionTest)
#include "tst_session.moc"
