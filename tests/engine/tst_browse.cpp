// Browsing on the real engine, as a user does it: pages from a loopback
// server, the address bar, back and forward, pages opening and closing their
// own windows, real clicks, a killed page process, downloads, sign-in, and the
// pages coming back after a real shut-down.
#include "app/ProgressDisplay.h"
#include "history/AddressCompleter.h"
#include "history/HistoryStore.h"
#include "platform/engine/PageNotice.h"
#include "support/EngineApp.h"
#include "support/Files.h"
#include "support/LocalHttpServer.h"
#include "support/PageProbes.h"
#include "support/TestMain.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QWebEngineView>
#include <QWheelEvent>
#include <csignal>

using namespace platform;
using namespace commandbar;

namespace {

// A button filling the top left of the page, so a click at (50, 50) hits it.
QByteArray withButton(const QByteArray& onclick)
{
    return titled("Opener", "<button id=b style='position:absolute;left:0;top:0;width:300px;"
                            "height:150px' onclick=\"" +
                                onclick + "\">open</button>");
}

void typeAddress(MainWindow& w, const QString& address, Qt::KeyboardModifiers modifiers = {})
{
    w.parts().addressBox->setEditText(address);
    QTest::keyClick(w.parts().addressBox, Qt::Key_Return, modifiers);
}

} // namespace

class BrowseTest : public QObject
{
    Q_OBJECT
    LocalHttpServer server;

private slots:
    void initTestCase()
    {
        server.setPage("/one.html", titled("Page One"));
        server.setPage("/search.html", titled("Search"));
        server.setPage("/two.html", titled("Page Two"));
        server.setPage("/long.html", titled("Salt &amp; pepper, thirty chars"));
        server.setPage("/opener.html", withButton("window.open('/child.html')"));
        server.setPage("/child.html", titled("Child", "<script>setTimeout(() => "
                                                      "window.close(), 300);</script>"));
        server.setPage("/framed.html",
                       titled("Framed", "<iframe src='/inner.html' style='position:absolute;"
                                        "left:0;top:0;width:400px;height:200px;border:0'>"
                                        "</iframe>"));
        server.setPage("/inner.html",
                       "<html><body style='margin:0'><a id=a href='/one.html' style='display:"
                       "block;width:300px;height:150px'>in a frame</a></body></html>");
        server.setResponse("/file.bin", {"0123456789", "application/octet-stream",
                                         "Content-Disposition: attachment; filename=file.bin\r\n"});
        server.setResponse("/again.bin",
                           {"abc", "application/octet-stream",
                            "Content-Disposition: attachment; filename=file.bin\r\n"});
        server.setResponse("/private.html", {titled("Signed in"), "text/html", "", "ann:secret"});
    }
    void init() { testsupport::failOnUnexpectedWarnings(); }

