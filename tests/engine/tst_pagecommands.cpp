// The page commands on the real engine, clicked as the user clicks them: the
// menus show what the page answers, and each command's effect is read back
// from the page.
#include "commands/FindBar.h"
#include "platform/engine/PageNotice.h"
#include "support/DialogCloser.h"
#include "support/EngineApp.h"
#include "support/LocalHttpServer.h"
#include "support/PageProbes.h"
#include "support/TestMain.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QWebEngineCookieStore>
#include <QWebEngineProfile>
#include <QWebEngineView>
#include <csignal>
#include <optional>

using namespace platform;
using namespace commandbar;
using Parts = MainWindow::Parts;

class PageCommandsTest : public QObject
{
    Q_OBJECT
    LocalHttpServer server;

    static void click(EngineApp& app, const QString& band, const QString& key)
    {
        app.window->parts().bar.reportClick(app.window->parts().bar.tool(band, key));
    }
    static QStringList enabledIn(EngineApp& app, const QString& band)
    {
        QStringList keys;
        const Band* menu = app.window->parts().bar.band(band);
        for (int i = 0; i < menu->count(); ++i)
            if (menu->at(i)->enabled() && !menu->at(i)->key().isEmpty())
                keys << menu->at(i)->key();
        return keys;
    }
    static QStringList checkedIn(EngineApp& app, const QString& band)
    {
        QStringList keys;
        const Band* menu = app.window->parts().bar.band(band);
        for (int i = 0; i < menu->count(); ++i)
            if (menu->at(i)->checked())
                keys << menu->at(i)->key();
        return keys;
    }

private slots:
    void initTestCase()
    {
        server.setPage("/away.html", "<title>Away</title>");
        server.setPage("/cookie.html", "<script>document.title = 'c=' + document.cookie;"
                                       "document.cookie = 'seen=1; max-age=3600';</script>");
        server.setResponse("/cached.html", {"<title>Cached</title>", "text/html",
                                            "Cache-Control: max-age=3600\r\n"});
        server.setPage("/video.html",
                       "<title>Video</title><button id=b style='width:100%;height:300px' "
                       "onclick='document.body.requestFullscreen()'>full</button>");
        server.setPage("/later.html",
                       "<title>Later</title><button style='width:100%;height:300px' onclick="
                       "\"setTimeout(() => (document.title = 'asked') && "
                       "document.body.requestFullscreen().then(() => document.title = 'full'),"
                       "1500)"
                       "\">later</button>");
        server.setPage("/edit.html", "<title>Edit</title><p id=p>plain words</p>"
                                     "<textarea id=t>typed words</textarea>"
                                     "<input id=w type=password value=secret>"
                                     "<p>apple pear apple Apple</p>");
    }
    void init() { testsupport::failOnUnexpectedWarnings(); }

