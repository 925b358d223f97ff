// The quick saver: its file names, its never-overwriting save, the page it
// writes, and the built qsexdll against a local server.
#include "proxy/ForwardingProxy.h"
#include "quicksaver/SaveTarget.h"
#include "quicksaver/SavedPage.h"
#include "support/Files.h"
#include "support/HtmlQuery.h"
#include "support/LocalHttpServer.h"
#include "support/LoggingProxy.h"
#include "support/TestMain.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

using namespace quicksaver;

namespace {

// The text of what an XPath expression selects in a page, in page order.
QStringList select(const QByteArray& html, const char* path)
{
    return selectInPage(html, path).value_or(QStringList());
}

QString data(const char* type, const QByteArray& bytes)
{
    return QStringLiteral("data:%1;base64,%2").arg(type, bytes.toBase64());
}

const QUrl pageUrl(QStringLiteral("http://site.test/dir/page.html"));

Resources fetched()
{
    const auto r = [](const char* bytes, const char* type) { return Resource{bytes, type, {}}; };
    return {{QUrl("http://site.test/img/a.png"), r("PNG-A", "image/png")},
            {QUrl("http://cdn.test/b.png"), r("PNG-B", "image/png; q=1")},
            {QUrl("http://site.test/css/s.css"), r("b{background:url(../img/a.png)}", "text/css")}};
}

} // namespace

class QuickSaverTest : public QObject
{
    Q_OBJECT
    QTemporaryDir dir;

private slots:
    void init() { testsupport::failOnUnexpectedWarnings(); }

