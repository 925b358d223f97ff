// The popup blocker on the real engine with real clicks: what the user asked
// for opens in a tab, what the page opened by itself is listed and never
// fetched.
#include "protect/PopupBlocker.h"
#include "support/EngineApp.h"
#include "support/LocalHttpServer.h"
#include "support/PageProbes.h"
#include "support/TestMain.h"

#include <QApplication>
#include <QMenu>
#include <QTcpServer>
#include <QWebEngineView>

using namespace platform;
using namespace commandbar;

namespace {

// An element filling the top left of the page, so a click at (50, 50) hits it.
QByteArray filling(const QByteArray& tag, const QByteArray& attributes)
{
    return "<" + tag + " style='position:absolute;left:0;top:0;width:300px;height:150px' " +
           attributes + ">open</" + tag + ">";
}

} // namespace

class PopupsTest : public QObject
{
    Q_OBJECT
    LocalHttpServer server;

private slots:
    void initTestCase()
    {
        server.setPage("/popup.html", titled("Popup"));
        server.setPage("/onload.html",
                       titled("Onload", "<script>window.open('/popup.html?onload')</script>"));
        server.setPage("/link.html",
                       titled("Link", filling("a", "href='/popup.html?link' target=_blank")));
        server.setPage("/button.html",
                       titled("Button", filling("button", "onclick=\"window.open('/popup.html"
                                                          "?button')\"")));
        server.setPage("/timer.html",
                       titled("Timer", filling("button", "onclick=\"setTimeout(() => window.open("
                                                         "'/popup.html?timer'), 1000)\"")));
        server.setPage("/content-frame.html", titled("Frame", "<img src='/pic.gif'>"));
        // Of another origin: it tells its parent how many pictures it kept.
        server.setPage("/report-frame.html",
                       "<img src='/pic.gif'><script>addEventListener('load', () => setTimeout("
                       "() => parent.postMessage(String(document.images.length), '*')));"
                       "</script>");
        server.setPage("/submit.html",
                       titled("Submit", "<form action='/popup.html' target=_blank>" +
                                            filling("button", "type=submit") + "</form>"));
        server.setPage("/image.html",
                       titled("Image", "<form action='/popup.html' target=_blank>" +
                                           filling("input", "type=image src='/pic.gif'") +
                                           "</form>"));
        server.setPage(
            "/script-link.html",
            titled("Script link", filling("a", "href=\"javascript:window.open('/popup.html')\"")));
        server.setPage("/later.html", titled("Later", "<script>setTimeout(() => "
                                                      "window.open('/popup.html?later'), 3000)"
                                                      "</script>"));
        server.setPage("/unnamed.html", titled("Unnamed", "<script>window.open().location = "
                                                          "'/popup.html?unnamed'</script>"));
        server.setPage("/storm.html", titled("Storm", "<script>for (let i = 0; i < 40; i++) "
                                                      "window.open('/popup.html?storm' + i)"
                                                      "</script>"));
        server.setPage("/frame.html",
                       titled("Frame", "<iframe src='/button.html' style='position:absolute;"
                                       "left:0;top:0;width:300px;height:150px;border:0'>"
                                       "</iframe>"));
        server.setPage("/body.html",
                       "<html><head><title>Body</title></head><body style='margin:0;"
                       "height:600px' onclick=\"window.open('/popup.html?body')\"></body></html>");
    }
    void init() { testsupport::failOnUnexpectedWarnings(); }