    void theEditAndTextSizeMenusShowThePage()
    {
        EngineApp app;
        BrowserView* view = app.startAt(server.url("/edit.html"), "Edit");
        QVERIFY(view);
        Band* edit = app.window->parts().bar.band("sub_Edit");
        QGuiApplication::clipboard()->setText("clipped");

        // Find is there for every page.
        const QStringList nothing = {"b_find"};
        const QStringList inField = {"b_cut", "b_copy",      "b_paste",
                                     "b_del", "b_selectall", "b_find"};
        const QStringList inText = {"b_copy", "b_selectall", "b_find"};
        const QStringList inPassword = {"b_paste", "b_del", "b_selectall", "b_find"};
        const std::pair<const char*, QStringList> cases[] = {
            {"getSelection().removeAllRanges()", {"b_selectall", "b_find"}},
            {"t.focus(); t.select()", inField},
            {"t.blur(); getSelection().selectAllChildren(p)", inText},
            {"w.focus(); w.select()", inPassword},
        };
        for (const auto& [select, expected] : cases) {
            QCOMPARE(ask(view, select), QVariant());
            app.window->parts().bar.reportDropDown(edit);
            QCOMPARE(enabledIn(app, "sub_Edit"), nothing); // until the page answers
            QTRY_COMPARE_WITH_TIMEOUT(enabledIn(app, "sub_Edit"), expected, 20000);
        }

        // The entries act on the page: typing then undo brings the text back.
        ask(view, "t.focus(); t.select()");
        click(app, "sub_Edit", "b_cut");
        QTRY_COMPARE_WITH_TIMEOUT(ask(view, "t.value").toString(), QString(), 20000);
        QCOMPARE(QGuiApplication::clipboard()->text(), QStringLiteral("typed words"));
        click(app, "sub_Edit", "b_undo");
        QTRY_COMPARE_WITH_TIMEOUT(ask(view, "t.value").toString(), QStringLiteral("typed words"),
                                  20000);

        Band* text = app.window->parts().bar.band("sub_Text");
        const std::pair<const char*, double> sizes[] = {
            {"b_big", 1.2}, {"b_smallest", 0.8}, {"b_normal", 1.0}};
        for (const auto& [size, factor] : sizes) {
            click(app, "sub_Text", size);
            app.window->parts().bar.reportDropDown(text);
            QCOMPARE(checkedIn(app, "sub_Text"), QStringList{size});
            QTRY_COMPARE_WITH_TIMEOUT(qRound(ask(view, "window.devicePixelRatio").toDouble() * 10),
                                      qRound(factor * 10), 20000);
        }
        // A blank tab leaves the checks alone.
        click(app, "sub_Text", "b_biggest");
        app.window->parts().tabs.newTab({}, true);
        app.window->parts().bar.reportDropDown(text);
        QCOMPARE(checkedIn(app, "sub_Text"), QStringList{"b_normal"});
    }

    void documentCommandsChangeThePage()
    {
        EngineApp app;
        BrowserView* view = app.startAt(server.url("/edit.html"), "Edit");
        QVERIFY(view);

        click(app, "sub_File", "sep_sFile2");
        QTRY_COMPARE_WITH_TIMEOUT(ask(view, "document.designMode").toString(), QStringLiteral("on"),
                                  20000);
        // Text typed at the start of the paragraph goes into the page.
        const char* type = "getSelection().collapse(p, 0);"
                           "document.execCommand('insertText', false, 'new ')";
        QCOMPARE(ask(view, type).toBool(), true);
        QCOMPARE(ask(view, "p.textContent").toString(), QStringLiteral("new plain words"));
        click(app, "sub_File", "sep_sFile2");
        QTRY_COMPARE_WITH_TIMEOUT(ask(view, "document.designMode").toString(),
                                  QStringLiteral("off"), 20000);

        const char* scroll = "document.body.getAttribute('scroll') + ' ' + "
                             "getComputedStyle(document.documentElement).overflow";
        click(app, "sub_View", "b_scrollon");
        QTRY_COMPARE_WITH_TIMEOUT(ask(view, scroll).toString(), QStringLiteral("no hidden"), 20000);
        click(app, "sub_View", "b_scrollon");
        QTRY_COMPARE_WITH_TIMEOUT(ask(view, scroll).toString(), QStringLiteral("yes visible"),
                                  20000);

        click(app, "sub_File", "b_property");
        QTRY_COMPARE_WITH_TIMEOUT(app.dialogs.asked.count("Properties"), 1, 20000);
        const Dialogs::Rows rows = app.dialogs.details;
        QVERIFY(rows.contains(std::pair<QString, QString>("Address", server.url("/edit.html"))));
        QVERIFY(rows.contains(std::pair<QString, QString>("Type", "text/html")));
        QVERIFY(rows.contains(std::pair<QString, QString>("Connection", "Not encrypted")));

        const QString saved = app.dir.filePath("saved.html");
        app.dialogs.savePaths.push_back(saved);
        click(app, "sub_File", "b_saveas");
        QVERIFY(app.dialogs.asked.last().endsWith("/Edit.html"));
        QTRY_VERIFY_WITH_TIMEOUT(QFileInfo(saved).size() > 0, 20000);
        QFile file(saved);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QVERIFY(file.readAll().contains("new plain words"));
    }