    void fileName_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char* name, const QString& title, const QString& expected) {
            QTest::newRow(name) << title << expected;
        };
        row("plain", "News", "News");
        row("blanks collapsed", "  A \t\n  B  ", "A B");
        row("forbidden characters", "a/b\\c:d*e?f\"g<h>i|j", "abcdefghij");
        row("control characters", QString("a") + QChar(1) + "b" + QChar(0x7f) + "c", "abc");
        row("no leading dot", ". .hidden", "hidden");
        row("no trailing dots or blanks", "Dots... . ", "Dots");
        row("at most 100 characters", QString(150, 'x'), QString(100, 'x'));
        row("a pair is never cut", QString(99, 'x') + QString::fromUtf8("\U0001F600"),
            QString(99, 'x'));
        row("at most 200 bytes", QString(100, QChar(0x4E2D)), QString(66, QChar(0x4E2D)));
        row("nothing left: the host", "/:*", "site.test");
        row("empty", "", "site.test");
    }
    void fileName()
    {
        QFETCH(QString, title);
        QTEST(safeFileName(title, pageUrl), "expected");
        QCOMPARE(safeFileName({}, QUrl("file:///tmp/x.html")), QStringLiteral("Saved page"));
    }

    void saveNeverOverwrites()
    {
        const QString folder = dir.filePath("saves");
        QVERIFY(QDir().mkpath(folder));
        writeFile(folder + "/Page.html", "earlier save");
        QString error;
        QCOMPARE(saveUnique(folder, "Page", "one", &error), folder + "/Page (2).html");
        QCOMPARE(saveUnique(folder, "Page", "two", &error), folder + "/Page (3).html");
        QCOMPARE(readFile(folder + "/Page.html"), QByteArray("earlier save"));
        QVERIFY(saveUnique(dir.filePath("absent"), "Page", "x", &error).isEmpty());
        QVERIFY(error.contains("absent"));
    }

    void wanted()
    {
        const SavedPage page(
            "<head><link rel='stylesheet' href='/css/s.css'><link rel='icon' href='fav.ico'>"
            "<script src='s.js'></script></head><body style='background:url(bg.png)'>"
            "<img src='../img/a.png'><img src='/img/a.png#x'><img src='ftp://site.test/f.png'>"
            "<img src='data:,x'><img src='file:///etc/passwd'><img src=''>"
            "<noscript><img src='n.png'></noscript></body>",
            pageUrl);
        const QList<QUrl> before = {
            QUrl("http://site.test/css/s.css"), QUrl("http://site.test/dir/fav.ico"),
            QUrl("http://site.test/dir/bg.png"), QUrl("http://site.test/img/a.png")};
        QCOMPARE(page.wanted({}), before);
        // What a stylesheet names resolves against the stylesheet.
        Resources sheet{{QUrl("http://site.test/css/s.css"), {"a{b:url(c.png)}", "text/css", {}}}};
        QList<QUrl> after = before;
        after.insert(1, QUrl("http://site.test/css/c.png"));
        QCOMPARE(page.wanted(sheet), after);
        // A local page may name local files.
        QCOMPARE(SavedPage("<img src='a.png'>", QUrl("file:///p/x.html")).wanted({}),
                 QList<QUrl>{QUrl("file:///p/a.png")});
    }

    void rewrite_data()
    {
        QTest::addColumn<QByteArray>("record");
        QTest::addColumn<QByteArray>("path");
        QTest::addColumn<QStringList>("expected");
        const QString a = data("image/png", "PNG-A");
        QTest::newRow("relative to the address")
            << QByteArray("<img src='../img/a.png'><a href='x.html?a=1&amp;b=2'>")
            << QByteArray("//img/@src | //a/@href")
            << QStringList{a, "http://site.test/dir/x.html?a=1&b=2"};
        QTest::newRow("relative to <base>")
            << QByteArray(
                   "<head><base href='http://cdn.test/'></head><img src='b.png'><a href='x'>")
            << QByteArray("//img/@src | //a/@href | //base")
            << QStringList{data("image/png", "PNG-B"), "http://cdn.test/x"};
        QTest::newRow("failed stays absolute, fragment link stays")
            << QByteArray("<img src='gone.png'><a href='#top'>")
            << QByteArray("//img/@src | //a/@href")
            << QStringList{"http://site.test/dir/gone.png", "#top"};
        QTest::newRow("srcset dropped")
            << QByteArray("<img src='/img/a.png' srcset='big.png 2x' sizes='9px'>")
            << QByteArray("//img/@*") << QStringList{a};
        QTest::newRow("scripts and handlers removed")
            << QByteArray("<head><script>x()</script></head><body onload='x()'>"
                          "<noscript>off</noscript><a href='javascript:x()' onClick='x()'>t</a>"
                          "<iframe srcdoc='&lt;script&gt;x()&lt;/script&gt;'></iframe>")
            << QByteArray("//script | //noscript | //@onload | //@onclick | //a/@* | //@srcdoc")
            << QStringList{};
        // Markup a browser reads back out of an SVG style, and script
        // addresses under any attribute name, run nothing; the page forbids
        // script anyway.
        QTest::newRow("nothing runs, however it is dressed")
            << QByteArray("<svg><style><img src=x onerror=go()></style></svg><svg><a "
                          "xlink:href=' JavaScript:go()'><text>t</text></a><animate "
                          "attributeName=href values='#;java&#9;script:go()'/></svg>")
            << QByteArray("//style[contains(., '<')] | //@*[contains(translate(., "
                          "'JAVSCRIPT', 'javscript'), 'script:')] | //meta[@http-equiv]/@content")
            << QStringList{"script-src 'none'; object-src 'none'"};
        QTest::newRow("stylesheet becomes <style>")
            << QByteArray("<head><link rel='stylesheet' href='/css/s.css' media='print'></head>")
            << QByteArray("//link | //style | //style/@media")
            << QStringList{"b{background:url(\"" + a + "\")}", "print"};
        QTest::newRow("url() in style")
            << QByteArray("<style>i{x:url( '/img/a.png' )} /* url(a.png) */</style>"
                          "<p style='background: url(/img/gone.png)'>")
            << QByteArray("//style | //p/@style")
            << QStringList{"i{x:url(\"" + a + "\")} /* url(a.png) */",
                           "background: url(\"http://site.test/img/gone.png\")"};
        QTest::newRow("markup in a title or an attribute stays text")
            << QByteArray("<head><title>A &lt;/title&gt;&lt;script&gt;x()&lt;/script&gt;</title>"
                          "</head><img alt='\"&gt;&lt;script&gt;x()&lt;/script&gt;'>")
            << QByteArray("//title | //img/@alt | //script")
            << QStringList{"A </title><script>x()</script>", "\"><script>x()</script>"};
        QTest::newRow("one charset, UTF-8, first in head")
            << QByteArray("<head><title>t</title><meta charset='latin1'></head><p>Grüße 中")
            << QByteArray("//head/*[1]/@charset | //meta/@charset | //p")
            << QStringList{"utf-8", "Grüße 中"};
    }
    void rewrite()
    {
        QFETCH(QByteArray, record);
        QFETCH(QByteArray, path);
        const QByteArray html = SavedPage(record, pageUrl).render(fetched());
        QVERIFY(html.startsWith("<!DOCTYPE html>"));
        QTEST(select(html, path.constData()), "expected");
    }

    void savesThroughTheProgram()
    {
#ifndef QUB_HAVE_QSEXDLL
        QSKIP("this configuration builds no qsexdll");
#endif
        const QByteArray picture = QByteArray("\x89PNG\r\n\x1a\n\0\xff", 10).repeated(50);
        LocalHttpServer server;
        server.setResponse("/pic.png", {picture, "image/png"});
        server.setResponse("/bg.png", {"BG", "image/png"});
        server.setResponse("/style.css", {"h1{background:url(bg.png)}", "text/css"});
        const QString folder = dir.filePath("SavedFiles");
        QVERIFY(QDir().mkpath(folder));

        for (const QString name : {"Trip Photos.html", "Trip Photos (2).html"}) {
            writeFile(folder + "/QuickSave.dat",
                      "<head><title>Trip: Photos</title><link rel=stylesheet href=/style.css>"
                      "</head><body><h1>Hi</h1><img src=pic.png><img src=/pic.png></body>\n");
            const auto [code, out, err] = run({"url:" + server.url("/page.html")});
            QCOMPARE(code, 0);
            QVERIFY(!QFileInfo::exists(folder + "/QuickSave.dat"));
            QCOMPARE(out, folder + '/' + name + '\n');
            const QByteArray html = readFile(folder + '/' + name);
            const QStringList sources = select(html, "//img/@src");
            QCOMPARE(sources.size(), 2);
            for (const QString& source : sources) {
                QVERIFY(source.startsWith("data:image/png;base64,"));
                QCOMPARE(QByteArray::fromBase64(source.section(',', 1).toLatin1()), picture);
            }
            QCOMPARE(select(html, "//style"),
                     QStringList{"h1{background:url(\"" + data("image/png", "BG") + "\")}"});
            QVERIFY(!html.contains(server.url("/").toUtf8()));
        }
        QCOMPARE(server.requests("/pic.png"), 2);

        // Given the browser's proxy, it fetches through it, so the user's
        // choice of upstream holds; this computer's own pages go straight,
        // as the engine sends them.
        LoggingProxy upstream("U", LoggingProxy::Kind::Http);
        proxy::ForwardingProxy forwarder;
        forwarder.setUpstream(upstream.entry());
        const QString through = QStringLiteral("http://qub:%1@127.0.0.1:%2")
                                    .arg(forwarder.secret())
                                    .arg(forwarder.port());
        const QByteArray page = "<body><img src=pic.png></body>\n";
        writeFile(folder + "/QuickSave.dat", page);
        QCOMPARE(run({"url:http://site.test/page.html"}, {}, through).code, 0);
        QCOMPARE(upstream.hosts, QStringList{"site.test"});
        writeFile(folder + "/QuickSave.dat", page);
        QCOMPARE(run({"url:" + server.url("/page.html")}, {}, through).code, 0);
        QCOMPARE(server.requests("/pic.png"), 3);
        QCOMPARE(upstream.hosts.size(), 1);
    }

    void badInput()
    {
#ifndef QUB_HAVE_QSEXDLL
        QSKIP("this configuration builds no qsexdll");
#endif
        QTemporaryDir empty;
        QVERIFY(QDir(empty.path()).mkdir("SavedFiles"));
        for (const QStringList& arguments : {QStringList{"url:http://site.test/"}, QStringList{}}) {
            const auto [code, out, err] = run(arguments, empty.path());
            QVERIFY(code != 0);
            QVERIFY(out.isEmpty());
            QVERIFY(err.startsWith("qsexdll: "));
            QVERIFY(QDir(empty.filePath("SavedFiles")).isEmpty());
        }
    }

private:
    struct Run
    {
        int code;
        QString out;
        QString err;
    };
    Run run(const QStringList& arguments, const QString& appDir = {}, const QString& proxy = {})
    {
        QProcess saver;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QUB_APPDIR", appDir.isEmpty() ? dir.path() : appDir);
        if (!proxy.isEmpty())
            environment.insert("QUB_SAVER_PROXY", proxy);
        saver.setProcessEnvironment(environment);
        saver.start(QCoreApplication::applicationDirPath() + "/qsexdll", arguments);
        // The server answers from this event loop while the saver runs.
        [&] { QTRY_COMPARE_WITH_TIMEOUT(saver.state(), QProcess::NotRunning, 120000); }();
        if (saver.state() != QProcess::NotRunning) {
            saver.kill();
            saver.waitForFinished();
            return {-1, {}, {}};
        }
        return {saver.exitStatus() == QProcess::NormalExit ? saver.exitCode() : -1,
                QString::fromUtf8(saver.readAllStandardOutput()),
                QString::fromUtf8(saver.readAllStandardError())};
    }
};

QUB_TEST_MAIN(QuickSaverTest)
#include "tst_quicksaver.moc"