    void onlyWhatTheUserAskedForOpens()
    {
        EngineApp app;
        MainWindow& w = *app.window;
        WebEngineBrowserView* view = app.startAt(server.url("/onload.html"), "Onload");
        QVERIFY(view);
        // Blocking is off: the page opens what it likes.
        QTRY_COMPARE_WITH_TIMEOUT(w.parts().state.tabCount, 2, 20000);
        w.parts().tabs.activateTab(1);
        w.parts().bar.reportClick(w.parts().bar.tool(key::toolsMenu, "b_stoppopup"));
        const Band* blocked = w.parts().bar.band("sub_Blocked");
        const Tool* count = w.parts().bar.tool(key::statusBar, "b_blocked");

        view->refresh();
        QTRY_COMPARE_WITH_TIMEOUT(blocked->count(), 1, 20000);
        QCOMPARE(blocked->at(0)->caption(), "1. " + server.url("/popup.html?onload"));
        QVERIFY(count->caption().endsWith(":1"));
        QCOMPARE(w.parts().state.tabCount, 2);

        auto open = [&](const char* page, const char* title) {
            view->navigate(server.url(page));
            QVERIFY(QTest::qWaitFor([&] { return loaded(view, title); }, 20000));
            clickPage(view, {50, 50});
        };
        open("/link.html", "Link");
        QTRY_COMPARE_WITH_TIMEOUT(w.parts().state.tabCount, 3, 20000);
        w.parts().tabs.activateTab(1);
        open("/button.html", "Button");
        QTRY_COMPARE_WITH_TIMEOUT(w.parts().state.tabCount, 4, 20000);
        w.parts().tabs.activateTab(1);

        // A second after the click, nobody asked any more.
        open("/timer.html", "Timer");
        app.clock.now += 2;
        QTRY_COMPARE_WITH_TIMEOUT(blocked->count(), 2, 20000);
        open("/body.html", "Body");
        QTRY_COMPARE_WITH_TIMEOUT(blocked->count(), 3, 20000);
        QCOMPARE(blocked->at(2)->caption(), "3. " + server.url("/popup.html?body"));
        QCOMPARE(w.parts().state.tabCount, 4);
        // Blocked windows never reached the server: the first (unblocked) and two asked for.
        QCOMPARE(server.requests("/popup.html"), 3);

        w.parts().bar.reportClick(blocked->at(1));
        QCOMPARE(w.parts().state.tabCount, 5);
        QTRY_VERIFY_WITH_TIMEOUT(loaded(app.engineView(5), "Popup"), 20000);
        QCOMPARE(app.engineView(5)->locationUrl(), server.url("/popup.html?timer"));

        // A window opened without an address is listed where it first goes.
        w.parts().tabs.activateTab(1);
        view->navigate(server.url("/unnamed.html"));
        QTRY_COMPARE_WITH_TIMEOUT(blocked->count(), 4, 20000);
        QCOMPARE(blocked->at(3)->caption(), "4. " + server.url("/popup.html?unnamed"));
        // A storm: the last ten listed, every window counted, none fetched.
        view->navigate(server.url("/storm.html"));
        QTRY_VERIFY_WITH_TIMEOUT(count->caption().endsWith(":44"), 60000);
        QCOMPARE(blocked->count(), 10);
        QCOMPARE(blocked->at(9)->caption(), "44. " + server.url("/popup.html?storm39"));
        QCOMPARE(w.parts().state.tabCount, 5);
        QCOMPARE(server.requests("/popup.html"), 4);
        QCOMPARE(app.shell.played.size(), 44);
    }

