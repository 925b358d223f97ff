// Hostile pages on the real engine: the window keeps answering, a dialog
// storm ends after a few dialogs, nothing a page forges counts as the user's
// click, a page opened from disk reads no other file, another program starts
// only when the user says so, and a peer connection sends nothing around the
// proxy. The longest pause of the event loop is measured and logged; a pause
// of seconds, a hang, fails.
#include "platform/browser/ScriptDialogLimit.h"
#include "support/EngineApp.h"
#include "support/Files.h"
#include "support/LocalHttpServer.h"
#include "support/LoopWatch.h"
#include "support/TestMain.h"

#include <QNetworkProxy>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QUdpSocket>

using namespace platform;

namespace {

constexpr qint64 hangMs = 2000;

bool titled(BrowserView* view, const QString& title)
{
    return view && view->title() == title;
}

void report(const char* page, const LoopWatch& watch)
{
    qInfo("%s: the event loop paused at most %lld ms", page, watch.longestGapMs());
}

} // namespace

class HostileTest : public QObject
{
    Q_OBJECT
    LocalHttpServer server;

private slots:
    // Every page sets its title to "ready" once its attack is under way.
    void initTestCase()
    {
        // Names of the internet for pages, all served here.
        qputenv("QTWEBENGINE_CHROMIUM_FLAGS",
                qgetenv("QTWEBENGINE_CHROMIUM_FLAGS") +
                    " --host-resolver-rules=\"MAP *.test 127.0.0.1\"");
        const QByteArray ready = "<title>ready</title>";
        server.setPage("/loop.html",
                       ready + "<script>setTimeout(() => { for (;;) {} }, 50);</script>");
        server.setPage("/alerts.html", "<script>for (let i = 0; i < 200; ++i) alert('storm ' + i);"
                                       "document.title = 'ready';</script>");
        server.setPage("/confirms.html",
                       "<script>let yes = 0; for (let i = 0; i < 200; ++i) "
                       "yes += confirm('again?'); document.title = 'ready ' + yes;"
                       "</script>");
        server.setPage(
            "/bounce.html",
            ready + "<script>let n = Number(location.hash.slice(1)) || 0;"
                    "setTimeout(() => location.replace('/bounce.html?' + (++n) + '#' + n), 10);"
                    "</script>");
        QByteArray huge = "<html><head>" + ready + "</head><body>";
        const QByteArray row = "<p>" + QByteArray(990, 'x') + "</p>\n";
        while (huge.size() < 50 * 1024 * 1024)
            huge += row;
        server.setPage("/huge.html", huge + "</body></html>");
        // Looks for the agent's channel, guesses at its relay, and clicks by script.
        server.setPage(
            "/forger.html",
            "<a id=a href='#x' style='display:block;width:200px;height:100px'>link</a><script>"
            "const seen = [typeof qt, typeof QWebChannel, typeof qubAgent].join(',');"
            "const record = {kind: 'click', tag: 'A', trusted: true, subframe: false};"
            "window.postMessage({qubAgentRelay: '', record: record}, '*');"
            "window.postMessage({qubAgentRelay: undefined, record: record}, '*');"
            "document.getElementById('a').click();"
            "document.getElementById('a').dispatchEvent(new MouseEvent('click', {bubbles: true}));"
            "document.title = 'ready ' + seen;</script>");
        server.setPage("/prompt.html",
                       "<script>document.title = 'said ' + prompt('<b>name?</b>', 'x');</script>");
        server.setPage("/other-program.html",
                       "<title>ready</title><a href='qubpoc://run?x=1' style='display:block;"
                       "width:400px;height:200px'>run</a><a id=none href='nohandler://y'>none</a>");
    }
    void init() { testsupport::failOnUnexpectedWarnings(); }

    void busyAndHugePagesLeaveTheWindowAnswering()
    {
        EngineApp app;
        MainWindow& w = *app.window;
        QVERIFY(w.start(server.url("/loop.html")));
        QTRY_VERIFY_WITH_TIMEOUT(titled(w.parts().tabs.view(1), "ready"), 20000);
        {
            LoopWatch watch;
            w.parts().tabs.newTab(server.url("/huge.html"), true);
            QTRY_VERIFY_WITH_TIMEOUT(titled(w.parts().tabs.view(2), "ready"), 60000);
            // The tab whose script never returns closes like any other.
            w.parts().tabs.closeTab(1);
            QCOMPARE(app.tabKeys(), QStringList{"tabs-2"});
            report("a script loop and a 50 MB page", watch);
            QVERIFY(watch.longestGapMs() < hangMs);
        }
        {
            LoopWatch watch;
            w.parts().tabs.view(2)->navigate(server.url("/bounce.html"));
            // The page counts its own navigations in its address.
            QTRY_VERIFY_WITH_TIMEOUT(
                QUrl(w.parts().tabs.view(2)->locationUrl()).query().toInt() >= 100, 30000);
            w.parts().tabs.newTab(server.url("/alerts.html"), true);
            QTRY_VERIFY_WITH_TIMEOUT(titled(w.parts().tabs.view(3), "ready"), 20000);
            report("a page navigating itself 10 ms after every load", watch);
            QVERIFY(watch.longestGapMs() < hangMs);
        }
    }

