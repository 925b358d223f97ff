// Proxies on the real engine: two logging proxies on the loopback address
// (one HTTP, one SOCKS5) and a local site reached by two host names. What
// each proxy logged shows which route every request of every tab took.
#include "support/EngineApp.h"
#include "support/Files.h"
#include "support/LocalHttpServer.h"
#include "support/LoggingProxy.h"
#include "support/TestMain.h"

using namespace platform;
using namespace commandbar;

class ProxyTest : public QObject
{
    Q_OBJECT
private slots:
    void init() { testsupport::failOnUnexpectedWarnings(); }

    void everyTabFollowsTheChosenRoute()
    {
        LocalHttpServer site;
        // Pages name their icons: a late /favicon.ico would take whatever
        // route is in force when the engine gets round to asking for it.
        site.setPage("/p", "<html><head><link rel=icon href='data:,'><title>direct</title></head>"
                           "</html>");
        LoggingProxy a("A", LoggingProxy::Kind::Http);
        LoggingProxy b("B", LoggingProxy::Kind::Socks5);
        const auto address = [&](const char* host) {
            return QStringLiteral("http://%1:%2/p").arg(host).arg(site.serverPort());
        };

        EngineApp app;
        writeFile(app.appDir + "Proxies.txt", (a.entry() + "\n\n# spare\n" + b.entry()).toUtf8());
        WebEngineBrowserView* first = app.startAt(address("one.test"), "direct");
        QVERIFY(first);
        MainWindow::Parts parts = app.window->parts();
        parts.tabs.newTab(address("two.test"), false);
        WebEngineBrowserView* second = app.engineView(2);
        QTRY_VERIFY_WITH_TIMEOUT(loaded(second, "direct"), 20000);
        QVERIFY(a.hosts.isEmpty() && b.hosts.isEmpty());

        Band* menu = parts.bar.band(key::proxyMenu);
        QCOMPARE(menu->count(), 4);
        QCOMPARE(menu->at(2)->caption(), a.entry());
        QVERIFY(menu->at(0)->checked());
        const auto loadBoth = [&](const QString& one, const QString& two) {
            first->navigate(address("one.test"));
            second->navigate(address("two.test"));
            return QTest::qWaitFor([&] { return loaded(first, one) && loaded(second, two); },
                                   20000);
        };

        parts.bar.reportClick(menu->at(2));
        QVERIFY(loadBoth("via A one.test", "via A two.test"));
        QCOMPARE(a.hosts.size(), 2);
        parts.bar.reportClick(menu->at(3));
        QVERIFY(loadBoth("via B one.test", "via B two.test"));
        QCOMPARE(a.hosts.size(), 2); // nothing more by the old route
        QVERIFY(menu->at(3)->checked() && !menu->at(2)->checked());

        // The current tab's site bypasses the proxy, at once and after.
        parts.bar.reportClick(parts.bar.tool(key::toolsMenu, "b_addtononproxy"));
        QVERIFY(loadBoth("direct", "via B two.test"));
        QCOMPARE(readFile(app.appDir + "NoProxy.txt"), QByteArray("one.test\n"));
        const int carriedByB = b.hosts.size();
        parts.bar.reportClick(menu->at(0));
        QVERIFY(loadBoth("direct", "direct"));
        QCOMPARE(b.hosts.size(), carriedByB);

        // The choice lives through a real shut-down.
        parts.bar.reportClick(menu->at(3));
        app.dialogs.answers = {Dialogs::Answer::Ok};
        app.window->quit();
        QVERIFY(readFile(app.appDir + "Browser.ini").contains("PROXY_IP=" + b.entry().toUtf8()));
        app.restart();
        QVERIFY(app.startAt(address("two.test"), "via B two.test"));
        QVERIFY(app.window->parts().bar.band(key::proxyMenu)->at(3)->checked());
    }

    // A page whose answer is slow is still loading when the proxy changes: it
    // comes in by the route it was asked on, and everything asked after the
    // change, in any tab, goes the new way.
    void aPageLoadingWhileTheProxyChangesComesIn()
    {
        LoggingProxy a("A", LoggingProxy::Kind::Http);
        LoggingProxy b("B", LoggingProxy::Kind::Socks5);
        a.holdHost = "slow.test";
        const auto address = [](const char* host) {
            return QStringLiteral("http://%1/p").arg(host);
        };
        EngineApp app;
        writeFile(app.appDir + "Proxies.txt", (a.entry() + '\n' + b.entry()).toUtf8());
        writeFile(app.appDir + "Browser.ini", "[QUB-BROWSER]\r\nPROXY_IP=" + a.entry().toUtf8());
        WebEngineBrowserView* first = app.startAt(address("one.test"), "via A one.test");
        QVERIFY(first);
        MainWindow::Parts parts = app.window->parts();

        first->navigate(address("slow.test"));
        QTRY_VERIFY_WITH_TIMEOUT(a.hosts.contains("slow.test"), 20000);
        parts.bar.reportClick(parts.bar.band(key::proxyMenu)->at(3));
        parts.tabs.newTab(address("two.test"), false);
        QTRY_VERIFY_WITH_TIMEOUT(loaded(app.engineView(2), "via B two.test"), 20000);
        a.release();
        QTRY_VERIFY_WITH_TIMEOUT(loaded(first, "via A slow.test"), 20000);
        first->navigate(address("slow.test"));
        QTRY_VERIFY_WITH_TIMEOUT(loaded(first, "via B slow.test"), 20000);
        QCOMPARE(a.hosts.count("slow.test"), 1);
        QVERIFY(!a.hosts.contains("two.test"));
    }
};

QUB_TEST_MAIN_WITH_TEST_NAMES(ProxyTest)

#include "tst_proxy.moc"
