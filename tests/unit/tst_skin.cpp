// The skin loader builds the bar from the file or names the line that is wrong,
// the shipped skin holds every key the program looks up, and the rendered bar
// puts the tool bars where the skin says.
#include "commandbar/CommandBar.h"
#include "commandbar/SkinLoader.h"
#include "commandbar/widgets/CommandBarWidgets.h"
#include "core/Keys.h"
#include "support/TestMain.h"

#include <QMainWindow>
#include <QTextDocument>

using namespace commandbar;

class SkinTest : public QObject
{
    Q_OBJECT
private slots:
    void init() { testsupport::failOnUnexpectedWarnings(); }

    void buildsBandsAndToolCopies()
    {
        CommandBar bar;
        const auto error = SkinLoader::loadText(
            bar,
            QStringLiteral("# comment\n"
                           "band tb_Main toolbar caption=\"Main \\\"bar\\\"\" dock=top line=1\n"
                           "  button b_back caption=\"Back\" icon=go-previous shortcut=Alt+Left "
                           "tip=\"Go back\" disabled\n"
                           "  separator\n"
                           "  dropdown sub_File caption=\"&File\" band=sub_File\n"
                           "  control ctl_addr width=6000\n"
                           "end\n"
                           "band sub_File popup hidden\n"
                           "  button b_back caption=\"Back in menu\" check checked id=77\n"
                           "end\n"
                           "band side sidebar\n"
                           "end\n"
                           "band page child parent=side caption=\"Page\"\n"
                           "end\n"));
        QVERIFY2(!error, error ? qPrintable(error->message) : "");
        QCOMPARE(int(bar.bands().size()), 4);
        Band* main = bar.band("tb_Main");
        QCOMPARE(main->caption(), QStringLiteral("Main \"bar\""));
        QCOMPARE(main->declaredLine(), 1);
        QCOMPARE(main->count(), 4);
        QCOMPARE(main->at(1)->type(), ControlType::Separator);
        QCOMPARE(main->at(2)->subBand(), QStringLiteral("sub_File"));
        QCOMPARE(main->at(3)->width(), 6000);
        Tool* back = main->tool("b_back");
        QCOMPARE(back->tooltip(), QStringLiteral("Go back"));
        QVERIFY(!back->enabled());
        QVERIFY(!bar.band("sub_File")->visible());
        // The same key in two bands is two tools; the collection keeps one.
        Tool* twin = bar.tool("sub_File", "b_back");
        QVERIFY(twin != back);
        QVERIFY(twin->checked() && !back->checked());
        QCOMPARE(twin->id(), 77);
        QCOMPARE(bar.collectionTool("b_back")->caption(), QStringLiteral("Back"));
        QCOMPARE(bar.band("page")->parentKey(), QStringLiteral("side"));
    }