    void addressBarTitlesAndButtonsFollowTheActiveTab()
    {
        EngineApp app;
        QVERIFY(app.window->start(server.url("/one.html")));
        MainWindow& w = *app.window;
        Tool* back = w.parts().bar.tool(key::mainBar, key::back);
        Tool* forward = w.parts().bar.tool(key::mainBar, key::forward);
        QTRY_VERIFY_WITH_TIMEOUT(loaded(w.parts().tabs.view(1), "Page One"), 20000);
        QCOMPARE(w.parts().bar.tool(key::tabsBar, "tabs-1")->caption(), QStringLiteral("Page One"));
        QCOMPARE(w.parts().addressBox->currentText(), server.url("/one.html"));
        QTRY_COMPARE(w.parts().statusText->text(), QStringLiteral("Done"));
        QCOMPARE(w.parts().progressDisplay->percent(), 100);
        QVERIFY(!back->enabled());

        // Enter sends the box's text to this tab.
        typeAddress(w, "  " + server.url("/two.html"));
        QTRY_VERIFY_WITH_TIMEOUT(loaded(w.parts().tabs.view(1), "Page Two"), 20000);
        QTRY_VERIFY(back->enabled());

        // Ctrl+Enter opens a new tab, whose buttons are its own.
        typeAddress(w, server.url("/long.html"), Qt::ControlModifier);
        QCOMPARE(w.parts().state.currentTab, 2);
        QTRY_VERIFY_WITH_TIMEOUT(loaded(w.parts().tabs.view(2), "Salt & pepper, thirty chars"),
                                 20000);
        QCOMPARE(w.parts().bar.tool(key::tabsBar, "tabs-2")->caption(),
                 QStringLiteral("Salt & pe ..."));
        // The button shows the caption as it is: no mnemonic, dots kept.
        QCOMPARE(app.tabButton(2)->text(), QStringLiteral("Salt && pe ..."));
        QVERIFY(!back->enabled());
        // The background tab going back changes nothing shown until it is active.
        w.parts().tabs.view(1)->goBack();
        QTRY_VERIFY_WITH_TIMEOUT(loaded(w.parts().tabs.view(1), "Page One"), 20000);
        QTRY_VERIFY(w.parts().state.canGoForward[1]);
        QVERIFY(!forward->enabled());
        w.parts().bar.reportClick(w.parts().bar.tool(key::tabsBar, "tabs-1"));
        QVERIFY(forward->enabled());
        QVERIFY(!back->enabled());
        QCOMPARE(w.parts().addressBox->currentText(), server.url("/one.html"));

        // A suggestion chosen while typing is sent once, to this tab.
        QSignalSpy sent(&w.parts().addressBar, &AddressBar::addressSent);
        w.parts().addressBox->setFocus();
        w.parts().addressBox->setEditText(QString());
        QTest::keyClicks(w.parts().addressBox, "long");
        QAbstractItemView* suggestions = w.parts().addressCompleter.popup();
        QTRY_VERIFY(suggestions->isVisible());
        suggestions->setCurrentIndex(suggestions->model()->index(0, 0));
        QTest::keyClick(suggestions, Qt::Key_Return);
        QTRY_VERIFY_WITH_TIMEOUT(loaded(w.parts().tabs.view(1), "Salt & pepper, thirty chars"),
                                 20000);
        QCOMPARE(sent.count(), 1);
        QCOMPARE(sent[0][0].toString(), server.url("/long.html"));

        // Enter with the list open and nothing chosen sends what was typed,
        // not the longer address the list marks as the best match.
        w.parts().addressCompleter.addAddress(server.url("/two.html?k=blank"));
        w.parts().addressBox->setEditText(QString());
        QTest::keyClicks(w.parts().addressBox, server.url("/two.html"));
        QTRY_VERIFY(suggestions->isVisible());
        QTest::keyClick(suggestions, Qt::Key_Return);
        QVERIFY(!suggestions->isVisible());
        QTRY_VERIFY_WITH_TIMEOUT(loaded(w.parts().tabs.view(1), "Page Two"), 20000);
        QCOMPARE(sent.count(), 2);
        QCOMPARE(sent[1][0].toString(), server.url("/two.html"));

        // A missing page is the server's own page, not a failure to open one.
        QSignalSpy status(w.parts().tabs.view(2), &BrowserView::statusTextChanged);
        w.parts().tabs.view(2)->navigate(server.url("/missing.html"));
        QTRY_VERIFY_WITH_TIMEOUT(
            !status.isEmpty() && !status.last()[0].toString().startsWith("Opening"), 20000);
        QCOMPARE(status.last()[0].toString(), QStringLiteral("Done"));
    }

