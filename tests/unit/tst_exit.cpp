// The exit, the last pages and the command line of the main window.
#include "support/FrameFixture.h"
#include "support/TestMain.h"

using namespace platform;
using namespace commandbar;

class ExitTest : public QObject
{
    Q_OBJECT
private slots:
    void init() { testsupport::failOnUnexpectedWarnings(); }

    void exitCancelledLeavesEverything()
    {
        Frame f;
        writeFile(f.appDir + "Browser.ini", "[QUB-BROWSER]\nSTOPPOPUP=1\n");
        writeFile(f.appDir + "lng.ini", "[QUB_Main]\nmsg_Exit=Really?\n");
        f.settings.load();
        f.tabs.openFirstTab();
        f.tabs.newTab("http://two/", true);
        f.dialogs.answers = {Dialogs::Answer::Cancel};
        f.exit.askExitQuestion();
        QVERIFY(!f.exit.closeRequested());
        QCOMPARE(f.dialogs.asked, QStringList{"Really?"}); // asked once, not twice
        QCOMPARE(f.bar.band(key::tabsBar)->count(), 2);
        QVERIFY(!f.state.shuttingDown);
        QCOMPARE(readFile(f.appDir + "Browser.ini"), QByteArray("[QUB-BROWSER]\nSTOPPOPUP=1\n"));
    }

    void exitSavesTabsAndSettings()
    {
        Frame f;
        f.settings.load();
        f.tabs.createCatchView();
        f.tabs.openFirstTab();
        f.tabs.view(1)->navigate("http://one/");
        f.tabs.newTab({}, false);
        f.tabs.newTab("http://three/", false);
        writeFile(f.appDir + "Temp.txt", "x");
        f.hook.start();
        QSignalSpy recorded(&f.exit, &ExitFlow::lastPageRecorded);
        QVERIFY(f.exit.closeRequested());
        QCOMPARE(f.dialogs.asked.size(), 1);
        QCOMPARE(recorded.count(), 2);
        QCOMPARE(recorded[0][0].toString(), QStringLiteral("http://one/"));
        QCOMPARE(recorded[1][0].toString(), QStringLiteral("http://three/"));
        QVERIFY(f.state.shuttingDown);
        QVERIFY(f.ini().contains("STOPPOPUP=0"));
        QVERIFY(!QFile::exists(f.appDir + "Temp.txt"));
        QVERIFY(!f.hook.running());
    }

    void exitStopsSavingTabsAfterThirtySeconds()
    {
        Frame f;
        f.settings.load();
        f.tabs.openFirstTab();
        f.tabs.view(1)->navigate("http://one/");
        f.tabs.newTab("http://two/", false);
        f.tabs.newTab("http://three/", false);
        // Each closed tab costs 20 s of the clock, which passes midnight.
        connect(&f.exit, &ExitFlow::lastPageRecorded,
                [&f] { f.clock.now = std::fmod(f.clock.now + 20, 86400); });
        f.clock.now = 86390;
        QSignalSpy recorded(&f.exit, &ExitFlow::lastPageRecorded);
        QVERIFY(f.exit.closeRequested());
        QCOMPARE(recorded.count(), 2);
        QVERIFY(f.ini().contains("ADDRESSBAR=1"));
    }

    void commandLineAndAddressWidth()
    {
        QCOMPARE(commandLineAddress({"qub", "\"http://a.test/?q=\"x\"\""}),
                 QStringLiteral("http://a.test/?q=x"));
        QCOMPARE(commandLineAddress({"qub", "--disable-gpu", "a b.html"}),
                 QStringLiteral("a b.html"));
        QCOMPARE(commandLineAddress({"qub"}), QString());
        QCOMPARE(addressToolWidth(true, 10000, 0), 3000);
        QCOMPARE(addressToolWidth(true, 20000, 500), 8570);
        QCOMPARE(addressToolWidth(false, 20000, 500), 16300);
        QCOMPARE(addressToolWidth(false, 2000, 500), 0);
    }

    void lastPagesReadAsFields_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("entries");
        QTest::newRow("lines") << "http://a/\r\nhttp://b/\r\n"
                               << QStringList{"http://a/", "http://b/"};
        QTest::newRow("a comma splits an address") << "http://a/?x=1,2\r\n"
                                                   << QStringList{"http://a/?x=1", "2"};
        QTest::newRow("quotes and blanks go")
            << " \"http://a/\" \n\nb" << QStringList{"http://a/", "b"};
        QTest::newRow("empty") << "" << QStringList{};
    }
    void lastPagesReadAsFields()
    {
        QFETCH(QString, text);
        QTEST(LastPages::entries(text), "entries");
    }

    void lastPagesRoundTripIntoTabs()
    {
        Frame f;
        const LastPages pages(f.appDir);
        f.tabs.openFirstTab();
        pages.restore(f.tabs); // no file: nothing happens
        QCOMPARE(f.state.tabCount, 1);
        QVERIFY(pages.append("http://a/"));
        QVERIFY(pages.append("http://b/,c"));
        QCOMPARE(readFile(pages.fileName()), QByteArray("http://a/\r\nhttp://b/,c\r\n"));
        pages.restore(f.tabs);
        QVERIFY(!QFile::exists(pages.fileName()));
        QCOMPARE(f.tabs.view(1)->locationUrl(), QStringLiteral("http://a/"));
        QCOMPARE(f.tabs.view(2)->locationUrl(), QStringLiteral("http://b/"));
        QCOMPARE(f.tabs.view(3)->locationUrl(), QStringLiteral("c"));
        QCOMPARE(f.state.currentTab, 3);

        // With an address already in tab 1, every page gets a tab of its own.
        QVERIFY(pages.append("http://d/"));
        pages.restore(f.tabs);
        QCOMPARE(f.tabs.view(1)->locationUrl(), QStringLiteral("http://a/"));
        QCOMPARE(f.tabs.view(4)->locationUrl(), QStringLiteral("http://d/"));
        writeFile(pages.fileName(), "");
        pages.restore(f.tabs);
        QCOMPARE(f.state.tabCount, 4);
        QVERIFY(!QFile::exists(pages.fileName()));

        // A page's address of twenty thousand fields opens a bounded number,
        // and a crash among them finds no file to open them again.
        QStringList fields;
        for (int n = 0; n < 20000; ++n)
            fields << QStringLiteral("q%1").arg(n);
        QVERIFY(pages.append("http://e/#" + fields.join(',')));
        QVERIFY(ownerOnly(pages.fileName()));
        bool fileWhileOpening = false;
        connect(&f.tabs, &TabStrip::changed,
                [&] { fileWhileOpening |= QFile::exists(pages.fileName()); });
        pages.restore(f.tabs);
        QCOMPARE(f.state.tabCount, 4 + LastPages::maxPages);
        QVERIFY(!fileWhileOpening);

        // A link planted in place of the file is not written through.
        const QString victim = f.appDir + "victim";
        writeFile(victim, "mine");
        QVERIFY(QFile::link(victim, pages.fileName()));
        QVERIFY(!pages.append("http://f/"));
        QCOMPARE(readFile(victim), QByteArray("mine"));
    }
};

QUB_TEST_MAIN(ExitTest)
#include "tst_exit.moc"
