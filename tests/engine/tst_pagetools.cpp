// The page tools on the real engine: the links page across frames of the
// page's origin, filtered once, running nothing a hostile page put in it; the text
// view; quick save through the quick saver beside the program.
#include "platform/TextWindow.h"
#include "support/EngineApp.h"
#include "support/LocalHttpServer.h"
#include "support/PageProbes.h"
#include "support/TestMain.h"

#include <QApplication>
#include <QBuffer>
#include <QFileInfo>
#include <QImage>
#include <QProcess>

using namespace platform;

namespace {

const QString gap = QStringLiteral("\u00a0\u00a0\u00a0");

QStringList entries(const QList<QByteArray>& hrefs)
{
    QStringList lines;
    for (const QByteArray& href : hrefs)
        lines << QString::number(lines.size() + 1) + '.' + gap + QString::fromUtf8(href);
    return lines;
}

} // namespace

class PageToolsTest : public QObject
{
    Q_OBJECT
    LocalHttpServer server;
    QByteArray ran;

    static void click(EngineApp& app, const QString& band, const QString& key)
    {
        app.window->parts().bar.reportClick(app.window->parts().bar.tool(band, key));
    }
    // The entries of the links page in the current tab, once it is written.
    static QStringList linksPage(EngineApp& app, const QString& source)
    {
        BrowserView* page = app.window->parts().tabs.view(app.window->parts().state.currentTab);
        if (!QTest::qWaitFor([&] { return loaded(page, source); }, 20000))
            return {QStringLiteral("no links page")};
        return ask(page, "Array.from(document.querySelectorAll('center'), c => c.textContent)")
            .toStringList();
    }

private slots:
    void initTestCase()
    {
        // The links page is at about:blank: what it would run must name the server.
        ran = server.url("/ran").toUtf8();
        server.setPage("/links.html",
                       titled("Links", "<a href='http://a.test/one.htm'>one</a>"
                                       "<a href='/relative.htm'>relative</a>"
                                       "<img href='http://img.test/pic.HTM' src='data:,'>"
                                       "<style href=\"@import url(" +
                                           server.url("/x.css").toUtf8() +
                                           ");/*://*/\"></style><img href='" +
                                           server.url("/ping.gif").toUtf8() +
                                           "' src='data:,'>"
                                           "<a href=\"javascript://%0Afetch('" +
                                           ran +
                                           "')\">script</a>"
                                           "<a href=\"http://evil.test/'><script>fetch('" +
                                           ran +
                                           "')</script>\">markup</a>"
                                           "<iframe src='/frame.html'></iframe>"
                                           "<iframe sandbox='allow-scripts' src='/other.html'>"
                                           "</iframe>"));
        server.setPage("/frame.html", titled("Frame", "<a href='http://f1.test/a.htm'>f1</a>"));
        // Sandboxed, so of another origin than the page around it: its links
        // are its own, and the links page leaves them out.
        server.setPage("/other.html", titled("Other", "<a href='HTTP://F2.TEST/B.HTM'>f2</a>"
                                                      "<a href='http://f2.test/c.php'>c</a>"));
        server.setPage("/text.html", titled("Text", "<p>Plain words here</p>"));
        QImage picture(40, 30, QImage::Format_RGB32);
        picture.fill(Qt::darkGreen);
        QBuffer png;
        png.open(QIODevice::WriteOnly);
        picture.save(&png, "PNG");
        server.setResponse("/green.png", {png.data(), "image/png"});
        server.setPage("/save.html",
                       titled("Saved page", "<p>Kept words</p><img src='green.png'>"));
    }
    void init() { testsupport::failOnUnexpectedWarnings(); }