    void theAddressListOnlyNavigatesWhenChosen()
    {
        EngineApp app;
        MainWindow& w = *app.window;
        WebEngineBrowserView* view = app.startAt(server.url("/one.html"), "Page One");
        QVERIFY(view);
        QComboBox* box = w.parts().addressBox;
        box->addItem(server.url("/two.html"));
        box->setFocus();
        // Keys and the wheel move through the list (the typed addresses of
        // earlier runs among them); the page stays.
        QTest::keyClick(box, Qt::Key_PageUp);
        QCOMPARE(box->currentText(), QStringLiteral("About:Blank"));
        QTest::keyClick(box, Qt::Key_PageDown);
        QCOMPARE(box->currentText(), server.url("/two.html"));
        QTest::keyClick(box, Qt::Key_Up);
        QCOMPARE(box->currentText(), box->itemText(box->count() - 2));
        QWheelEvent wheel({5, 5}, box->mapToGlobal(QPoint(5, 5)), {}, {0, -120}, Qt::NoButton, {},
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(box, &wheel);
        QCOMPARE(box->currentText(), server.url("/two.html"));
        QTest::qWait(500);
        QCOMPARE(view->locationUrl(), server.url("/one.html"));
        QCOMPARE(view->readyState(), BrowserView::Complete);

        // Enter sends the entry shown: a plain blank page, whose address the
        // box then shows.
        QTest::keyClick(box, Qt::Key_PageUp);
        QCOMPARE(box->currentText(), QStringLiteral("About:Blank"));
        QTest::keyClick(box, Qt::Key_Return);
        QTRY_COMPARE_WITH_TIMEOUT(view->readyState(), BrowserView::Complete, 20000);
        QTRY_COMPARE(view->locationUrl(), QStringLiteral("about:blank"));
        QTRY_COMPARE(box->currentText(), QStringLiteral("about:blank"));

        // Words go to the search service; an address without a scheme to the address.
        app.factory.setSearchAddress(server.url("/search.html?q={query}"));
        typeAddress(w, "two words");
        QTRY_VERIFY_WITH_TIMEOUT(loaded(view, "Search"), 20000);
        QCOMPARE(view->locationUrl(), server.url("/search.html?q=two words"));
        typeAddress(w, server.url("/one.html").mid(7));
        QTRY_VERIFY_WITH_TIMEOUT(loaded(view, "Page One"), 20000);
        // With no service the tab says what it could not do with the words.
        app.factory.setSearchAddress({});
        typeAddress(w, "more <b>words</b>");
        QTRY_VERIFY(view->notice() && view->notice()->isVisible());
        QCOMPARE(view->notice()->heading(), QStringLiteral("Not an address"));
        QCOMPARE(server.requests("/search.html"), 1);
    }

    void clickRecordsComeBeforeTheWindowTheyOpen()
    {
        EngineApp app;
        QVERIFY(app.startAt(server.url("/opener.html"), "Opener"));
        MainWindow& w = *app.window;
        QStringList events;
        BrowserView* opener = w.parts().tabs.view(1);
        connect(opener, &BrowserView::pageMouseDown, this,
                [&](const PageClick& c) { events << "mousedown " + c.tag; });
        connect(opener, &BrowserView::pageClicked, this, [&](const PageClick& c) {
            events << QStringLiteral("click %1 %2").arg(c.tag).arg(c.trusted);
        });
        connect(opener, &BrowserView::newWindowRequested, this,
                [&](NewWindowRequest& r) { events << "window " + r.url().path(); });
        app.clock.now = 40000.5; // halves round to even
        clickPage(app.engineView(1), QPoint(50, 50));
        QTRY_COMPARE_WITH_TIMEOUT(events.size(), 3, 20000);
        QCOMPARE(events, (QStringList{"mousedown BUTTON", "click BUTTON 1", "window /child.html"}));
        QCOMPARE(w.parts().state.lastClickTime, 40000);

        // The page's window is a tab, and closing itself closes the tab.
        QCOMPARE(app.tabKeys(), (QStringList{"tabs-1", "tabs-2"}));
        QCOMPARE(w.parts().state.currentTab, 2);
        QTRY_VERIFY_WITH_TIMEOUT(loaded(w.parts().tabs.view(2), "Child"), 20000);
        QTRY_COMPARE_WITH_TIMEOUT(app.tabKeys(), QStringList{"tabs-1"}, 20000);
        QCOMPARE(w.parts().state.currentTab, 1);

        // A click inside a frame reaches the program too, and follows its link.
        QSignalSpy clicks(opener, &BrowserView::pageClicked);
        opener->navigate(server.url("/framed.html"));
        QTRY_VERIFY_WITH_TIMEOUT(loaded(opener, "Framed"), 20000);
        clickPage(app.engineView(1), QPoint(40, 40));
        QTRY_COMPARE_WITH_TIMEOUT(clicks.count(), 1, 20000);
        const auto click = clicks[0][0].value<PageClick>();
        QVERIFY(click.inSubframe);
        QCOMPARE(click.tag, QStringLiteral("A"));
        QCOMPARE(click.href, server.url("/one.html"));
    }

    void aKilledPageRecoversOnReload()
    {
        EngineApp app;
        WebEngineBrowserView* view = app.startAt(server.url("/one.html"), "Page One");
        QVERIFY(view);
        MainWindow& w = *app.window;
        const qint64 pid = view->engineView()->page()->renderProcessPid();
        QVERIFY(pid > 0);
        QCOMPARE(::kill(pid_t(pid), SIGKILL), 0);
        QTRY_VERIFY_WITH_TIMEOUT(view->notice(), 20000);
        QCOMPARE(view->notice()->heading(), QStringLiteral("This page stopped working"));
        QVERIFY(w.isVisible());
        const int before = server.requests("/one.html");
        w.parts().bar.reportClick(w.parts().bar.tool(key::mainBar, key::refresh));
        QVERIFY(!view->notice());
        QTRY_COMPARE_WITH_TIMEOUT(server.requests("/one.html"), before + 1, 20000);
        QTRY_VERIFY_WITH_TIMEOUT(loaded(view, "Page One"), 20000);
        QVERIFY(view->engineView()->page()->renderProcessPid() != pid);
    }

    void downloadsGoWhereChosenAndSignInAsks()
    {
        EngineApp app;
        QVERIFY(app.window->start({}));
        MainWindow& w = *app.window;
        QTemporaryDir target;
        const QString chosen = target.filePath("chosen.bin");
        app.dialogs.savePaths = {chosen};
        QSignalSpy finished(&app.factory.downloads(), &DownloadManager::finished);
        w.parts().tabs.view(1)->navigate(server.url("/file.bin"));
        QTRY_COMPARE_WITH_TIMEOUT(finished.count(), 1, 20000);
        QCOMPARE(finished[0], (QVariantList{chosen, true}));
        QCOMPARE(readFile(chosen), QByteArray("0123456789"));
        DownloadsWindow* list = app.factory.downloads().window();
        QVERIFY(list->isVisible());
        QTRY_VERIFY(list->findChild<QPushButton*>()->text() == QStringLiteral("Open Folder"));

        // Cancelled: nothing anywhere near where it was offered.
        w.parts().tabs.view(1)->navigate(server.url("/again.bin"));
        QTRY_COMPARE_WITH_TIMEOUT(app.dialogs.asked.size(), 2, 20000);
        const QFileInfo offered(app.dialogs.asked[1]);
        QCOMPARE(offered.fileName(), QStringLiteral("file.bin"));

        // Sign-in: cancelled first, then answered.
        w.parts().tabs.view(1)->navigate(server.url("/private.html"));
        QTRY_COMPARE_WITH_TIMEOUT(app.dialogs.asked.size(), 3, 20000);
        // By the next prompt of the same page, a download that went on
        // anyway would have started its file.
        QVERIFY(QDir(offered.absolutePath())
                    .entryList({"file.bin*", "*.crdownload"}, QDir::Files)
                    .isEmpty());
        QCOMPARE(QDir(target.path()).entryList(QDir::Files), QStringList{"chosen.bin"});
        QVERIFY(app.dialogs.asked[2].contains("127.0.0.1"));
        QVERIFY(w.parts().tabs.view(1)->title() != QStringLiteral("Signed in"));
        // A tab closed while its page waits for a sign-in goes once it is answered.
        app.dialogs.whileAsking = [&] { w.parts().tabs.closeTab(2); };
        w.parts().tabs.newTab(server.url("/private.html"), true);
        QPointer<BrowserView> closed = w.parts().tabs.view(2);
        QTRY_VERIFY_WITH_TIMEOUT(!app.dialogs.whileAsking, 20000);
        QCOMPARE(app.tabKeys(), QStringList{"tabs-1"});
        QTRY_VERIFY(!closed);
        app.dialogs.logins = {{"ann", "secret"}};
        w.parts().tabs.view(1)->refresh();
        QTRY_VERIFY_WITH_TIMEOUT(loaded(w.parts().tabs.view(1), "Signed in"), 20000);
    }

    void untrustedCertificatesAskBeforeThePageShows()
    {
        LocalHttpsServer secure;
        secure.setPage("/secret.html", titled("Behind a bad certificate"));
        EngineApp app;
        WebEngineBrowserView* view = app.startAt(server.url("/one.html"), "Page One");
        QVERIFY(view);
        auto button = [&](const QString& caption) -> QPushButton* {
            for (QPushButton* b : view->widget()->findChildren<QPushButton*>())
                if (b->text() == caption && b->isVisible())
                    return b;
            return nullptr;
        };

        // Go back: the page never shows and the tab returns to where it was.
        view->navigate(secure.url("/secret.html"));
        QTRY_VERIFY_WITH_TIMEOUT(view->notice(), 20000);
        QCOMPARE(view->notice()->heading(), QStringLiteral("This connection is not private"));
        QVERIFY(button("Go back"));
        QTest::mouseClick(button("Go back"), Qt::LeftButton);
        QVERIFY(!view->notice());
        QTRY_VERIFY_WITH_TIMEOUT(loaded(view, "Page One"), 20000);
        QCOMPARE(secure.requests("/secret.html"), 0);

        // Stopping while the notice waits refuses the certificate too.
        view->navigate(secure.url("/secret.html"));
        QTRY_VERIFY_WITH_TIMEOUT(view->notice(), 20000);
        view->stop();
        QVERIFY(!view->notice());
        QTRY_VERIFY_WITH_TIMEOUT(view->readyState() == BrowserView::Complete, 20000);
        QVERIFY(!view->notice());
        QCOMPARE(secure.requests("/secret.html"), 0);

        // Proceed: the user's choice lets the page through.
        view->navigate(secure.url("/secret.html"));
        QTRY_VERIFY_WITH_TIMEOUT(view->notice(), 20000);
        QTest::mouseClick(button("Proceed anyway"), Qt::LeftButton);
        QTRY_VERIFY_WITH_TIMEOUT(loaded(view, "Behind a bad certificate"), 20000);
        QCOMPARE(secure.requests("/secret.html"), 1);
        // A certificate let through makes the page mixed, not secure.
        QTRY_COMPARE(app.window->parts().bar.tool(key::statusBar, key::securityTool)->caption(),
                     QStringLiteral("Partly secured"));
    }

    void lastPagesComeBackAfterARealShutDown()
    {
        EngineApp app;
        QVERIFY(app.window->start(server.url("/one.html")));
        app.window->parts().tabs.newTab({}, true);
        app.window->parts().tabs.newTab(server.url("/two.html"), true);
        QTRY_VERIFY_WITH_TIMEOUT(loaded(app.window->parts().tabs.view(3), "Page Two"), 20000);
        QTRY_VERIFY_WITH_TIMEOUT(loaded(app.window->parts().tabs.view(1), "Page One"), 20000);
        app.dialogs.answers = {Dialogs::Answer::Ok};
        app.window->quit();
        QVERIFY(!app.window->isVisible());
        QCOMPARE(readFile(app.appDir + "LastPages.ini"),
                 (server.url("/one.html") + "\r\n" + server.url("/two.html") + "\r\n").toUtf8());

        app.restart();
        QVERIFY(app.window->start({}));
        MainWindow& w = *app.window;
        QCOMPARE(app.tabKeys(), (QStringList{"tabs-1", "tabs-2"}));
        QCOMPARE(w.parts().state.currentTab, 2);
        QTRY_VERIFY_WITH_TIMEOUT(loaded(w.parts().tabs.view(2), "Page Two"), 20000);
        QVERIFY(!QFile::exists(app.appDir + "LastPages.ini"));
        // Tab 1 stands for its page and loads it once shown.
        QCOMPARE(w.parts().tabs.view(1)->locationUrl(), server.url("/one.html"));
        w.parts().tabs.activateTab(1);
        QTRY_VERIFY_WITH_TIMEOUT(loaded(w.parts().tabs.view(1), "Page One"), 20000);

        // Of thirty last pages only the one shown loads at the start; another
        // loads when shown, and all thirty are written again at the exit.
        app.dialogs.answers = {Dialogs::Answer::Ok};
        w.quit();
        QByteArray thirty;
        for (int n = 1; n <= 30; ++n)
            thirty += (server.url("/one.html?") + QString::number(n) + "\r\n").toUtf8();
        writeFile(app.appDir + "LastPages.ini", thirty);
        const int before = server.requests("/one.html");
        app.restart();
        QVERIFY(app.window->start({}));
        TabStrip& tabs = app.window->parts().tabs;
        QCOMPARE(tabs.tabViews().size(), size_t(30));
        QTRY_VERIFY_WITH_TIMEOUT(loaded(tabs.view(30), "Page One"), 20000);
        QCOMPARE(tabs.view(7)->locationUrl(), server.url("/one.html?7"));
        QCOMPARE(tabs.view(7)->title(), server.url("/one.html?7"));
        QCOMPARE(server.requests("/one.html"), before + 1);
        const auto visits = [&] {
            return HistoryStore(HistoryStore::userPath()).records(server.url("/one.html?7")).size();
        };
        QCOMPARE(visits(), 0u);
        tabs.activateTab(7);
        QTRY_VERIFY_WITH_TIMEOUT(loaded(tabs.view(7), "Page One"), 20000);
        QCOMPARE(tabs.view(7)->locationUrl(), server.url("/one.html?7"));
        QCOMPARE(server.requests("/one.html"), before + 2);
        QCOMPARE(visits(), 1u);
        app.dialogs.answers = {Dialogs::Answer::Ok};
        app.window->quit();
        QCOMPARE(readFile(app.appDir + "LastPages.ini"), thirty);
    }
};

QUB_TEST_MAIN(BrowseTest)
#include "tst_browse.moc"