    void dialogStormsEndAfterAFew()
    {
        EngineApp app;
        MainWindow& w = *app.window;
        QVERIFY(w.start(server.url("/alerts.html")));
        QTRY_VERIFY_WITH_TIMEOUT(titled(w.parts().tabs.view(1), "ready"), 20000);
        QCOMPARE(app.dialogs.asked, QStringList({"storm 0", "storm 1", "storm 2"}));

        // Confirms that go unasked count as refused.
        app.dialogs.asked.clear();
        w.parts().tabs.view(1)->navigate(server.url("/confirms.html"));
        QTRY_COMPARE_WITH_TIMEOUT(w.parts().tabs.view(1)->title(), QStringLiteral("ready 3"),
                                  20000);
        QCOMPARE(app.dialogs.asked.size(), ScriptDialogLimit::burst);
    }

    void forgedClicksAreNeverTheUsers()
    {
        EngineApp app;
        MainWindow& w = *app.window;
        QVERIFY(w.start({}));
        BrowserView* view = w.parts().tabs.view(1);
        QSignalSpy clicks(view, &BrowserView::pageClicked);
        view->navigate(server.url("/forger.html"));
        QTRY_VERIFY_WITH_TIMEOUT(titled(view, "ready undefined,undefined,undefined"), 20000);
        // The script's own clicks are not reported at all; the user's is.
        clickPage(app.engineView(1), {50, 50});
        QTRY_COMPARE_WITH_TIMEOUT(clicks.size(), 1, 20000);
        QVERIFY(clicks[0][0].value<PageClick>().trusted);
    }

    void otherProgramsStartOnlyWhenTheUserSaysSo()
    {
        EngineApp app;
        app.shell.handlers["qubpoc"] = "Poc Launcher";
        app.dialogs.inputs = {"Ann"};
        BrowserView* view = app.startAt(server.url("/prompt.html"), "said Ann");
        QVERIFY(view);
        QCOMPARE(app.dialogs.asked, QStringList{"<b>name?</b> [x]"});

        app.dialogs.asked.clear();
        view->navigate(server.url("/other-program.html"));
        QTRY_VERIFY_WITH_TIMEOUT(titled(view, "ready"), 20000);
        // Script alone, with no click of the user's, is not even asked about.
        ask(view, "location.href = 'qubpoc://by-script'; document.getElementById('none').click();");
        app.dialogs.answers = {Dialogs::Answer::Cancel, Dialogs::Answer::Ok};
        clickPage(app.engineView(1), {100, 50});
        QTRY_COMPARE_WITH_TIMEOUT(app.dialogs.asked.size(), 1, 10000);
        QVERIFY2(app.dialogs.asked[0].contains("qubpoc://run?x=1 with Poc Launcher"),
                 qPrintable(app.dialogs.asked[0]));
        QVERIFY(app.shell.opened.isEmpty());
        clickPage(app.engineView(1), {100, 50});
        QTRY_COMPARE_WITH_TIMEOUT(app.shell.opened, QStringList{"qubpoc://run?x=1"}, 10000);
        QCOMPARE(app.dialogs.asked.size(), 2);
        QCOMPARE(view->locationUrl(), server.url("/other-program.html"));
    }

    // WebRTC's UDP would reach a STUN server straight, whatever proxy is chosen.
    void peerConnectionsSendNothingAroundTheProxy()
    {
        QUdpSocket stun;
        // The program's own proxy is the application's, and takes no UDP.
        stun.setProxy(QNetworkProxy::NoProxy);
        QVERIFY2(stun.bind(QHostAddress(QHostAddress::LocalHost)), qPrintable(stun.errorString()));
        server.setPage("/peer.html",
                       "<script>const pc = new RTCPeerConnection({iceServers: [{urls: "
                       "'stun:127.0.0.1:" +
                           QByteArray::number(stun.localPort()) +
                           "'}]}); pc.createDataChannel('x');"
                           "pc.onicegatheringstatechange = () => { if (pc.iceGatheringState "
                           "== 'complete') document.title = 'gathered'; };"
                           "pc.createOffer().then((offer) => pc.setLocalDescription(offer));"
                           "</script>");
        EngineApp app;
        QVERIFY(app.window->start(server.url("/peer.html")));
        QTRY_VERIFY_WITH_TIMEOUT(
            titled(app.engineView(1), "gathered") || stun.hasPendingDatagrams(), 20000);
        QVERIFY(!stun.hasPendingDatagrams());
    }

