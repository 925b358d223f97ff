// The settings file and the language files of the main window.
#include "support/FrameFixture.h"
#include "support/TestMain.h"

using namespace platform;
using namespace commandbar;

class SettingsTest : public QObject
{
    Q_OBJECT
private slots:
    void init() { testsupport::failOnUnexpectedWarnings(); }

    void switchesMissingFromTheSkinKeepTheirValue()
    {
        Frame f;
        f.bar.removeTool(
            *f.bar.band(key::viewMenu),
            f.bar.band(key::viewMenu)->indexOf(f.bar.tool(key::viewMenu, key::showAddressBar)));
        writeFile(f.appDir + "Browser.ini", "[QUB-BROWSER]\nADDRESSBAR=1\n");
        f.settings.load();
        QVERIFY(f.settings.save());
        QVERIFY(f.ini().contains("ADDRESSBAR=1"));
    }

    void switchValuesAndRoundTrip()
    {
        Frame f;
        writeFile(f.appDir + "Browser.ini",
                  "; mine\r\n[Other]\r\nA=1\r\n[QUB-BROWSER]\r\nADDRESSBAR=2\r\nSTATUSBAR=abc\r\n"
                  "TOOLSBAR=1\r\nSTOPPOPUP=1\r\nKILLPOP=-1\r\nBESILENT= 1 \r\nUNKNOWN=keep\r\n"
                  "PROXY_IP=10.0.0.1:8080\r\nhomepage=\"http://home.test/a b\"\r\n");
        f.settings.load();
        QCOMPARE(f.settings.homePage(), QStringLiteral("http://home.test/a b"));
        QVERIFY(!f.checked(key::viewMenu, key::showAddressBar));
        QVERIFY(!f.bar.band(key::addressBar)->visible());
        QVERIFY(!f.bar.band(key::statusBar)->visible());
        QVERIFY(f.bar.band(key::mainBar)->visible());
        QVERIFY(f.checked(key::toolsMenu, key::stopPopups));
        QVERIFY(!f.checked(key::toolsMenu, key::killPopups));
        QVERIFY(f.checked(key::toolsMenu, key::silent));
        // A proxy the list (here none) no longer holds: a direct connection,
        // "Empty" alone and checked.
        QCOMPARE(f.connection.proxy(), QString());
        QCOMPARE(f.bar.band(key::proxyMenu)->count(), 2);
        QVERIFY(f.bar.band(key::proxyMenu)->at(0)->checked());

        QVERIFY(f.settings.save());
        QCOMPARE(f.ini(), QStringLiteral(
                              "; mine\r\n[Other]\r\nA=1\r\n[QUB-BROWSER]\r\nADDRESSBAR=0\r\n"
                              "STATUSBAR=0\r\nTOOLSBAR=1\r\nSTOPPOPUP=1\r\nKILLPOP=0\r\n"
                              "BESILENT=1\r\nUNKNOWN=keep\r\nPROXY_IP=\r\n"
                              "homepage=\"http://home.test/a b\"\r\nICONON=0\r\nOPENGETBAR=0\r\n"));
    }

