// Desktop entries read for the program's own file handlers, the properties
// of a file from the file manager or the program's own page, and a page's
// words in the real dialogs.
#include "platform/DesktopEntry.h"
#include "platform/Dialogs.h"
#include "platform/Shell.h"
#include "support/Fakes.h"
#include "support/Files.h"
#include "support/TestMain.h"

#include <QLabel>
#include <QTemporaryDir>
#include <QTimer>

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

    // Markup from a page neither renders nor becomes a link that starts a
    // program: every dialog shows it as written.
    void dialogsShowTextAsWritten()
    {
        const QString markup = "<h2>Update</h2><a href='qubpoc://x'>Continue</a>";
        QList<Qt::TextFormat> formats;
        QTimer closer;
        connect(&closer, &QTimer::timeout, [&] {
            QWidget* dialog = QApplication::activeModalWidget();
            if (!dialog)
                return;
            for (const QLabel* label : dialog->findChildren<QLabel*>())
                if (label->text() == markup)
                    formats << label->textFormat();
            dialog->close();
        });
        closer.start(50);
        platform::QtDialogs dialogs;
        dialogs.message(markup, platform::Dialogs::Buttons::OkCancel,
                        platform::Dialogs::Icon::Information);
        QString text = "x";
        QVERIFY(!dialogs.editText(markup, text));
        QString user;
        QString password;
        QVERIFY(!dialogs.credentials(markup, user, password));
        QCOMPARE(formats, QList<Qt::TextFormat>(3, Qt::PlainText));
    }
};

QUB_TEST_MAIN(ShellTest)
#include "tst_shell.moc"
