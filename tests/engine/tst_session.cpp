// A session on the real engine: the offer after a crash answers its own
// buttons and opens what was chosen, closed tabs come back from the Blocked
// Windows list and from Ctrl+Shift+T, and tabs out of sight rest.
#include "session/SessionFiles.h"
#include "support/EngineApp.h"
#include "support/Files.h"
#include "support/LocalHttpServer.h"
#include "support/TestMain.h"

#include <QAction>
#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>
#include <QWebEnginePage>
#include <QWebEngineView>

using namespace platform;

class SessionEngineTest : public QObject
{
    Q_OBJECT
    LocalHttpServer server;

private slots:
    void initTestCase()
    {
        for (const char* name : {"one", "two", "three", "four"})
            server.setPage(QStringLiteral("/%1.html").arg(name), titled(name));
        server.setPage("/form.html", titled("form", "<input style='position:absolute;left:0;top:0;"
                                                    "width:300px;height:60px'>"));
        server.setPage("/sound.html",
                       titled("sound", "<body style='height:100vh'><script>onclick = () => {"
                                       "const c = new AudioContext(), o = c.createOscillator();"
                                       "o.connect(c.destination); o.start();"
                                       "document.title = 'playing'; };</script>"));
        // A page's own input event is not the user's edit.
        server.setPage("/claims.html",
                       titled("claims", "<input><script>const i = document.querySelector("
                                        "'input'); i.value = 'x'; i.dispatchEvent(new "
                                        "Event('input', {bubbles: true}));</script>"));
    }
    void init() { testsupport::failOnUnexpectedWarnings(); }

    void aCrashedSessionComesBackFromItsPage()
    {
        EngineApp app;
        SessionState crashed;
        for (const char* name : {"one", "two", "three"})
            crashed.tabs.append({server.url(QStringLiteral("/%1.html").arg(name)), name});
        crashed.current = 2;
        QVERIFY(SessionFiles(app.appDir).write(sessionText(crashed)));
        QVERIFY(app.window->start({}));
        BrowserView* offer = app.window->parts().tabs.view(1);
        QTRY_VERIFY_WITH_TIMEOUT(loaded(offer, "Restore Session"), 20000);
        QCOMPARE(ask(offer, "document.querySelectorAll('input[type=checkbox]:checked').length"), 3);

        // "two" unticked, then the user's click on "Restore".
        ask(offer, "document.querySelector('input[value=\"1\"]').checked = false; "
                   "document.querySelector('button[value=restore]').click(); 0");
        QTRY_VERIFY_WITH_TIMEOUT(loaded(offer, "one"), 20000);
        const std::vector<BrowserView*> tabs = app.window->parts().tabs.tabViews();
        QCOMPARE(tabs.size(), size_t(2));
        QTRY_VERIFY_WITH_TIMEOUT(loaded(tabs[1], "three"), 20000);
        QCOMPARE(app.window->parts().tabs.currentView(), tabs[1]);
        QCOMPARE(server.requests("/two.html"), 0);
        // Recording goes on from the restored tabs; the crashed session is
        // the first backup.
        const SessionFiles& files = app.window->parts().session.files();
        QTRY_COMPARE(files.read(0)->pages().size(), 2);
        QCOMPARE(files.read(1), crashed);
    }

