// Desktop entries read for the program's own file handlers, and the
// properties of a file from the file manager or the program's own page.
#include "platform/DesktopEntry.h"
#include "platform/Shell.h"
#include "support/Fakes.h"
#include "support/Files.h"
#include "support/TestMain.h"

#include <QTemporaryDir>

class ShellTest : public QObject
{
    Q_OBJECT
private slots:
    void init() { testsupport::failOnUnexpectedWarnings(); }

    void desktopEntries()
    {
        using platform::DesktopEntry;
        const DesktopEntry entry = DesktopEntry::parse(
            "[Desktop Entry]\nName = Contacts\nExec=contacts --new %U \"two words\" 100%%\n"
            "Categories=Office;ContactManagement;\n[Desktop Action New]\nExec=other\nName=No\n");
        QCOMPARE(entry.name, QStringLiteral("Contacts"));
        QCOMPARE(entry.categories, QStringList({"Office", "ContactManagement"}));
        QCOMPARE(entry.command, QStringList({"contacts", "--new", "two words", "100%"}));
        QVERIFY(!entry.hidden);
        QVERIFY(DesktopEntry::parse("[Desktop Entry]\nNoDisplay=true\n").hidden);
        QVERIFY(DesktopEntry::parse("Exec=outside\n").command.isEmpty());
    }

    void filePropertiesFromTheFileManagerOrOurOwn()
    {
        QTemporaryDir dir;
        const QString path = dir.filePath("Page.url");
        writeFile(path, "[InternetShortcut]\nURL=http://a.test/\n");
        RecordingShell shell;
        ScriptedDialogs dialogs;
        platform::showFileProperties(path, shell, dialogs);
        QCOMPARE(shell.opened, QStringList({"properties " + path}));
        QVERIFY(dialogs.asked.isEmpty());

        shell.handled = false;
        platform::showFileProperties(path, shell, dialogs);
        QCOMPARE(dialogs.asked, QStringList({"Page.url Properties"}));
        QCOMPARE(dialogs.details.value(0), std::make_pair(QString("Name"), QString("Page.url")));
        QCOMPARE(dialogs.details.value(3).second,
                 QLocale().formattedDataSize(QFileInfo(path).size()));

        platform::showFileProperties(dir.filePath("gone.url"), shell, dialogs);
        QCOMPARE(dialogs.asked.last(), "cannot open property page");
        QCOMPARE(shell.opened.size(), 2);
    }
};

QUB_TEST_MAIN(ShellTest)
#include "tst_shell.moc"
