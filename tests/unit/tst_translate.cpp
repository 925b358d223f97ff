// The Translate menu: the list file read into tools with their old keys and
// numbers, service addresses made from the current page, and the list edited
// in the program's own window.
#include "platform/TextWindow.h"
#include "platform/browser/AddressUrl.h"
#include "support/Files.h"
#include "support/StripFixture.h"
#include "support/TestMain.h"
#include "translate/TranslateSubsystem.h"

#include <QFile>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QUrlQuery>

class TranslateTest : public QObject
{
    Q_OBJECT
private slots:
    void init() { testsupport::failOnUnexpectedWarnings(); }

    void listLinesBecomeServicesAndSeparators()
    {
        const TranslationList list = TranslationList::parse(
            "\nOne|https://one.test/?u={URL}&again={url}\r\nBroken line\nTwo|https://two.test/"
            "?q=a|b\n\nThree|https://three.test/fixed\n");
        QCOMPARE(list.lines().size(), 5u);
        QVERIFY(list.lines()[0].separator);
        QCOMPARE(list.lines()[2].name, "Two");
        QCOMPARE(list.serviceCount(), 3);
        // The marker in any case, everywhere; the service reads back the whole
        // address, its own "&", "#" and blanks included, and nothing more.
        const QString page = "http://a.test/find?q=fish&chips=1#part 2";
        const QUrlQuery asked(platform::urlFromAddress(list.serviceAddress(1, page)));
        QCOMPARE(asked.queryItems().size(), 2);
        QCOMPARE(asked.queryItemValue("u", QUrl::FullyDecoded), page);
        QCOMPARE(asked.queryItemValue("again", QUrl::FullyDecoded), page);
        // Split at the first "|" only; a template without the marker as it is.
        QCOMPARE(list.serviceAddress(2, "p"), "https://two.test/?q=a|b");
        QCOMPARE(list.serviceAddress(3, "p"), "https://three.test/fixed");
        QVERIFY(list.serviceAddress(4, "p").isEmpty());
        QVERIFY(list.serviceAddress(0, "p").isEmpty());
        QCOMPARE(TranslationList::parse({}).lines().size(), 0u);
    }

    void menuOpensServicesAndEditsTheList()
    {
        QTemporaryDir dir;
        const QString appDir = dir.path() + '/';
        writeFile(appDir + TranslationList::fileName,
                  "\nFirst|https://first.test/?u={url}\n\nSecond|https://second.test/{Url}\n");
        StripFixture f;
        ScriptedDialogs dialogs;
        QWidget window;
        TranslateSubsystem translate(window, platform::ProgramFolder(appDir), f.bar, f.tabs,
                                     dialogs, f.commands);
        translate.start("Edit the list");
        QStringList keys;
        QList<int> ids;
        const commandbar::Band* menu = f.bar.band("sub_Trans");
        for (int i = 0; i < menu->count(); ++i) {
            keys << menu->at(i)->key();
            ids << menu->at(i)->id();
        }
        QCOMPARE(keys, QStringList({"b_orgtrans", "spe_sTans1", "spe_sTrans1", "transeg1",
                                    "spe_sTrans2", "transeg2"}));
        QCOMPARE(ids, QList<int>({1398, 1399, 1901, 1401, 1902, 1402}));
        QCOMPARE(menu->at(0)->caption(), "Edit the list");
        QCOMPARE(menu->at(5)->caption(), "Second");

        f.tabs.openFirstTab();
        f.view(1)->navigate("http://page.test/");
        f.commands.dispatch(f.bar.tool("sub_Trans", "transeg2"));
        QCOMPARE(f.state.tabCount, 2);
        QCOMPARE(f.view(2)->locationUrl(), "https://second.test/http%3A%2F%2Fpage.test%2F");

        // The list opens for editing; a save writes it whole, for the next start.
        f.commands.dispatch(f.bar.tool("sub_Trans", "b_orgtrans"));
        auto* editor = window.findChild<platform::TextWindow*>();
        QVERIFY(editor);
        QVERIFY(editor->text().startsWith("\nFirst|"));
        editor->findChild<QPlainTextEdit*>()->setPlainText("Only|https://only.test/{url}\n");
        QVERIFY(editor->save());
        QCOMPARE(TranslationList::read(translate.listPath()).serviceCount(), 1);
        QCOMPARE(translate.list().serviceCount(), 2);
        editor->close();
    }
};

QUB_TEST_MAIN(TranslateTest)
#include "tst_translate.moc"
