// Installed, the program reads what it ships from a folder it never writes;
// the user's copies, and all it writes, are in a folder of the user's own.
#include "app/MainWindow.h"
#include "commandbar/CommandBar.h"
#include "core/Keys.h"
#include "platform/TextWindow.h"
#include "support/Fakes.h"
#include "support/Files.h"
#include "support/TestMain.h"

#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QtTest>
#include <memory>

using commandbar::Band;
using platform::Dialogs;

class ProgramFolderTest : public QObject
{
    Q_OBJECT
private slots:
    void init() { testsupport::failOnUnexpectedWarnings(); }

    void theUsersCopiesWinAndTheShippedFolderStaysAsShipped()
    {
        QTemporaryDir root;
        const QString shipped = root.path() + "/share/qub-browser/";
        const QString own = root.path() + "/home/QUB-BROWSER/";
        QVERIFY(QDir().mkpath(shipped));
        for (const char* name : {"default.tb2", "English.lng", "Deutsch.lng"})
            QVERIFY(QFile::copy(QStringLiteral(QUB_SKIN_DIR "/") + name, shipped + name));
        QVERIFY(QFile::copy(QStringLiteral(QUB_SKIN_DIR "/English.lng"), shipped + "lng.ini"));
        writeFile(shipped + "Translist.txt", "Shipped|https://shipped.test/{url}\n");
        const platform::ProgramFolder folder(shipped, own, root.path() + "/libexec/qub-browser");
        QVERIFY(folder.makeOwn());
        QVERIFY(ownerOnly(own));
        QCOMPARE(folder.helper("qsexdll"), root.path() + "/libexec/qub-browser/qsexdll");
        // A language of the user's own joins the shipped ones.
        writeFile(own + "Mine.lng", "[QUB_Main]\nlng_Name=Mine\n");
        const QMap<QString, QByteArray> asShipped = filesUnder(shipped);

        ScriptedDialogs dialogs;
        RecordingShell shell;
        SettableClock clock;
        FakeViewFactory factory;
        auto window = std::make_unique<MainWindow>(folder, dialogs, shell, factory, clock);
        QVERIFY(window->start(QStringLiteral("http://one.test/")));
        MainWindow::Parts parts = window->parts();
        Band* languages = parts.bar.band("sub_Language");
        QCOMPARE(languages->count(), 3);
        QCOMPARE(languages->at(2)->caption(), "Mine");
        QCOMPARE(parts.bar.band("sub_Trans")->at(2)->caption(), "Shipped");

        // A choice of language and an edited list become the user's copies.
        parts.bar.reportClick(languages->at(0));
        QCOMPARE(readFile(own + "lng.ini"), readFile(shipped + "Deutsch.lng"));
        parts.bar.reportClick(parts.bar.tool("sub_Trans", "b_orgtrans"));
        auto* editor = window->findChild<platform::TextWindow*>();
        QVERIFY(editor);
        QCOMPARE(editor->text(), "Shipped|https://shipped.test/{url}\n");
        editor->findChild<QPlainTextEdit*>()->setPlainText("Mine|https://mine.test/{url}\n");
        QVERIFY(editor->save());
        editor->close();

        dialogs.answers = {Dialogs::Answer::Yes};
        window->quit();
        for (const char* name : {"Browser.ini", "LastPages.ini", "Session.json", "Translist.txt"})
            QVERIFY2(QFile::exists(own + name), name);
        QCOMPARE(filesUnder(shipped), asShipped);

        // The next run reads the copies; a shipped file the user has no copy
        // of is read as an upgrade left it.
        writeFile(shipped + "Deutsch.lng",
                  readFile(shipped + "Deutsch.lng").replace("lng_Name=Deutsch", "lng_Name=Neu"));
        window.reset();
        window = std::make_unique<MainWindow>(folder, dialogs, shell, factory, clock);
        QVERIFY(window->start({}));
        commandbar::CommandBar& bar = window->parts().bar;
        QCOMPARE(bar.tool(key::mainBar, "b_back")->caption(), QString::fromUtf8("Zurück"));
        QCOMPARE(bar.band("sub_Trans")->at(2)->caption(), "Mine");
        QCOMPARE(bar.band("sub_Language")->at(0)->caption(), "Neu");
        window.reset();
    }
};

QUB_TEST_MAIN(ProgramFolderTest)
#include "tst_programfolder.moc"