    void closedTabsAreOneClickAway()
    {
        EngineApp app;
        MainWindow& w = *app.window;
        QVERIFY(app.startAt(server.url("/one.html"), "one"));
        MainWindow::Parts parts = w.parts();
        for (const char* name : {"two", "three", "four"}) {
            const int index =
                parts.tabs.newTab(server.url(QStringLiteral("/%1.html").arg(name)), true);
            QTRY_VERIFY_WITH_TIMEOUT(loaded(parts.tabs.view(index), name), 20000);
        }
        for (int n = 0; n < 3; ++n)
            parts.bar.reportClick(parts.bar.tool(key::fileMenu, key::closeTab));
        QCOMPARE(parts.tabs.tabViews().size(), size_t(1));

        const commandbar::Band* list = parts.bar.band("sub_Blocked");
        QCOMPARE(list->count(), 3);
        const QStringList closed = {"four", "three", "two"};
        for (int n = 0; n < 3; ++n) {
            QCOMPARE(list->at(n)->caption(), closed[n]);
            parts.bar.reportClick(list->at(n));
            QTRY_VERIFY_WITH_TIMEOUT(loaded(parts.tabs.currentView(), closed[n]), 20000);
        }
        QCOMPARE(parts.tabs.tabViews().size(), size_t(4));

        // The skin's Ctrl+Shift+T, twice: the last closed, then the one before.
        w.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&w));
        for (const char* name : {"two", "three"}) {
            QTest::keyClick(&w, Qt::Key_T, Qt::ControlModifier | Qt::ShiftModifier);
            QTRY_VERIFY_WITH_TIMEOUT(loaded(parts.tabs.currentView(), name), 20000);
        }
        QCOMPARE(parts.tabs.tabViews().size(), size_t(6));
    }

    // Out of sight for a second a tab is frozen, for four discarded; shown
    // again it loads its page anew. A tab that plays sound, holds an edited
    // form or is being downloaded from keeps its page.
    void tabsOutOfSightRest()
    {
        EngineApp app;
        writeFile(app.appDir + "Browser.ini",
                  "[QUB-BROWSER]\r\nFREEZEAFTER=1\r\nDISCARDAFTER=4\r\n");
        QVERIFY(app.startAt(server.url("/one.html"), "one"));
        TabStrip& tabs = app.window->parts().tabs;
        const auto open = [&](const char* path, const char* title) {
            const int index = tabs.newTab(server.url(QLatin1String(path)), true);
            return QTest::qWaitFor([&] { return loaded(tabs.view(index), title); }, 20000)
                       ? app.engineView(index)
                       : nullptr;
        };
        WebEngineBrowserView* form = open("/form.html", "form");
        QVERIFY(form);
        clickPage(form, {50, 30});
        QTRY_VERIFY_WITH_TIMEOUT(ask(form, "document.activeElement.tagName") == "INPUT", 20000);
        QTest::keyClicks(form->engineView()->focusProxy(), "kept");
        QTRY_COMPARE_WITH_TIMEOUT(ask(form, "document.querySelector('input').value"), "kept",
                                  20000);
        WebEngineBrowserView* sound = open("/sound.html", "sound");
        QVERIFY(sound);
        clickPage(sound, {50, 50});
        QTRY_VERIFY_WITH_TIMEOUT(sound->engineView()->page()->recentlyAudible(), 20000);

        // A download that never ends.
        QTcpServer endless;
        QVERIFY(endless.listen(QHostAddress::LocalHost));
        connect(&endless, &QTcpServer::newConnection, &endless, [&] {
            QTcpSocket* socket = endless.nextPendingConnection();
            connect(socket, &QTcpSocket::readyRead, socket, [socket] {
                socket->write("HTTP/1.1 200 OK\r\nContent-Type: application/octet-stream\r\n"
                              "Content-Disposition: attachment; filename=big.bin\r\n"
                              "Content-Length: 100000000\r\n\r\n0123456789");
            });
        });
        WebEngineBrowserView* downloading = open("/two.html", "two");
        QVERIFY(downloading);
        QTemporaryDir target;
        app.dialogs.savePaths = {target.filePath("big.bin")};
        downloading->navigate(
            QStringLiteral("http://127.0.0.1:%1/big.bin").arg(endless.serverPort()));
        QTRY_VERIFY_WITH_TIMEOUT(app.factory.downloads().window(), 20000);
        WebEngineBrowserView* plain = open("/claims.html", "claims");
        QVERIFY(plain);

        const QPointer<QWebEngineView> plainDrawnBy = plain->engineView();
        const QPointer<QWebEngineView> formDrawnBy = form->engineView();
        tabs.activateTab(1);
        using State = LifecycleFacet::State;
        QTRY_COMPARE_WITH_TIMEOUT(plain->lifecycle().state(), State::Frozen, 20000);
        QTRY_COMPARE_WITH_TIMEOUT(plain->lifecycle().state(), State::Discarded, 20000);
        // The view that drew the discarded page went with what it drew with.
        QTRY_VERIFY_WITH_TIMEOUT(!plainDrawnBy, 20000);
        QVERIFY(formDrawnBy);
        // The others were out of sight longer, and were asked no later.
        QCOMPARE(form->lifecycle().state(), State::Frozen);
        QCOMPARE(sound->lifecycle().state(), State::Active);
        QCOMPARE(downloading->lifecycle().state(), State::Active);
        QCOMPARE(plain->title(), QStringLiteral("claims"));
        QCOMPARE(plain->locationUrl(), server.url("/claims.html"));

        QSignalSpy reloaded(plain, &BrowserView::documentComplete);
        tabs.activateTab(plain->index());
        QTRY_COMPARE_WITH_TIMEOUT(reloaded.count(), 1, 20000);
        QVERIFY(loaded(plain, "claims"));
        QCOMPARE(plain->lifecycle().state(), State::Active);
        QCOMPARE(plain->locationUrl(), server.url("/claims.html"));
        QVERIFY(plain->engineView()->isVisible());
        QCOMPARE(plain->widget()->focusProxy(), plain->engineView());
        tabs.activateTab(form->index());
        QCOMPARE(form->lifecycle().state(), State::Active);
        QCOMPARE(ask(form, "document.querySelector('input').value"), "kept");
    }
};

QUB_TEST_MAIN(SessionEngineTest)
#include "tst_session.moc"
