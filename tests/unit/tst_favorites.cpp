// The favourites folder on disk: made once with its starting favourites, and
// changed by hand through the organiser and its dialog without ever leaving
// the folder or overwriting an entry.
#include "favorites/FavouritesFolder.h"
#include "favorites/OrganiseFavouritesDialog.h"
#include "platform/ini/ProfileFile.h"
#include "support/Fakes.h"
#include "support/TestMain.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTreeView>

using namespace platform;

namespace {

void touch(const QString& path)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
}

QStringList entries(const QString& folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name);
}

} // namespace

class FavouritesTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase()
    {
        // Deletes go to the trash, which lives in the data folder.
        QVERIFY(
            QDir().mkpath(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation)));
    }
    void init() { testsupport::failOnUnexpectedWarnings(); }

    void folderIsMadeOnceWithStartingFavourites()
    {
        QTemporaryDir dir;
        const FavouritesFolder folder(dir.path() + "/Favorites");
        QCOMPARE(folder.root(), dir.path() + "/Favorites/");
        QVERIFY(folder.ensure());
        QCOMPARE(entries(folder.root()),
                 QStringList({"Debian.url", "Links", "Qt Documentation.url", "Wikipedia.url"}));
        QCOMPARE(ProfileFile(folder.root() + "Links/DuckDuckGo.url")
                     .readString("InternetShortcut", "URL"),
                 "https://duckduckgo.com/");

        // What the user removed stays removed.
        QVERIFY(QDir(folder.root()).removeRecursively());
        QVERIFY(QDir().mkpath(folder.root()));
        QVERIFY(folder.ensure());
        QVERIFY(entries(folder.root()).isEmpty());

        touch(dir.path() + "/file");
        QVERIFY(!FavouritesFolder(dir.path() + "/file/Favorites").ensure());
    }

    void organiserChangesOnlyWhatItMay()
    {
        QTemporaryDir dir;
        const QString root = dir.path() + "/Favorites";
        QVERIFY(QDir().mkpath(root + "/News/Local"));
        touch(root + "/Page.url");
        touch(root + "/Other.url");
        touch(dir.path() + "/outside.url");
        const FavouritesOrganiser organiser(root + '/');

        QCOMPARE(organiser.createFolder(root + "/News", " Sport "), QString());
        QVERIFY(QFileInfo(root + "/News/Sport").isDir());
        for (const char* bad : {"", "  ", "..", "a/b"})
            QVERIFY(!organiser.createFolder(root, bad).isEmpty());
        QCOMPARE(organiser.createFolder(root, "News"), "An entry named \"News\" is already there.");
        QVERIFY(!organiser.createFolder(dir.path(), "Escape").isEmpty());
        QVERIFY(!organiser.createFolder(root + "/../", "Escape").isEmpty());
        QVERIFY(!QFileInfo::exists(dir.path() + "/Escape"));

        // A favourite keeps its extension; a taken name is refused.
        QCOMPARE(organiser.rename(root + "/Page.url", "Renamed"), QString());
        QVERIFY(QFileInfo::exists(root + "/Renamed.url"));
        QCOMPARE(organiser.rename(root + "/Renamed.url", "Other.url"),
                 "An entry named \"Other.url\" is already there.");
        QCOMPARE(organiser.rename(root + "/Renamed.url", "renamed"), QString());
        QVERIFY(QFileInfo::exists(root + "/renamed.url"));
        QVERIFY(!organiser.rename(root, "Root").isEmpty());
        QVERIFY(!organiser.rename(dir.path() + "/outside.url", "In").isEmpty());

        QCOMPARE(organiser.move(root + "/renamed.url", root + "/News/Local"), QString());
        QVERIFY(QFileInfo::exists(root + "/News/Local/renamed.url"));
        QCOMPARE(organiser.move(root + "/News", root + "/News/Local"),
                 "A folder cannot be moved into itself.");
        QVERIFY(!organiser.move(root + "/Other.url", dir.path()).isEmpty());
        touch(root + "/News/Other.url");
        QVERIFY(!organiser.move(root + "/Other.url", root + "/News").isEmpty());
        QVERIFY(QFileInfo::exists(root + "/Other.url"));

        QCOMPARE(organiser.folders(),
                 QStringList({root, root + "/News", root + "/News/Local", root + "/News/Sport"}));

        QCOMPARE(organiser.remove(root + "/News"), QString());
        QVERIFY(!QFileInfo::exists(root + "/News"));
        QVERIFY(!organiser.remove(root).isEmpty());
        QVERIFY(!organiser.remove(dir.path() + "/outside.url").isEmpty());
        QVERIFY(QFileInfo::exists(dir.path() + "/outside.url"));
    }

    void dialogActsOnTheChosenEntry()
    {
        QTemporaryDir dir;
        const QString root = dir.path() + "/Favorites";
        QVERIFY(QDir().mkpath(root + "/Links"));
        touch(root + "/Page.url");
        ScriptedDialogs dialogs;
        OrganiseFavouritesDialog dialog(root + '/', dialogs, nullptr);

        // Nothing chosen: a new folder goes into the root.
        dialogs.inputs = {"Work"};
        dialog.newFolder();
        QVERIFY(QFileInfo(root + "/Work").isDir());

        dialog.select(root + "/Page.url");
        QTRY_COMPARE(dialog.tree()->currentIndex().data().toString(), "Page");
        dialogs.choices = {2};
        dialog.moveSelected();
        QCOMPARE(dialogs.offered, QStringList({"Favorites", "Links", "Work"}));
        QVERIFY(QFileInfo::exists(root + "/Work/Page.url"));

        // A favourite chosen: the new folder goes beside it.
        dialog.select(root + "/Work/Page.url");
        QTRY_VERIFY(dialog.tree()->currentIndex().isValid());
        dialogs.inputs = {"Links"};
        dialog.newFolder();
        QVERIFY(QFileInfo(root + "/Work/Links").isDir());

        dialog.select(root + "/Work/Links");
        QTRY_COMPARE(dialog.tree()->currentIndex().data().toString(), "Links");
        dialogs.inputs = {"Page.url"};
        dialog.renameSelected();
        QCOMPARE(dialogs.asked.last(), "An entry named \"Page.url\" is already there.");

        dialogs.answers = {Dialogs::Answer::No, Dialogs::Answer::Yes};
        dialog.deleteSelected();
        QVERIFY(QFileInfo::exists(root + "/Work/Links"));
        dialog.deleteSelected();
        QVERIFY(!QFileInfo::exists(root + "/Work/Links"));
    }
};

QUB_TEST_MAIN(FavouritesTest)
#include "tst_favorites.moc"
