// The favourites folder on disk: made once with its starting favourites,
// changed by hand without ever leaving the folder or overwriting an entry,
// and carried in and out as bookmark files.
#include "commandbar/widgets/CommandBarWidgets.h"
#include "core/Keys.h"
#include "core/ToolKeys.h"
#include "favorites/AddFavouriteDialog.h"
#include "favorites/FavouritesFolder.h"
#include "favorites/FavouritesMenus.h"
#include "favorites/FavouritesModel.h"
#include "favorites/FavouritesPanel.h"
#include "favorites/FavouritesStore.h"
#include "favorites/FavouritesTransfer.h"
#include "favorites/FolderOrder.h"
#include "favorites/OrganiseFavouritesDialog.h"
#include "platform/NarrowText.h"
#include "support/FavouritesFixture.h"
#include "support/TestMain.h"

#include <QAbstractItemModelTester>
#include <QDirIterator>
#include <QFile>
#include <QFileSystemModel>
#include <QLineEdit>
#include <QMenu>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTreeView>

using namespace platform;
using namespace commandbar;

namespace {

// The tree of a scan as lines "folder/name=address", in order.
QStringList outline(const FavouritesScan& scan, const std::vector<int>& items = {},
                    const QString& prefix = {})
{
    QStringList lines;
    for (int index : prefix.isEmpty() && items.empty() ? scan.topItems() : items) {
        const FavouriteItem& item = scan.items()[size_t(index)];
        if (item.kind == FavouriteItem::Kind::Folder)
            lines << prefix + item.name + '/'
                  << outline(scan, item.children, prefix + item.name + '/');
        else if (item.kind == FavouriteItem::Kind::Favourite)
            lines << prefix + item.name + '=' +
                         ProfileFile(item.path).readString("InternetShortcut", "URL");
    }
    return lines;
}

} // namespace

class FavouritesTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { QVERIFY(makeTrashFolder()); }
    void init() { testsupport::failOnUnexpectedWarnings(); }

    void folderIsMadeOnceWithStartingFavourites()
    {
        QTemporaryDir dir;
        const FavouritesFolder folder(dir.path() + "/Favorites");
        QVERIFY(folder.ensure());
        QVERIFY(FavouritesScan::read(folder.root()).favouriteCount() > 0);

        // What the user removed stays removed.
        QVERIFY(QDir(folder.root()).removeRecursively());
        QVERIFY(QDir().mkpath(folder.root()));
        QVERIFY(folder.ensure());
        QVERIFY(entries(folder.root()).isEmpty());

        writeFile(dir.path() + "/file", {});
        QVERIFY(!FavouritesFolder(dir.path() + "/file/Favorites").ensure());
    }

    void organiserChangesOnlyWhatItMay()
    {
        QTemporaryDir dir;
        const QString root = dir.path() + "/Favorites";
        QVERIFY(QDir().mkpath(root + "/News/Local"));
        writeFile(root + "/Page.url", {});
        writeFile(root + "/Other.url", {});
        writeFile(dir.path() + "/outside.url", {});
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
        writeFile(root + "/News/Other.url", {});
        QVERIFY(!organiser.move(root + "/Other.url", root + "/News").isEmpty());
        QVERIFY(QFileInfo::exists(root + "/Other.url"));

        QCOMPARE(organiser.remove(root + "/News"), QString());
        QVERIFY(!QFileInfo::exists(root + "/News"));
        QVERIFY(!organiser.remove(root).isEmpty());
        QVERIFY(!organiser.remove(dir.path() + "/outside.url").isEmpty());
        QVERIFY(QFileInfo::exists(dir.path() + "/outside.url"));
    }

    void handMadeChangesKeepEachFolderInOrder()
    {
        QTemporaryDir dir;
        const QString root = dir.path() + "/Favorites/";
        QVERIFY(QDir().mkpath(root + "Sub"));
        shortcut(root + "a.url", "http://a.test/");
        shortcut(root + "b.url", "http://b.test/");
        shortcut(root + "Sub/c.url", "http://c.test/");
        ScriptedDialogs dialogs;
        // A title too long for a file name is offered cut, never inside a character.
        AddFavouriteDialog add(root, "http://new.test/", "0" + QString(300, QChar(0xE9)), dialogs,
                               nullptr);
        const QString cut = "0" + QString(124, QChar(0xE9));
        QCOMPARE(add.nameEdit()->text(), cut);
        add.accept();
        QVERIFY(dialogs.asked.isEmpty());

        // What is new comes last; what is renamed keeps its place.
        const FavouritesOrganiser organiser(root);
        QCOMPARE(organiser.createFolder(root, "Aaa"), QString());
        QCOMPARE(organiser.rename(root + "a.url", "z"), QString());
        QCOMPARE(names(FavouritesScan::read(root)), QStringList({"Sub", "Aaa", "z", "b", cut}));
        QCOMPARE(organiser.move(root + "b.url", root + "Sub"), QString());
        const FavouritesScan moved = FavouritesScan::read(root);
        QCOMPARE(names(moved), QStringList({"Sub", "Aaa", "z", cut}));
        QCOMPARE(names(moved, moved.topItems().front()), QStringList({"c", "b"}));
        QCOMPARE(organiser.remove(root + "z.url"), QString());
        QCOMPARE(FolderOrder::read(root), QStringList({"Sub", cut + ".url", "Aaa"}));
    }

    void dialogActsOnTheChosenEntry()
    {
        QTemporaryDir dir;
        const QString root = dir.path() + "/Favorites";
        QVERIFY(QDir().mkpath(root + "/Links"));
        for (const char* name : {"/B.url", "/C.url", "/Page.url"})
            writeFile(root + name, {});
        ScriptedDialogs dialogs;
        OrganiseFavouritesDialog dialog(root + '/', dialogs, nullptr);
        const auto* files = static_cast<const QFileSystemModel*>(dialog.tree()->model());
        QTRY_COMPARE(files->rowCount(files->index(root)), 4);

        // The entry renamed stays the one chosen, and Delete names it.
        dialog.select(root + "/B.url");
        dialogs.inputs = {"Zed"};
        dialog.renameSelected();
        QTRY_VERIFY(!files->index(root + "/B.url").isValid());
        dialogs.answers = {Dialogs::Answer::Yes};
        dialog.deleteSelected();
        QCOMPARE(dialogs.asked.last(), "Delete \"Zed\"?\nAre you sure?");
        QCOMPARE(entries(root), QStringList({"C.url", "Links", "Page.url"}));

        // Nothing chosen: a new folder goes into the root.
        dialog.tree()->setCurrentIndex({});
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
        dialogs.answers = {Dialogs::Answer::No, Dialogs::Answer::Yes};
        dialog.deleteSelected();
        QVERIFY(QFileInfo::exists(root + "/Work/Links"));
        dialog.deleteSelected();
        QVERIFY(!QFileInfo::exists(root + "/Work/Links"));
    }

    void bookmarkFilesComeInAndGoOutInOrder()
    {
        QTemporaryDir dir;
        const QString root = dir.path() + "/Favorites";
        // As the two browsers write them: Firefox with descriptions, a
        // separator, entities and attributes of its own.
        const QString firefox = QUB_TEST_SUPPORT_DIR "/bookmarks/firefox.html";
        const QString chromium = QUB_TEST_SUPPORT_DIR "/bookmarks/chromium.html";
        const FavouritesTransfer transfer(root);
        FavouritesTransfer::Result result = transfer.importFile(firefox);
        QCOMPARE(result.favourites, 5);
        QCOMPARE(result.folders, 3);
        QVERIFY(result.problem.isEmpty());
        const QStringList fromFirefox = {
            "Get Help=https://www.mozilla.org/en-US/firefox/",
            "Bookmarks Toolbar/",
            "Bookmarks Toolbar/Hacker News=https://news.ycombinator.com/",
            "Bookmarks Toolbar/Recipes & Food/",
            "Bookmarks Toolbar/Recipes & Food/Bread – Café="
            "https://example.org/bread?a=1&b=2",
            "Bookmarks Toolbar/Debian=https://www.debian.org/",
            "Other Bookmarks/",
            "Aardvark=https://zzz.example/"};
        // Folders come first on every level, each in the order of the file.
        QStringList expected = {fromFirefox[1], fromFirefox[3], fromFirefox[4], fromFirefox[2],
                                fromFirefox[5], fromFirefox[6], fromFirefox[0], fromFirefox[7]};

        QCOMPARE(outline(FavouritesScan::read(root)), expected);

        const QString other = dir.path() + "/Other";
        FavouritesTransfer(other).importFile(chromium);
        QCOMPARE(outline(FavouritesScan::read(other)),
                 QStringList({"Bookmarks bar/", "Bookmarks bar/Work/",
                              "Bookmarks bar/Work/Qt 6=https://doc.qt.io/qt-6/",
                              "Bookmarks bar/Work/cppreference=https://en.cppreference.com/",
                              "Bookmarks bar/Wikipedia=https://www.wikipedia.org/",
                              "Kernel=https://www.kernel.org/"}));

        // Our own file brings back the same tree.
        const QString exported = dir.path() + "/ours.html";
        QCOMPARE(transfer.exportFile(FavouritesScan::read(root), exported), QString());
        const QString again = dir.path() + "/Again";
        FavouritesTransfer(again).importFile(exported);
        QCOMPARE(outline(FavouritesScan::read(again)), expected);
        QVERIFY(!transfer.exportFile(FavouritesScan::read(root), dir.path() + "/no/such/x.html")
                     .isEmpty());
    }

    void longAddressesStayWhole()
    {
        QTemporaryDir dir;
        const QString root = dir.path() + "/Favorites/";
        QVERIFY(QDir().mkpath(root));
        const QString address = "http://long.test/?q=" + QString(580, QChar(0xE9));
        ScriptedDialogs dialogs;
        RecordingShell shell;
        AddFavouriteDialog(root, address, "Long", dialogs, nullptr).accept();
        FavouritesStore store(root, dialogs, shell);
        FavouritesModel model(store);
        store.refresh();
        QCOMPARE(store.open(1), address);
        QCOMPARE(model.indexOfEntry(1).data(Qt::ToolTipRole), "Double Click ->" + address);

        const QString exported = dir.path() + "/long.html";
        const FavouritesTransfer transfer(root);
        QCOMPARE(transfer.exportFile(store.scan(), exported), QString());
        QCOMPARE(transfer.importFile(exported).favourites, 0);
        QCOMPARE(entries(root), QStringList({"Long.url"}));
        const QString again = dir.path() + "/Again";
        QCOMPARE(FavouritesTransfer(again).importFile(exported).favourites, 1);
        QCOMPARE(outline(FavouritesScan::read(again)), QStringList({"Long=" + address}));
        QVERIFY(dialogs.asked.isEmpty());
    }

    void importAndExportThroughTheirDialogs()
    {
        const TemporaryFavourites folder;
        QVERIFY(folder.add("Zebra.url", "http://zebra.test/"));
        QVERIFY(folder.add("Mine/own.url", "http://own.test/"));
        FavouritesFixture fixture(folder);
        ScriptedDialogs& dialogs = fixture.dialogs;
        const QString firefox = QUB_TEST_SUPPORT_DIR "/bookmarks/firefox.html";
        dialogs.openPaths = {firefox, firefox};
        Tool* import = fixture.bar.tool("sub_Favio", "b_importfav");
        fixture.bar.reportClick(import);
        QCOMPARE(dialogs.asked,
                 QStringList({"Import Bookmarks... Bookmark files|*.html;*.htm|All files|*.* in " +
                              QDir::homePath()}));
        // The user's own favourites keep their places; what came in follows.
        QCOMPARE(names(fixture.favourites.store().scan()),
                 QStringList({"Mine", "Bookmarks Toolbar", "Other Bookmarks", "Zebra", "Get Help",
                              "Aardvark"}));
        fixture.bar.reportClick(import);
        QCOMPARE(dialogs.asked.last(), "No new bookmarks were found in " + firefox + '.');

        const QString exported = folder.data.path() + "/out.html";
        dialogs.savePaths = {exported};
        fixture.bar.reportClick(fixture.bar.tool("sub_Favio", "b_exportfav"));
        QCOMPARE(dialogs.asked.last(),
                 QDir::homePath() + "/bookmarks.html Bookmark files|*.html;*.htm|All files|*.*");
        QVERIFY(readFile(exported).contains("http://zebra.test/"));
    }

    void hostileBookmarkFilesStayInside()
    {
        QTemporaryDir dir;
        const QString root = dir.path() + "/Favorites";
        QByteArray html = "<DL><p>";
        for (const char* name : {"/etc/passwd", "..", "../../escape", ".hidden", "a&#0;b",
                                 "&bogus; &#xFFFFFFFF; &#1;", "", "con\\nul"})
            html += QByteArray("<DT><A HREF=\"http://x.test/\">") + name + "</A>";
        html += "<DT><A HREF=\"http://long.test/\">" + QByteArray(300, 'n') + "</A>";
        html += "<DT><A>no address</A><DT><H3>../up</H3><DL><p><DT><A "
                "HREF=\"http://in.test/\">in</A></DL>";
        for (int i = 0; i < 10000; ++i)
            html += "<DT><H3>deep</H3><DL><p>";
        const Bookmark tree = readNetscapeBookmarks(html, FavouritesScan::maxDepth);
        const FavouritesTransfer::Result result = FavouritesTransfer(root).importBookmarks(tree);
        QVERIFY(result.problem.isEmpty());
        QCOMPARE(entries(dir.path()), QStringList({"Favorites"}));
        int deepest = 0;
        QDirIterator walk(root, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden,
                          QDirIterator::Subdirectories);
        while (walk.hasNext()) {
            const QString path = walk.next();
            QVERIFY(path.startsWith(root + '/'));
            QVERIFY(QFileInfo(path).fileName().toUtf8().size() <= 210);
            deepest = std::max(deepest, int(path.count('/') - root.count('/')));
        }
        QVERIFY(deepest <= FavouritesScan::maxDepth + 1);
        const QStringList lines = outline(FavouritesScan::read(root));
        // "" and ".." both become "Untitled": the second, with the same
        // address, is the same favourite.
        QCOMPARE(lines.filter("=http://x.test/").size(), 7);
        QVERIFY(lines.contains("up/in=http://in.test/"));
        QVERIFY(lines.contains("Untitled=http://x.test/"));

        // A hundred thousand entries are read whole.
        QByteArray many = "<DL><p>";
        for (int i = 0; i < 100000; ++i)
            many += "<DT><A HREF=\"http://m.test/" + QByteArray::number(i) + "\">m</A>";
        QCOMPARE(readNetscapeBookmarks(many, FavouritesScan::maxDepth).children.size(), 100000u);
    }
};

QUB_TEST_MAIN(FavouritesTest)
#include "tst_favorites.moc"