    void languageCaptionsTheBar()
    {
        Frame f;
        writeFile(f.appDir + "lng.ini",
                  "[QUB_Main]\nQUB_TITLE={N} {V} ({N})\ntb_Main=Haupt\nsub_File=Datei\n"
                  "b_back=Zurück\ntip_b_back=Eine Seite zurück\nb_home=\n1b_security=Offen\n"
                  "3b_security=Sicher\nmsg_Exit=Beenden?\n");
        const QString home = f.bar.tool(key::mainBar, "b_home")->caption();
        QCOMPARE(f.language.apply(f.bar, "1.0.3"),
                 QStringLiteral("QUB-BROWSER 1.0.3 (QUB-BROWSER)"));
        QCOMPARE(f.bar.band(key::mainBar)->caption(), QStringLiteral("Haupt"));
        QCOMPARE(f.bar.band(key::fileMenu)->caption(), QStringLiteral("File"));
        QCOMPARE(f.bar.tool(key::menuBar, key::fileMenu)->caption(), QStringLiteral("Datei"));
        QCOMPARE(f.bar.tool(key::mainBar, "b_back")->caption(), QString::fromUtf8("Zurück"));
        QCOMPARE(f.bar.collectionTool("b_back")->tooltip(), QString::fromUtf8("Eine Seite zurück"));
        QCOMPARE(f.bar.tool(key::mainBar, "b_home")->caption(), home);
        QCOMPARE(f.bar.tool(key::statusBar, "b_security")->tag(),
                 QStringLiteral("Not encrypted|Offen||Sicher"));
        QCOMPARE(f.language.text("msg_Exit"), QStringLiteral("Beenden?"));
        // Applied again (a language switch), the labels are not appended twice,
        // and the language's own caption of the tool becomes the first label.
        writeFile(f.appDir + "lng.ini", "[QUB_Main]\nb_security=Offen\n1b_security=Halb\n");
        f.language.apply(f.bar, "1");
        QCOMPARE(f.bar.tool(key::statusBar, "b_security")->tag(), QStringLiteral("Offen|Halb||"));
        QFile::remove(f.appDir + "lng.ini");
        QCOMPARE(f.language.apply(f.bar, "1"), QString());
    }

    // Every key the program reads, and every key the English file has, is
    // in each shipped language with a text (the third security label is
    // empty by design: its "|" closes the list).
    void shippedLanguagesHaveEveryKey()
    {
        CommandBar bar;
        QVERIFY(!SkinLoader::loadFile(bar, QStringLiteral(QUB_SKIN_FILE)));
        QStringList keys = {"lng_Name",    "QUB_TITLE",   "msg_Exit",
                            "1b_security", "2b_security", "b_orgtrans"};
        for (const auto& band : bar.bands()) {
            if (!band->key().contains("sub"))
                keys << band->key();
            for (int i = 0; i < band->count(); ++i)
                if (band->at(i)->type() != ControlType::Separator)
                    keys << band->at(i)->key();
        }
        const QString english = QStringLiteral(QUB_SKIN_DIR "/English.lng");
        for (const QByteArray& line : readFile(english).split('\n'))
            if (const int eq = line.indexOf('='); eq > 0 && !line.startsWith(';'))
                keys << QString::fromUtf8(line.left(eq));
        keys.removeAll("3b_security");
        keys.removeDuplicates();
        for (const char* name : {"English.lng", "Deutsch.lng"}) {
            const QString file = QStringLiteral(QUB_SKIN_DIR "/") + name;
            QStringList missing;
            for (const QString& key : keys)
                if (ReadIniString(file, "QUB_Main", key).isEmpty())
                    missing << key;
            QVERIFY2(missing.isEmpty(), qPrintable(name + (": " + missing.join(' '))));
        }

        // Every menu entry the skin gives an access key keeps one in each
        // language, and no two entries of a menu share it.
        const auto accessKey = [](const QString& caption) {
            for (qsizetype at = caption.indexOf('&'); at >= 0 && at + 1 < caption.size();
                 at = caption.indexOf('&', at + 2))
                if (caption[at + 1] != '&')
                    return caption[at + 1].toLower();
            return QChar();
        };
        for (const char* name : {"English.lng", "Deutsch.lng"}) {
            const QString file = QStringLiteral(QUB_SKIN_DIR "/") + name;
            for (const auto& band : bar.bands()) {
                if (band->kind() != BandKind::Popup)
                    continue;
                QHash<QChar, QString> taken;
                for (int i = 0; i < band->count(); ++i) {
                    const Tool* tool = band->at(i);
                    if (accessKey(tool->caption()).isNull())
                        continue;
                    const QChar letter = accessKey(ReadIniString(file, "QUB_Main", tool->key()));
                    const QString where = QString(name) + ' ' + band->key() + ' ' + tool->key();
                    QVERIFY2(!letter.isNull(), qPrintable(where + " has no access key"));
                    QVERIFY2(!taken.contains(letter),
                             qPrintable(where + " shares its access key with " + taken[letter]));
                    taken.insert(letter, tool->key());
                }
            }
        }
    }
};

QUB_TEST_MAIN(SettingsTest)
#include "tst_settings.moc"