    void namesTheFaultyLine_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("line");
        QTest::addColumn<QString>("message");
        QTest::newRow("unknown kind") << "band a toolbox\nend" << 1 << "unknown band kind";
        QTest::newRow("tool outside") << "button b_x\n" << 1 << "outside a band";
        QTest::newRow("unclosed band") << "band a toolbar\nbutton b\n" << 1 << "not closed";
        QTest::newRow("unknown word") << "band a toolbar\n buton b\nend" << 2 << "unknown word";
        QTest::newRow("open quote") << "band a toolbar caption=\"x\nend" << 1 << "not closed";
        QTest::newRow("bad number")
            << "band a toolbar\n button b width=wide\nend" << 2 << "whole number";
        QTest::newRow("unknown setting")
            << "band a toolbar\n button b colour=red\nend" << 2 << "unknown tool setting";
        QTest::newRow("switch with a value")
            << "band a toolbar\n button b hidden=1\nend" << 2 << "unknown tool setting \"hidden\"";
        QTest::newRow("text without one")
            << "band a toolbar\n button b caption\nend" << 2 << "unknown tool setting \"caption\"";
        QTest::newRow("a button opens no band")
            << "band m popup\nend\nband a toolbar\n button b band=m\nend" << 4
            << "unknown tool setting \"band\"";
        QTest::newRow("parent of a toolbar") << "band s sidebar\nend\nband a toolbar parent=s\nend"
                                             << 3 << "unknown band setting \"parent\"";
        QTest::newRow("dock nowhere") << "band a toolbar dock=middle\nend" << 1 << "dock must be";
        QTest::newRow("dropdown to nowhere")
            << "band a menubar\n dropdown s band=sub_X\nend" << 2 << "not a popup band";
        QTest::newRow("dropdown to a toolbar")
            << "band a toolbar\n dropdown s band=a\nend" << 2 << "not a popup band";
        QTest::newRow("menu opening itself")
            << "band m popup\n dropdown x band=n\nend\nband n popup\n dropdown y band=m\nend" << 5
            << "opening itself";
        QTest::newRow("child before its sidebar")
            << "band c child parent=s\nend\nband s sidebar\nend" << 1 << "declared before";
        QTest::newRow("shortcut twice")
            << "band a toolbar\n button b shortcut=Ctrl+W\n button c shortcut=ctrl+w\nend" << 3
            << "already given on line 2";
        QTest::newRow("twice in band")
            << "band a toolbar\n button b\n button b\nend" << 3 << "twice";
        QTest::newRow("band twice") << "band a toolbar\nend\nband a popup\nend" << 3 << "twice";
        QTest::newRow("orphan child") << "band c child parent=nope\nend" << 1 << "not a sidebar";
        QTest::newRow("child without parent") << "band c child\nend" << 1 << "needs parent=";
        QTest::newRow("drop-down to no band")
            << "band a menubar\n dropdown s\nend" << 2 << "needs band=";
        QTest::newRow("byte-order mark is no word")
            << QString(QChar(0xFEFF)) + "# skin\nband a toolbar\n buton b\nend" << 3
            << "unknown word";
        QTest::newRow("empty file") << "# nothing\n" << 0 << "no band";
    }
    void namesTheFaultyLine()
    {
        QFETCH(QString, text);
        CommandBar bar;
        const auto error = SkinLoader::loadText(bar, text);
        QVERIFY(error);
        QTEST(error->line, "line");
        QFETCH(QString, message);
        QVERIFY2(error->message.contains(message), qPrintable(error->message));
        QVERIFY2(bar.bands().empty(), "a faulty skin adds nothing");
        QVERIFY(error->text("default.tb2").startsWith("default.tb2"));
    }

    // Each toolbar on its declared line; one floated as a small window of its
    // own and docked back after the bands of its line; a hidden one on no line.
    void toolBarsSitOnTheirLines()
    {
        CommandBar bar;
        QVERIFY(!SkinLoader::loadText(
            bar, QStringLiteral("band one toolbar caption=\"One\" dock=top line=0\n"
                                "  button b_a caption=\"A\"\nend\n"
                                "band two toolbar caption=\"Two\" dock=top line=0\n"
                                "  button b_b caption=\"B\"\nend\n"
                                "band three toolbar caption=\"Three\" dock=top line=1\n"
                                "  button b_c caption=\"C\"\nend\n")));
        QMainWindow window;
        RedrawPacer pacer;
        CommandBarWidgets widgets(bar, window, pacer);
        window.resize(800, 400);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        const auto line = [&bar](const char* key) { return bar.dockLine(*bar.band(key)); };
        QTRY_COMPARE(line("three"), 1);
        QCOMPARE(line("one"), 0);
        QCOMPARE(line("two"), 0);

        Band& one = *bar.band("one");
        one.setFloating(true, 2880);
        QVERIFY(widgets.container(&one)->isWindow());
        QCOMPARE(widgets.container(&one)->width(), widgets.lines().twipsToPixels(2880));
        one.setFloating(false);
        QVERIFY(!widgets.container(&one)->isWindow());
        // Back on a line of its own, before the bands of later lines.
        QTRY_COMPARE(line("one"), 1);
        QCOMPARE(line("two"), 0);
        QCOMPARE(line("three"), 2);

        // A caption can be a page's title, and a tooltip would read markup.
        bar.tool("one", "b_a")->setCaption("<img src=x><b>Bank</b>");
        QTextDocument tip;
        tip.setHtml(widgets.action(bar.tool("one", "b_a"))->toolTip());
        QCOMPARE(tip.toPlainText(), "<img src=x><b>Bank</b>");

        bar.band("three")->setVisible(false);
        QCOMPARE(line("three"), -1);
        QCOMPARE(widgets.lines().pixelsToTwips(widgets.lines().twipsToPixels(2880)), 2880);
    }

    void shippedSkinHoldsEveryKeyLookedUp()
    {
        CommandBar bar;
        const auto error = SkinLoader::loadFile(bar, QStringLiteral(QUB_SKIN_FILE));
        QVERIFY2(!error, error ? qPrintable(error->text("default.tb2")) : "");
        for (const auto& [band, tool] : key::lookups()) {
            QVERIFY2(bar.band(band), band.data());
            if (!tool.isEmpty())
                QVERIFY2(bar.tool(band, tool), qPrintable(band + QLatin1Char('/') + tool));
        }
        for (const char* band :
             {"sub_Edit", "sub_Text", "sub_Favio", "sub_ContentBlock", "sub_Trans", "sub_Blocked"})
            QVERIFY2(bar.band(band), band);
        QVERIFY(bar.tool("sb_Status", "b_blocked")->caption().endsWith(':'));
        QVERIFY(bar.tool("sb_Status", "b_offline"));
        QCOMPARE(bar.band("cbnd_History")->parentKey(), QStringLiteral("tb_Leftbar"));
    }
};

QUB_TEST_MAIN(SkinTest)
#include "tst_skin.moc"