    void everyKindOfUserRequestOpensAndABackgroundTabDoesNot()
    {
        EngineApp app;
        MainWindow& w = *app.window;
        WebEngineBrowserView* view = app.startAt(server.url("/submit.html"), "Submit");
        QVERIFY(view);
        w.parts().bar.reportClick(w.parts().bar.tool(key::toolsMenu, "b_stoppopup"));
        const std::pair<const char*, const char*> pages[] = {{"/submit.html", "Submit"},
                                                             {"/image.html", "Image"},
                                                             {"/script-link.html", "Script link"},
                                                             {"/frame.html", "Frame"}};
        int tabs = 1;
        for (const auto& [page, title] : pages) {
            w.parts().tabs.activateTab(1);
            view->navigate(server.url(page));
            QTRY_VERIFY_WITH_TIMEOUT(loaded(view, title), 20000);
            clickPage(view, {50, 50});
            ++tabs;
            QTRY_COMPARE_WITH_TIMEOUT(w.parts().state.tabCount, tabs, 20000);
        }

        // A page in a tab behind the current one asks for nothing.
        const Band* blocked = w.parts().bar.band("sub_Blocked");
        w.parts().tabs.activateTab(1);
        view->navigate(server.url("/later.html"));
        QTRY_VERIFY_WITH_TIMEOUT(loaded(view, "Later"), 20000);
        w.parts().tabs.activateTab(2);
        QTRY_COMPARE_WITH_TIMEOUT(blocked->count(), 1, 20000);
        QCOMPARE(w.parts().state.tabCount, tabs);
    }

    // A real press, and under it a forged one on a hidden link at the same
    // point: the page's staging is not the user's asking.
    void aForgedPressUnderARealOneOpensNothing()
    {
        server.setPage("/forged.html",
                       titled("Forged",
                              "<div style='position:fixed;inset:0;background:#eee'>x</div>"
                              "<a id=l href='/popup.html?hidden' style='position:absolute;"
                              "left:-999px'>x</a><script>addEventListener('mousedown', (e) => {"
                              "if (!e.isTrusted) return; l.dispatchEvent(new MouseEvent("
                              "'mousedown', {bubbles: true, screenX: e.screenX, screenY: "
                              "e.screenY})); setTimeout(() => window.open("
                              "'/popup.html?forged'), 100); });</script>"));
        EngineApp app;
        MainWindow& w = *app.window;
        WebEngineBrowserView* view = app.startAt(server.url("/forged.html"), "Forged");
        QVERIFY(view);
        w.parts().bar.reportClick(w.parts().bar.tool(key::toolsMenu, "b_stoppopup"));
        clickPage(view, {50, 50});
        QTRY_COMPARE_WITH_TIMEOUT(w.parts().bar.band("sub_Blocked")->count(), 1, 20000);
        QCOMPARE(w.parts().state.tabCount, 1);
    }

    // With blocking off a page opens only a few windows by itself; a window
    // refused with blocking on runs nothing its opener writes into it.
    void windowsNobodyAskedForStayFewAndInert()
    {
        server.setPage("/writer.html",
                       titled("Writer", "<script>const w = window.open(); w.document.write("
                                        "'<script>setInterval(() => { new Image().src = "
                                        "\"/beat?\" + Date.now(); }, 100);<\\/script>');"
                                        "w.document.close(); setInterval(() => { new Image().src"
                                        " = \"/opener-beat?\" + Date.now(); }, 1000);"
                                        "</script>"));
        EngineApp app;
        MainWindow& w = *app.window;
        WebEngineBrowserView* view = app.startAt(server.url("/storm.html"), "Storm");
        QVERIFY(view);
        const Tool* count = w.parts().bar.tool(key::statusBar, "b_blocked");
        const int unasked = PopupBlocker::unaskedPerSecond;
        QTRY_VERIFY_WITH_TIMEOUT(count->caption().endsWith(':' + QString::number(40 - unasked)),
                                 30000);
        QCOMPARE(w.parts().state.tabCount, 1 + unasked);

        w.parts().tabs.activateTab(1);
        w.parts().bar.reportClick(w.parts().bar.tool(key::toolsMenu, "b_stoppopup"));
        view->navigate(server.url("/writer.html"));
        // What the opener wrote may get a beat out before the window is
        // caught; then it is still, while the opener beats on.
        QTRY_COMPARE_WITH_TIMEOUT(server.requests("/opener-beat"), 1, 20000);
        const int beats = server.requests("/beat");
        QTRY_COMPARE_WITH_TIMEOUT(server.requests("/opener-beat"), 2, 20000);
        QCOMPARE(server.requests("/beat"), beats);
    }