    void fullScreenByThePage()
    {
        EngineApp app;
        MainWindow& w = *app.window;
        WebEngineBrowserView* view = app.startAt(server.url("/video.html"), "Video");
        QVERIFY(view);
        QTRY_VERIFY(w.isMaximized());
        auto* mainBar = w.parts().barWidgets->container(w.parts().bar.band(key::mainBar));
        auto* menuBar = w.parts().barWidgets->container(w.parts().bar.band(key::menuBar));

        // The page's own button takes the window with it, the main bar
        // floating over it; Esc brings both back.
        QWidget* surface = view->engineView()->focusProxy();
        QVERIFY(drawn(view));
        QTest::mouseClick(surface, Qt::LeftButton, {}, QPoint(100, 100));
        QTRY_VERIFY_WITH_TIMEOUT(w.isFullScreen(), 20000);
        QVERIFY(mainBar->isWindow() && mainBar->isVisible() && !menuBar->isVisible());
        // Which site took the screen, and how to leave, over the page.
        const auto* notice = w.findChild<QLabel*>(QStringLiteral("fullScreenNotice"));
        QVERIFY(notice && notice->isVisible());
        QCOMPARE(notice->text(), "127.0.0.1 is now full screen. Press Esc to leave.");
        QCOMPARE(notice->textFormat(), Qt::PlainText);
        QTRY_COMPARE(ask(view, "document.fullscreenElement === document.body").toBool(), true);
        QTest::keyClick(&w, Qt::Key_Escape);
        QTRY_VERIFY_WITH_TIMEOUT(w.isMaximized(), 20000);
        QCOMPARE(ask(view, "document.fullscreenElement").toString(), QString());
        QVERIFY(!mainBar->isWindow() && menuBar->isVisible() && !notice->isVisible());

        // A tab the user has left cannot take the screen, not even with the
        // click it had before.
        view->navigate(server.url("/later.html"));
        QTRY_VERIFY_WITH_TIMEOUT(view->title() == "Later", 20000);
        QVERIFY(drawn(view));
        QTest::mouseClick(view->engineView()->focusProxy(), Qt::LeftButton, {}, QPoint(100, 100));
        w.parts().tabs.newTab({}, true);
        QTRY_COMPARE_WITH_TIMEOUT(view->title(), QStringLiteral("asked"), 20000);
        // Refused, the engine leaves the page's promise unsettled.
        QTest::qWait(500);
        QCOMPARE(view->title(), QStringLiteral("asked"));
        QVERIFY(ask(view, "document.fullscreenElement === null").toBool() && !w.isFullScreen());
    }

