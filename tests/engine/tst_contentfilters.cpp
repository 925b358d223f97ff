// The filter lists on the real engine: a page's ad script, tracker pixel and
// ad frame never reach their servers, its own content does, the count shows
// in the status band, the element rules hide what they name, a popup the
// lists name never opens, and a site the user allowed gets everything.
#include "platform/FilterListPlaces.h"
#include "support/EngineApp.h"
#include "support/Files.h"
#include "support/LocalHttpServer.h"
#include "support/PageProbes.h"
#include "support/TestMain.h"

#include <QDir>

using namespace platform;
using namespace commandbar;

namespace {

const QByteArray smallList = "! a list of the user's\n"
                             "||ads.test^$third-party\n"
                             "/tracker/pixel.gif\n"
                             "||adframe.test^$subdocument\n"
                             "||popup.test^$popup\n"
                             "site.test,other.test##.ad-box\n"
                             "site.test##.promo\n"
                             "site.test##a[href*='%2Fad']\n"
                             "other.test#@#.ad-box\n";

} // namespace

class ContentFiltersTest : public QObject
{
    Q_OBJECT
    LocalHttpServer server;

    QString at(const char* host, const char* path) const
    {
        return QStringLiteral("http://%1:%2%3").arg(host).arg(server.serverPort()).arg(path);
    }
    // The user's own list, and the system's lists switched off.
    static void useSmallList(EngineApp& app)
    {
        QDir().mkpath(app.appDir + "Filters");
        writeFile(app.appDir + "Filters/mine.txt", smallList);
        writeFile(app.appDir + "FilterListsOff.txt", systemFilterLists().join('\n').toUtf8());
    }
    static QString display(BrowserView* view, const char* selector)
    {
        return ask(view, QStringLiteral("getComputedStyle(document.querySelector('%1')).display")
                             .arg(selector))
            .toString();
    }

private slots:
    void initTestCase()
    {
        server.setPage("/page.html",
                       titled("Page", "<script src='" + at("ads.test", "/ad.js").toUtf8() +
                                          "'></script>"
                                          "<img src='/tracker/pixel.gif'><img src='/own.gif'>"
                                          "<iframe src='" +
                                          at("adframe.test", "/frame.html").toUtf8() +
                                          "'></iframe><div class='ad-box'>ad</div>"
                                          "<div class='promo'>promo</div><p id='own'>own</p>"
                                          "<a id='escaped' href='/go?to=%2Fad'>go</a>"
                                          "<a href='" +
                                          at("popup.test", "/win.html").toUtf8() +
                                          "' target=_blank style='position:absolute;left:0;"
                                          "top:0;width:300px;height:150px'>open</a>"));
        server.setResponse(
            "/ad.js",
            {"addEventListener('DOMContentLoaded', () => { document.body.dataset.ad = 'ran'; });",
             "text/javascript"});
        server.setResponse("/own.gif", {"GIF89a", "image/gif"});
        server.setResponse("/tracker/pixel.gif", {"GIF89a", "image/gif"});
        server.setPage("/frame.html", titled("Ad frame"));
        server.setPage("/win.html", titled("Popup"));
        server.setPage("/other.html", titled("Other", "<div class='ad-box'>kept</div>"));
    }
    void init() { testsupport::failOnUnexpectedWarnings(); }