    // With blocking on, what the user asks for through the page's own menu,
    // inside a frame of the page, or at another zoom, opens all the same.
    void requestsFromTheMenuFramesAndZoomOpen()
    {
        auto framed = [](const QByteArray& page) {
            return titled("Framed", "<iframe src='" + page +
                                        "' style='position:absolute;left:100px;top:80px;"
                                        "width:400px;height:200px;border:0'></iframe>");
        };
        // The frames come from another port: same site, another origin.
        LocalHttpServer other;
        other.setPage(
            "/link.html",
            titled("Link", filling("a", "href='" + server.url("/popup.html?framed").toUtf8() +
                                            "' target=_blank")));
        other.setPage(
            "/button.html",
            titled("Button", filling("button", "onclick=\"window.open('" +
                                                   server.url("/popup.html?framedbutton").toUtf8() +
                                                   "')\"")));
        server.setPage("/framed-link.html", framed(other.url("/link.html").toUtf8()));
        server.setPage("/framed-button.html", framed(other.url("/button.html").toUtf8()));
        server.setPage("/plain-link.html",
                       titled("Plain", filling("a", "href='/popup.html?menu'")));
        EngineApp app;
        MainWindow& w = *app.window;
        // Time goes on as for a user: a press is recent only for a moment.
        app.clock.run();
        WebEngineBrowserView* view = app.startAt(server.url("/plain-link.html"), "Plain");
        QVERIFY(view);
        w.parts().bar.reportClick(w.parts().bar.tool(key::toolsMenu, "b_stoppopup"));
        int tabs = 1;
        auto opens = [&](const char* page, const char* title, QPoint at, int zoomLevel) {
            w.parts().tabs.activateTab(1);
            view->navigate(server.url(page));
            QTRY_VERIFY_WITH_TIMEOUT(loaded(view, title), 20000);
            view->zoom().setLevel(zoomLevel);
            clickPage(view, at);
            ++tabs;
            QTRY_COMPARE_WITH_TIMEOUT(w.parts().state.tabCount, tabs, 20000);
        };
        // The window moved since the page was laid out, as a window manager
        // places a window once it shows.
        w.showNormal();
        w.setGeometry(120, 90, 1000, 650);
        QTRY_COMPARE_WITH_TIMEOUT(w.geometry().topLeft(), QPoint(120, 90), 20000);
        opens("/framed-link.html", "Framed", {150, 130}, 2);
        opens("/framed-button.html", "Framed", {150, 130}, 2);
        opens("/link.html", "Link", {100, 100}, 4);
        opens("/framed-link.html", "Framed", {250, 200}, 4);
        view->zoom().setLevel(2);

        // "Open link in new tab" of the page's menu, chosen from the keyboard.
        w.parts().tabs.activateTab(1);
        view->navigate(server.url("/plain-link.html"));
        QTRY_VERIFY_WITH_TIMEOUT(loaded(view, "Plain"), 20000);
        for (const QString& entry :
             {QStringLiteral("Open link in new tab"), QStringLiteral("Open link in new window")}) {
            QWidget* surface = view->engineView()->focusProxy();
            QTest::qWait(1000);
            QTest::mouseClick(surface, Qt::RightButton, {}, {50, 50});
            QMenu* menu = nullptr;
            QTRY_VERIFY_WITH_TIMEOUT(
                (menu = qobject_cast<QMenu*>(QApplication::activePopupWidget())), 20000);
            QAction* open = nullptr;
            for (QAction* action : menu->actions())
                if (action->text().remove('&').compare(entry, Qt::CaseInsensitive) == 0)
                    open = action;
            QVERIFY2(open, qPrintable(entry));
            app.clock.now += 2; // the user reads the menu
            menu->setActiveAction(open);
            QTest::keyClick(menu, Qt::Key_Return);
            ++tabs;
            QTRY_COMPARE_WITH_TIMEOUT(w.parts().state.tabCount, tabs, 20000);
            w.parts().tabs.activateTab(1);
        }
        QCOMPARE(w.parts().bar.band("sub_Blocked")->count(), 0);
    }

