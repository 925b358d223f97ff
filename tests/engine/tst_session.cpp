// A session on the real engine: the offer after a crash answers its own
// buttons and opens what was chosen, and closed tabs come back from the
// Blocked Windows list and from Ctrl+Shift+T.
#include "session/SessionFiles.h"
#include "support/EngineApp.h"
#include "support/LocalHttpServer.h"
#include "support/TestMain.h"

#include <QAction>

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
};

QUB_TEST_MAIN(SessionEngineTest)
#include "tst_session.moc"
