// The ini reader and writer keep the old profile-string behaviour and write
// owner-only files; text is cut by its width in the old narrow encoding.
#include "platform/NarrowText.h"
#include "platform/ini/ProfileFile.h"
#include "support/Files.h"
#include "support/TestMain.h"

#include <QStringEncoder>
#include <QTemporaryDir>

using platform::ProfileFile;

class IniTest : public QObject
{
    Q_OBJECT
    QTemporaryDir dir;

    QString write(const QByteArray& content)
    {
        const QString path = dir.filePath(QStringLiteral("t.ini"));
        writeFile(path, content);
        return path;
    }

private slots:
    void init() { testsupport::failOnUnexpectedWarnings(); }

    void reading_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("section");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("expected");
        QTest::addColumn<int>("number");
        const auto row = [](const char* name, const QByteArray& content, const char* section,
                            const char* key, const QString& expected, int number) {
            QTest::newRow(name) << content << QString(section) << QString(key) << expected
                                << number;
        };
        row("plain", "[S]\nK=v\n", "S", "K", "v", 0);
        row("any case, blanks", "[ sEcT ]\r\n  kEy  =  some value  \r\n", "Sect", "KEY",
            "some value", 0);
        row("quotes removed", "[S]\nK=\"a, b; c\"\n", "S", "K", "a, b; c", 0);
        row("backslashes kept", "[S]\nK=C:\\dir\\x\n", "S", "K", "C:\\dir\\x", 0);
        row("other section", "[A]\nK=1\n[B]\nK=2\n", "B", "K", "2", 2);
        row("first of twin keys", "[S]\nK=1\nK=2\n", "S", "K", "1", 1);
        row("section named twice", "[S]\nA=1\n[T]\nK=x\n[s]\nK=2\nK=3\n", "S", "k", "2", 2);
        row("comment is no key", "[S]\n;K=1\n", "S", "K", "dflt", 7);
        row("leading digits", "[S]\nK=12abc\n", "S", "K", "12abc", 12);
        row("not a number", "[S]\nK=abc\n", "S", "K", "abc", 0);
        row("negative", "[S]\nK=-1\n", "S", "K", "-1", 0);
        row("no section header", "K=1\n", "S", "K", "dflt", 7);
        const QString cafe = QString::fromUtf8("Caf\u00e9");
        row("a file that is not UTF-8 is Latin-1", "[S]\nK=Caf\xe9\n", "S", "K", cafe, 0);
        row("Latin-1 to the last byte", "[S]\nK=Caf\xe9", "S", "K", cafe, 0);
        row("UTF-8", "[S]\nK=Caf\xc3\xa9\n", "S", "K", cafe, 0);
        const QString wide = QString::fromUtf8("[S]\r\nK=Caf\u00e9 \u4e2d\r\n");
        for (const auto encoding : {QStringEncoder::Utf16LE, QStringEncoder::Utf16BE})
            row(encoding == QStringEncoder::Utf16LE ? "UTF-16 LE" : "UTF-16 BE",
                (encoding == QStringEncoder::Utf16LE ? "\xFF\xFE" : "\xFE\xFF") +
                    QByteArray(QStringEncoder(encoding).encode(wide)),
                "S", "K", cafe + QString::fromUtf8(" \u4e2d"), 0);
    }
    void reading()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, section);
        QFETCH(QString, key);
        const ProfileFile file(write(content));
        QTEST(file.readString(section, key, QStringLiteral("dflt")), "expected");
        QTEST(file.readInt(section, key, 7), "number");
        // Reading a whole section at once finds what a lookup of the key finds.
        QCOMPARE(platform::IniSectionReader(file.path(), section).text(key),
                 platform::ReadIniString(file.path(), section, key));
    }

    void writingKeepsEverythingElse()
    {
        const QString path = write("; my notes\r\n[Other]\r\nX=1\r\n\r\n[s]\r\nkeep=me\r\nk=old\r\n"
                                   "[Third]\r\nk=3\r\n");
        const ProfileFile file(path);
        QVERIFY(file.writeString("S", "K", "new"));
        QVERIFY(file.writeString("S", "Added", "a"));
        QVERIFY(file.writeString("Fresh", "F", "f"));
        QCOMPARE(readFile(path),
                 QByteArray("; my notes\r\n[Other]\r\nX=1\r\n\r\n[s]\r\nkeep=me\r\n"
                            "K=new\r\nAdded=a\r\n[Third]\r\nk=3\r\n[Fresh]\r\nF=f\r\n"));
        // Lines in another encoding survive a write byte for byte.
        const QString latin = write("; caf\xe9 \xa7\n[S]\nK=1\n");
        QVERIFY(ProfileFile(latin).writeString("S", "K", "2"));
        QCOMPARE(readFile(latin), QByteArray("; caf\xe9 \xa7\n[S]\nK=2\n"));
        QCOMPARE(ProfileFile(latin).readString("Other", "X", "d"), QStringLiteral("d"));
        // A UTF-16 file stays UTF-16 of its order, its other lines as they were.
        for (const auto encoding : {QStringEncoder::Utf16LE, QStringEncoder::Utf16BE}) {
            const QByteArray mark = encoding == QStringEncoder::Utf16LE ? "\xFF\xFE" : "\xFE\xFF";
            const QString before = QString::fromUtf8("; caf\u00e9\r\n[S]\r\nK=1\r\n");
            const QString wide = write(mark + QByteArray(QStringEncoder(encoding).encode(before)));
            QVERIFY(ProfileFile(wide).writeString("S", "K", QString::fromUtf8("\u4e2d")));
            QVERIFY(ProfileFile(wide).writeString("New", "N", "n"));
            QCOMPARE(readFile(wide),
                     mark + QByteArray(QStringEncoder(encoding).encode(QString::fromUtf8(
                                "; caf\u00e9\r\n[S]\r\nK=\u4e2d\r\n[New]\r\nN=n\r\n"))));
        }
        // A value from a page never starts a line of its own.
        const QString typed = write("[S]\n");
        QVERIFY(ProfileFile(typed).writeString("S\n[T]", "url1\r\nx=y", "a\nurl2=javascript:b"));
        QCOMPARE(readFile(typed), QByteArray("[S]\n[S [T]]\nurl1  x=y=a url2=javascript:b\n"));
        const ProfileFile missing(dir.filePath(QStringLiteral("none/absent.ini")));
        QCOMPARE(missing.readString("S", "K", "d"), QStringLiteral("d"));
        QVERIFY(!missing.writeString("S", "K", "v"));
    }

    // Settings hold proxy passwords: the user's alone, and never written
    // through a link someone planted in the program's folder.
    void writtenFilesAreTheUsersAlone()
    {
        const QString path = write("[S]\nK=old\n");
        QVERIFY(QFile::setPermissions(path, QFile::permissions(path) | QFile::ReadOther));
        QVERIFY(ProfileFile(path).writeString("S", "Password", "secret"));
        QVERIFY(ownerOnly(path));

        const QString victim = write("mine\n");
        const QString planted = dir.filePath(QStringLiteral("planted.ini"));
        QVERIFY(QFile::link(victim, planted));
        QVERIFY(!ProfileFile(planted).writeString("S", "K", "v"));
        QCOMPARE(readFile(victim), QByteArray("mine\n"));
    }

    void narrowLimits()
    {
        const QString ascii(300, QLatin1Char('a'));
        QCOMPARE(platform::ReadIniString(write("[S]\nK=" + ascii.toUtf8() + "\n"), "S", "K"),
                 ascii.left(254));
        // Two-byte characters count double and are never split.
        const QString wide = QString(253, QLatin1Char('a')) + QString::fromUtf8("中文");
        QCOMPARE(platform::ReadIniString(write("[S]\nK=" + wide.toUtf8() + "\n"), "S", "K"),
                 QString(253, QLatin1Char('a')));
        QCOMPARE(platform::narrowLength(QString::fromUtf8("ab中")), 4);
        // A character outside the basic plane is never cut in half.
        const QString emoji = QString::fromUtf8("ab\U0001F600c");
        QCOMPARE(platform::narrowLength(emoji), 5);
        QCOMPARE(platform::narrowLeft(emoji, 3), QStringLiteral("ab"));
        QCOMPARE(platform::narrowLeft(emoji, 4), QString::fromUtf8("ab\U0001F600"));
        QCOMPARE(platform::ReadIniString(dir.filePath("missing.ini"), "S", "K"), QString());
    }
};

QUB_TEST_MAIN(IniTest)
#include "tst_ini.moc"