    // A saved or downloaded page is opened from disk, beside the user's files.
    // Sign-in boxes over a page come only from the page's own site, and a
    // click that starts twenty downloads brings up a few save dialogs.
    void noPageBuriesTheUserInDialogs()
    {
        LocalHttpServer other;
        other.setResponse("/private.png", {"", "image/png", "", "ann:secret"});
        other.setResponse("/private.html",
                          {"<title>framed</title>", "text/html", "", "ann:secret"});
        const QString elsewhere = other.url("/private").replace("127.0.0.1", "localhost");
        server.setPage("/pictures.html",
                       ("<img src='" + elsewhere + ".png?1'><img src='" + elsewhere +
                        ".png?2'><iframe src='" + elsewhere +
                        ".html'></iframe>"
                        "<script>onload = () => document.title = 'ready';</script>")
                           .toUtf8());
        server.setResponse("/own.html", {"<title>own</title>", "text/html", "", "ann:secret"});
        server.setPage("/downloads.html",
                       "<title>ready</title><button style='width:400px;height:200px' onclick=\""
                       "for (let i = 0; i < 20; ++i) { const a = document.createElement('a');"
                       "a.href = 'data:text/plain,x'; a.download = 'Invoice' + i + '.pdf.desktop';"
                       "a.click(); }\">get</button>");
        EngineApp app;
        BrowserView* view = app.startAt(server.url("/pictures.html"), "ready");
        QVERIFY(view);
        QCOMPARE(other.requests("/private.png"), 2);
        QVERIFY2(app.dialogs.asked.isEmpty(), qPrintable(app.dialogs.asked.join('|')));
        app.dialogs.logins = {{"ann", "secret"}};
        view->navigate(server.url("/own.html"));
        QTRY_VERIFY_WITH_TIMEOUT(titled(view, "own"), 20000);
        QCOMPARE(app.dialogs.asked.size(), 1);

        app.dialogs.asked.clear();
        view->navigate(server.url("/downloads.html"));
        QTRY_VERIFY_WITH_TIMEOUT(titled(view, "ready"), 20000);
        QVERIFY(drawn(view));
        clickPage(app.engineView(1), {100, 50});
        QTRY_VERIFY_WITH_TIMEOUT(!app.dialogs.asked.isEmpty(), 20000);
        QTest::qWait(1000);
        QCOMPARE(app.dialogs.asked.size(), ScriptDialogLimit::burst);
        for (const QString& asked : app.dialogs.asked)
            QVERIFY2(asked.contains("/Invoice") && asked.endsWith(".pdf.desktop"),
                     qPrintable(asked));
    }

    // A page from the internet reaches nothing of this computer or the local
    // network but by the user's navigation, whatever route the request takes.
    void thePageStaysOutsideTheLocalNetwork()
    {
        server.setPage("/inward.html",
                       "<script>const ask = (address) => fetch(address, {mode: 'no-cors'})"
                       ".then(() => 'reached', () => 'blocked');"
                       "Promise.all([ask('http://192.168.255.254:9/router'),"
                       "ask(location.href.replace('public.test', '127.0.0.1') + '?here')])"
                       ".then((answers) => document.title = answers.join(','));</script>");
        EngineApp app;
        const QString page = server.url("/inward.html").replace("127.0.0.1", "public.test");
        BrowserView* view = app.startAt(page, "blocked,blocked");
        QVERIFY2(view, qPrintable(app.engineView(1)->title()));
        QCOMPARE(server.requests("/inward.html"), 1);
        // The user's own way there is theirs.
        view->navigate(server.url("/inward.html"));
        QTRY_COMPARE_WITH_TIMEOUT(server.requests("/inward.html"), 2, 20000);
    }

    void localFilesStayLocal()
    {
        QTemporaryDir dir;
        writeFile(dir.filePath("secret.txt"), "TOPSECRET");
        writeFile(dir.filePath("steal.html"), R"(<title>start</title><script>
            const read = (address) => new Promise((done) => {
              const x = new XMLHttpRequest();
              x.onload = () => done('READ ' + x.responseText.length);
              x.onerror = () => done('BLOCKED');
              try { x.open('GET', address); x.send(); } catch (e) { done('BLOCKED'); }
            });
            Promise.all([read('secret.txt'), read('./')])
                .then((answers) => { document.title = answers.join(','); });
            </script>)");
        EngineApp app;
        BrowserView* view = app.startAt(QUrl::fromLocalFile(dir.filePath("steal.html")).toString(),
                                        "BLOCKED,BLOCKED");
        QVERIFY2(view, qPrintable(app.engineView(1)->title()));
    }
};

// Names of the internet for pages, all served here.
QUB_TEST_MAIN_WITH_TEST_NAMES(HostileTest)
#include "tst_hostile.moc"