    void listsKeepAdsOutAndTheUserCanAllowASite()
    {
        EngineApp app;
        useSmallList(app);
        MainWindow& w = *app.window;
        WebEngineBrowserView* view = app.startAt(at("site.test", "/page.html"), "Page");
        QVERIFY(view);
        const Tool* count = w.parts().bar.tool(key::statusBar, "b_filtered");
        QTRY_COMPARE_WITH_TIMEOUT(count->caption(), "Filtered:3", 20000);
        QCOMPARE(server.requests("/ad.js"), 0);
        QCOMPARE(server.requests("/tracker/pixel.gif"), 0);
        QCOMPARE(server.requests("/frame.html"), 0);
        QCOMPARE(server.requests("/own.gif"), 1);
        QCOMPARE(ask(view, "String(document.body.dataset.ad)").toString(), "undefined");
        // The run's first page may get its sheet once it has loaded.
        QTRY_COMPARE_WITH_TIMEOUT(display(view, ".ad-box"), "none", 20000);
        QCOMPARE(display(view, ".promo"), "none");
        // A selector's "%2" is the list's, not a placeholder of the program's.
        QCOMPARE(display(view, "#escaped"), "none");
        QCOMPARE(display(view, "#own"), "block");

        // A popup the lists name is listed and never opens, even on a click.
        clickPage(view, {50, 50});
        const Band* blocked = w.parts().bar.band("sub_Blocked");
        QTRY_COMPARE_WITH_TIMEOUT(blocked->count(), 1, 20000);
        QCOMPARE(w.parts().state.tabCount, 1);
        QCOMPARE(server.requests("/win.html"), 0);

        // The site's exception keeps its element; the count is the page's.
        view->navigate(at("other.test", "/other.html"));
        QVERIFY(QTest::qWaitFor([&] { return loaded(view, "Other"); }, 20000));
        QCOMPARE(display(view, ".ad-box"), "block");
        QCOMPARE(count->caption(), "Filtered:");

        // Allowed, the site gets everything, and keeps it after a restart.
        view->navigate(at("site.test", "/page.html"));
        QVERIFY(QTest::qWaitFor([&] { return loaded(view, "Page"); }, 20000));
        QTRY_COMPARE_WITH_TIMEOUT(count->caption(), "Filtered:3", 20000);
        w.parts().bar.reportClick(w.parts().bar.tool(key::contentBlockMenu, "b_allowsite"));
        QTRY_COMPARE_WITH_TIMEOUT(ask(view, "document.body.dataset.ad").toString(), "ran", 20000);
        QTRY_COMPARE_WITH_TIMEOUT(display(view, ".ad-box"), "block", 20000);
        QCOMPARE(count->caption(), "Filtered:");
        QVERIFY(w.parts().bar.tool(key::contentBlockMenu, "b_allowsite")->checked());
        QCOMPARE(readFile(app.appDir + "AllowedSites.txt"), "http://site.test\n");
        app.restart();
        view = app.startAt(at("www.site.test", "/page.html"), "Page");
        QVERIFY(view);
        QTRY_COMPARE_WITH_TIMEOUT(ask(view, "document.body.dataset.ad").toString(), "ran", 20000);
        // The last pages came back too; the switch is the tab in front's.
        app.window->parts().tabs.activateTab(1);
        QVERIFY(app.window->parts().bar.tool(key::contentBlockMenu, "b_allowsite")->checked());
    }

    // Addresses a page makes up go through every filter of the real lists,
    // regular expressions included, and the page still answers.
    void longAddressesAgainstTheRealLists()
    {
        if (systemFilterLists().isEmpty())
            QSKIP("the system's filter lists are not installed");
        EngineApp app;
        WebEngineBrowserView* view = app.startAt(at("site.test", "/other.html"), "Other");
        QVERIFY(view);
        ask(view, "for (let i = 0; i < 10; i++) {"
                  "  new Image().src = '/pixel.gif?' + i + 'ad_-.'.repeat(200000);"
                  "  fetch('/collect?v=' + '/a^'.repeat(100000 + i)).catch(() => {});"
                  "}");
        QTRY_VERIFY_WITH_TIMEOUT(
            app.window->parts().bar.tool(key::statusBar, "b_filtered")->caption() == "Filtered:20",
            60000);
        QCOMPARE(ask(view, "document.title").toString(), "Other");
    }
};

QUB_TEST_MAIN_WITH_TEST_NAMES(ContentFiltersTest)
#include "tst_contentfilters.moc"