    void offlineFindAndSource()
    {
        EngineApp app;
        MainWindow& w = *app.window;
        WebEngineBrowserView* view = app.startAt(server.url("/edit.html"), "Edit");
        QVERIFY(view);
        auto offlineShown = [&](const QString& band) {
            return w.parts().bar.tool(band, "b_offline")->checked();
        };

        click(app, key::fileMenu, "b_offline");
        view->navigate("data:text/html,<title>Local</title>"); // made on the machine: it opens
        QTRY_VERIFY_WITH_TIMEOUT(loaded(view, "Local"), 20000);
        view->navigate(server.url("/away.html"));
        QTRY_VERIFY_WITH_TIMEOUT(view->notice(), 20000);
        QCOMPARE(view->notice()->heading(), QStringLiteral("Working offline"));
        QCOMPARE(server.requests("/away.html"), 0);
        click(app, key::statusBar, "b_offline");
        QVERIFY(!offlineShown(key::fileMenu) && !offlineShown(key::statusBar));
        view->refresh();
        QTRY_VERIFY_WITH_TIMEOUT(loaded(view, "Away"), 20000);
        QVERIFY(!view->notice());

        // The find bar finds as the user types and forgets the page it searched.
        click(app, "sub_Edit", "b_find");
        FindBar* find = w.findChild<FindBar*>();
        QVERIFY(find && find->isVisible());
        auto* text = find->findChild<QLineEdit*>();
        view->navigate(server.url("/edit.html"));
        QTRY_VERIFY_WITH_TIMEOUT(loaded(view, "Edit"), 20000);
        QTest::keyClicks(text, "apple");
        QTRY_COMPARE_WITH_TIMEOUT(find->matchesText(), QStringLiteral("3 matches"), 20000);
        find->findChild<QCheckBox*>()->setChecked(true);
        QTRY_COMPARE_WITH_TIMEOUT(find->matchesText(), QStringLiteral("2 matches"), 20000);
        QTest::keyClicks(text, "x");
        QTRY_COMPARE_WITH_TIMEOUT(find->matchesText(), QStringLiteral("No matches"), 20000);
        view->refresh();
        QTRY_COMPARE_WITH_TIMEOUT(find->matchesText(), QString(), 20000);
        QTest::keyClick(text, Qt::Key_Escape);
        QVERIFY(!find->isVisible());

        click(app, "sub_View", "b_source");
        BrowserView* source = w.parts().tabs.view(2);
        QVERIFY(source);
        QTRY_COMPARE_WITH_TIMEOUT(source->readyState(), BrowserView::Complete, 20000);
        QTRY_VERIFY_WITH_TIMEOUT(
            ask(source, "document.body.innerText").toString().contains("type=password"), 20000);
    }

    void cookiesAndCacheAreReallyCleared()
    {
        EngineApp app;
        MainWindow& w = *app.window;
        QVERIFY(w.start(server.url("/cookie.html")));
        BrowserView* view = w.parts().tabs.view(1);
        QTRY_VERIFY_WITH_TIMEOUT(loaded(view, "c="), 20000);
        view->refresh();
        QTRY_VERIFY_WITH_TIMEOUT(loaded(view, "c=seen=1"), 20000);
        // The cookie store clears on its own thread and tells of each cookie.
        QSignalSpy removed(app.factory.engine().profile().cookieStore(),
                           &QWebEngineCookieStore::cookieRemoved);
        click(app, key::toolsMenu, "b_delcookie");
        QTRY_VERIFY_WITH_TIMEOUT(!removed.isEmpty(), 20000);
        view->refresh();
        QTRY_VERIFY_WITH_TIMEOUT(loaded(view, "c="), 20000);

        auto open = [&](const char* path, const char* title) {
            view->navigate(server.url(path));
            return QTest::qWaitFor([&] { return loaded(view, title); }, 20000);
        };
        QVERIFY(open("/cached.html", "Cached"));
        QVERIFY(open("/away.html", "Away"));
        QVERIFY(open("/cached.html", "Cached"));
        QCOMPARE(server.requests("/cached.html"), 1);
#if QT_VERSION >= QT_VERSION_CHECK(6, 7, 0)
        // Qt 6.7 tells when the cache has been cleared.
        QSignalSpy cleared(&app.factory.engine().profile(),
                           &QWebEngineProfile::clearHttpCacheCompleted);
        click(app, key::toolsMenu, "b_deltempfiles");
        QVERIFY(cleared.wait(20000));
#else
        click(app, key::toolsMenu, "b_deltempfiles");
        QTest::qWait(500);
#endif
        QVERIFY(open("/away.html", "Away"));
        QVERIFY(open("/cached.html", "Cached"));
        QCOMPARE(server.requests("/cached.html"), 2);
    }