    void picturesAndFlashLeaveThePageAndItsFrames()
    {
        EngineApp app;
        MainWindow& w = *app.window;
        QUrl other(server.url("/report-frame.html"));
        other.setHost("localhost");
        server.setPage(
            "/content.html",
            titled("Content", "<img src='/pic.gif'><embed src='MOVIE.SWF'>"
                              "<embed src='swfinfo.gif'><embed src='clip.mp4'>"
                              "<object data='movie'><param name=movie value='a.swf'>"
                              "</object><object id=player data='player.wmv'>"
                              "<param name=src value='song.wma'></object>"
                              "<iframe src='/content-frame.html'></iframe><iframe src='" +
                                  other.toEncoded() +
                                  "'></iframe><script>addEventListener('message', "
                                  "(e) => document.body.dataset.frame = e.data)"
                                  "</script>"));
        WebEngineBrowserView* view = app.startAt(server.url("/content.html"), "Content");
        QVERIFY(view);
        const QString frameKept = "document.body.dataset.frame";
        QTRY_COMPARE_WITH_TIMEOUT(ask(view, frameKept).toString(), "1", 20000);
        const QString left =
            "[document.images.length, document.querySelector('iframe').contentDocument.images"
            ".length, Array.from(document.querySelectorAll('embed, object'), e => "
            "e.getAttribute('src') || e.getAttribute('data')).join(' ')].join('|')";
        QCOMPARE(ask(view, left).toString(), "1|1|MOVIE.SWF swfinfo.gif clip.mp4 movie player.wmv");

        auto click = [&](const char* key) {
            w.parts().bar.reportClick(w.parts().bar.tool("sub_ContentBlock", key));
        };
        click("b_imgs");
        QTRY_COMPARE_WITH_TIMEOUT(ask(view, left).toString(),
                                  "0|0|MOVIE.SWF swfinfo.gif clip.mp4 movie player.wmv", 20000);
        click("b_swfs");
        QTRY_COMPARE_WITH_TIMEOUT(ask(view, left).toString(), "0|0|clip.mp4 player.wmv", 20000);

        // A new document loses them as soon as it has loaded.
        click("b_swfs");
        QSignalSpy reloaded(view, &BrowserView::documentComplete);
        view->refresh();
        QTRY_VERIFY_WITH_TIMEOUT(!reloaded.isEmpty(), 20000);
        QTRY_COMPARE_WITH_TIMEOUT(ask(view, left).toString(),
                                  "0|0|MOVIE.SWF swfinfo.gif clip.mp4 movie player.wmv", 20000);
        // A frame of another origin takes its own out as it loads.
        QTRY_COMPARE_WITH_TIMEOUT(ask(view, frameKept).toString(), "0", 20000);

        // A page that never finishes loading (a picture its server never
        // answers) loses its pictures all the same.
        QTcpServer silent;
        QVERIFY(silent.listen(QHostAddress::LocalHost));
        server.setPage("/endless.html",
                       titled("Endless", QStringLiteral("<img src='/pic.gif'><img src='http://"
                                                        "127.0.0.1:%1/never.gif'>")
                                             .arg(silent.serverPort())
                                             .toUtf8()));
        QSignalSpy finished(view, &BrowserView::documentComplete);
        view->navigate(server.url("/endless.html"));
        QTRY_VERIFY_WITH_TIMEOUT(view->title() == "Endless", 20000);
        QTRY_COMPARE_WITH_TIMEOUT(ask(view, "document.images.length").toInt(), 0, 20000);
        QCOMPARE(finished.count(), 0);
        view->stop();
    }
};

QUB_TEST_MAIN(PopupsTest)
#include "tst_popups.moc"