    void linksPageNumbersAcrossFramesAndRunsNothing()
    {
        EngineApp app;
        MainWindow& w = *app.window;
        const QString source = server.url("/links.html");
        QVERIFY(app.startAt(source, "Links"));

        const QStringList all = entries(
            {"http://a.test/one.htm", "http://img.test/pic.HTM",
             "@import url(" + server.url("/x.css").toUtf8() + ");/*://*/",
             server.url("/ping.gif").toUtf8(), "javascript://%0Afetch('" + ran + "')",
             "http://evil.test/'><script>fetch('" + ran + "')</script>", "http://f1.test/a.htm"});
        // The frames have loaded once the page has.
        QTRY_VERIFY_WITH_TIMEOUT(
            ask(app.engineView(1), "document.readyState === 'complete'").toBool(), 20000);
        click(app, "sub_View", "b_viewlinks");
        QCOMPARE(linksPage(app, source), all);
        BrowserView* page = w.parts().tabs.view(2);
        QCOMPARE(ask(page, "document.querySelector('center img').getAttribute('src')").toString(),
                 "http://img.test/pic.HTM");
        QCOMPARE(ask(page, "document.scripts.length").toInt(), 0);
        // An entry named a style or a picture stays text: the page is loaded,
        // so whatever it would have fetched has been asked for.
        QCOMPARE(server.requests("/x.css") + server.requests("/ping.gif"), 0);

        // Neither the script address nor the markup in an address runs.
        // Whatever the click set going is under way before the next page.
        ask(page, "document.querySelectorAll('center a')[1].click(); 0");
        QVERIFY(loaded(page, source));
        page->navigate(server.url("/after-click"));
        QTRY_COMPARE_WITH_TIMEOUT(server.requests("/after-click"), 1, 20000);
        QCOMPARE(server.requests("/ran"), 0);

        app.dialogs.inputs = {".htm"};
        w.parts().tabs.activateTab(1);
        click(app, "sub_View", "b_viewspecial");
        QCOMPARE(linksPage(app, source),
                 entries({"http://a.test/one.htm", "/relative.htm", "http://img.test/pic.HTM",
                          "http://f1.test/a.htm"}));
        w.parts().tabs.activateTab(1);
        click(app, "sub_View", "b_viewlinks");
        QCOMPARE(linksPage(app, source), all);

        // A blank tab has no links: its links tab stays blank.
        w.parts().tabs.newTab({}, true);
        const int blank = w.parts().state.currentTab;
        click(app, "sub_View", "b_viewlinks");
        QCOMPARE(w.parts().state.currentTab, blank + 1);
        QTest::qWait(500);
        QCOMPARE(ask(w.parts().tabs.view(blank + 1), "document.body.innerHTML").toString(),
                 QString());
    }

    void textViewShowsThePageText()
    {
        EngineApp app;
        QVERIFY(app.startAt(server.url("/text.html"), "Text"));
        click(app, "sub_File", "b_viewtexts");
        platform::TextWindow* text = nullptr;
        QTRY_VERIFY_WITH_TIMEOUT(text = app.window->findChild<platform::TextWindow*>(), 20000);
        QVERIFY(text->text().contains("Plain words here"));
        QVERIFY(QFileInfo(app.appDir + "SavedFiles").isDir());

        app.dialogs.savePaths = {app.appDir + "page.txt"};
        QVERIFY(text->saveAs());
        QFile saved(app.appDir + "page.txt");
        QVERIFY(saved.open(QIODevice::ReadOnly));
        QCOMPARE(QString::fromUtf8(saved.readAll()), text->text());
    }

    void quickSaveMakesAPageThatOpensOffline()
    {
        EngineApp app;
        const QString address = server.url("/save.html");
        WebEngineBrowserView* view = app.startAt(address, "Saved page");
        QVERIFY(view);
        const QString record = app.appDir + "SavedFiles/QuickSave.dat";
        click(app, "sub_File", "b_fastsave");
        QTRY_VERIFY_WITH_TIMEOUT(QFileInfo::exists(record), 20000);
        QFile file(record);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(QString::fromUtf8(file.readAll()),
                 ask(view, "document.documentElement.innerHTML").toString() + '\n');
        // The saver the program asks the desktop to start, started by the test.
        QProcess saver;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("QUB_APPDIR", app.appDir);
        saver.setProcessEnvironment(environment);
        saver.start(QCoreApplication::applicationDirPath() + "/qsexdll", {"url:" + address});
        // The server answers the saver from this event loop.
        QVERIFY(QTest::qWaitFor([&] { return saver.state() == QProcess::NotRunning; }, 60000));
        QCOMPARE(saver.exitCode(), 0);
        const QString page = app.appDir + "SavedFiles/Saved page.html";
        QVERIFY(QFileInfo::exists(page));

        // Offline, the saved page still shows its picture.
        click(app, key::fileMenu, "b_offline");
        const int requests = server.requests("/green.png");
        view->navigate(QUrl::fromLocalFile(page).toString());
        QTRY_VERIFY_WITH_TIMEOUT(loaded(view, "Saved page"), 20000);
        QTRY_COMPARE_WITH_TIMEOUT(ask(view, "document.images[0].naturalWidth").toInt(), 40, 20000);
        QCOMPARE(ask(view, "document.body.innerText").toString().trimmed(), "Kept words");
        QCOMPARE(server.requests("/green.png"), requests);
    }
};

QUB_TEST_MAIN(PageToolsTest)
#include "tst_pagetools.moc"