    // Every tool of the shipped skin clicked on a real page, every menu
    // dropped down, every secondary action tried: the window is still a
    // working browser after it.
    void everyToolOnARealPage()
    {
        EngineApp app;
        MainWindow& w = *app.window;
        QVERIFY(app.startAt(server.url("/edit.html"), "Edit"));
        w.parts().tabs.newTab(server.url("/away.html"), true);
        QTRY_VERIFY_WITH_TIMEOUT(loaded(w.parts().tabs.view(2), "Away"), 20000);
        DialogCloser closer;

        Parts parts = w.parts();
        std::vector<std::pair<QString, QString>> tools;
        for (const auto& band : parts.bar.bands())
            for (int i = 0; i < band->count(); ++i)
                tools.emplace_back(band->key(), band->at(i)->key());
        // Every question, the exit question among them, is answered Cancel.
        app.dialogs.answers.assign(tools.size() * 2, Dialogs::Answer::Cancel);
        for (const auto& [band, key] : tools) {
            if (Tool* tool = parts.bar.tool(band, key)) {
                parts.bar.reportClick(tool);
                QTest::qWait(20);
            }
        }
        for (const auto& band : parts.bar.bands())
            parts.bar.reportDropDown(band.get());
        QTest::qWait(1000);
        QVERIFY(w.isVisible());
        QVERIFY(!w.isFullScreen()); // clicked twice: the menu's tool and the toolbar's

        parts.bar.reportClick(parts.bar.tool(key::fileMenu, key::newTab));
        BrowserView* fresh = parts.tabs.view(parts.state.currentTab);
        fresh->navigate(server.url("/away.html"));
        QTRY_VERIFY_WITH_TIMEOUT(loaded(fresh, "Away"), 20000);
    }

    // A blank tab, a page whose focus is in a frame of another site, and a
    // page whose process is gone: every page command leaves them as they are
    // and the window answering. Dialogs the commands open are closed as they
    // come.
    void pageCommandsAreHarmlessWhereThePageCannotAnswer()
    {
        LocalHttpServer other;
        other.setPage("/frame.html", "<input id=i value=inside><script>i.focus()</script>");
        server.setPage("/framed.html", "<title>Framed</title><iframe src='" +
                                           other.url("/frame.html").toUtf8() + "'></iframe>");
        EngineApp app;
        MainWindow& w = *app.window;
        QVERIFY(app.startAt(server.url("/framed.html"), "Framed"));
        w.parts().tabs.newTab({}, true);
        w.parts().tabs.newTab(server.url("/edit.html"), true);
        WebEngineBrowserView* crashed = app.engineView(3);
        QTRY_VERIFY_WITH_TIMEOUT(loaded(crashed, "Edit"), 20000);
        QCOMPARE(::kill(pid_t(crashed->engineView()->page()->renderProcessPid()), SIGKILL), 0);
        QTRY_VERIFY_WITH_TIMEOUT(crashed->notice(), 20000);

        DialogCloser closer;
        const std::pair<const char*, const char*> tools[] = {
            {"sub_File", "b_saveas"},   {"sub_File", "b_pageset"},   {"sub_File", "b_preview"},
            {"sub_File", "b_print"},    {"sub_File", "b_property"},  {"sub_File", "sep_sFile2"},
            {"sub_File", "b_sendaddr"}, {"sub_Edit", "b_undo"},      {"sub_Edit", "b_redo"},
            {"sub_Edit", "b_cut"},      {"sub_Edit", "b_copy"},      {"sub_Edit", "b_paste"},
            {"sub_Edit", "b_del"},      {"sub_Edit", "b_selectall"}, {"sub_Edit", "b_find"},
            {"sub_Text", "b_biggest"},  {"sub_Text", "b_smallest"},  {"sub_View", "b_scrollon"},
        };
        for (int tab = 1; tab <= 3; ++tab) {
            w.parts().tabs.activateTab(tab);
            for (const auto& [band, tool] : tools) {
                click(app, band, tool);
                QTest::qWait(50);
            }
            for (const char* menu : {"sub_Edit", "sub_Text", "sub_File", "sub_View"})
                w.parts().bar.reportDropDown(w.parts().bar.band(menu));
        }
        QTest::qWait(1000);
        QVERIFY(w.isVisible());
        QCOMPARE(w.parts().state.tabCount, 3);
        QVERIFY(crashed->notice());
        QCOMPARE(ask(app.engineView(1), "document.title").toString(), QStringLiteral("Framed"));
    }
};

QUB_TEST_MAIN(PageCommandsTest)
#include "tst_pagecommands.moc"
