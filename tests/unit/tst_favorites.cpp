// The favourites folder on disk: made once with its starting favourites,
// changed by hand without ever leaving the folder or overwriting an entry,
// read into menus and a tree, and carried in and out as bookmark files.
#include "commandbar/widgets/CommandBarWidgets.h"
#include "core/Keys.h"
#include "core/ToolKeys.h"
#include "favorites/AddFavouriteDialog.h"
#include "favorites/FavouritesFolder.h"
#include "favorites/FavouritesMenus.h"
#include "favorites/FavouritesModel.h"
#include "favorites/FavouritesPanel.h"
#include "favorites/FavouritesStore.h"
#include "favorites/FavouritesSubsystem.h"
#include "favorites/FavouritesTransfer.h"
#include "favorites/FolderOrder.h"
#include "favorites/OrganiseFavouritesDialog.h"
#include "platform/NarrowText.h"
#include "platform/ini/ProfileFile.h"
#include "support/Fakes.h"
#include "support/Files.h"
#include "support/StripFixture.h"
#include "support/TestMain.h"

#include <QAbstractItemModelTester>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileSystemModel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTreeView>

using namespace platform;
using namespace commandbar;

namespace {

QStringList entries(const QString& folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name);
}

void shortcut(const QString& path, const QString& address)
{
    QVERIFY(ProfileFile(path).writeString("InternetShortcut", "URL", address));
}

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

// The names on one level of a scan, in order.
QStringList names(const FavouritesScan& scan, int folder = -1)
{
    QStringList found;
    for (int index : folder < 0 ? scan.topItems() : scan.items()[size_t(folder)].children)
        found << scan.items()[size_t(index)].name;
    return found;
}

QStringList captions(const Band& band, int first = 0)
{
    QStringList found;
    for (int i = first; i < band.count(); ++i)
        found << band.at(i)->caption();
    return found;
}

// Every favourites menu as lines, the widgets' entries beside the model's
// tools: what a user would find in the menus after a build.
QStringList menuLines(const CommandBar& bar, const CommandBarWidgets& widgets)
{
    QStringList lines;
    const auto list = [&](const QString& bandKey, int first) {
        const Band& band = *bar.band(bandKey);
        lines << bandKey + ' ' + band.caption();
        for (int i = first; i < band.count(); ++i) {
            const Tool& tool = *band.at(i);
            const QAction* action = widgets.action(&tool);
            lines << QStringLiteral("%1 %2 %3 %4 %5 %6 | %7 %8")
                         .arg(tool.key())
                         .arg(tool.id())
                         .arg(tool.caption(), tool.subBand(), tool.tag())
                         .arg(tool.enabled())
                         .arg(action->text())
                         .arg(action->menu() == widgets.menu(tool.subBand()));
        }
        const QMenu* menu = widgets.menu(bandKey);
        if (menu && menu->actions().size() != band.count())
            lines << "menu holds " + QString::number(menu->actions().size());
    };
    list(key::favMenu, 0);
    int n = 1;
    for (; bar.band(keys::favouriteBandKey(n)); ++n)
        list(keys::favouriteBandKey(n), 0);
    lines << QStringLiteral("%1 folders").arg(n - 1);
    for (const QLatin1String bandKey : {key::addressBar, key::viewMenu}) {
        const Band& band = *bar.band(bandKey);
        for (int i = 0; i < band.count(); ++i)
            if (band.at(i)->subBand().startsWith("favband"))
                lines << QString(bandKey) + ' ' + band.at(i)->key() + ' ' + band.at(i)->subBand();
    }
    return lines;
}

// The favourites subsystem on the shipped skin's bar and a tab strip, started
// on the folder given.
struct Subsystem : StripFixture
{
    QMainWindow window;
    ScriptedDialogs dialogs;
    RecordingShell shell;
    FavouritesSubsystem favourites;

    explicit Subsystem(const TemporaryFavourites& folder)
        : favourites(window, folder.data.path() + '/', bar, tabs, dialogs, shell, commands, events)
    {
        favourites.start();
    }
};

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

    void menusAndTreeFollowTheFolder()
    {
        QTemporaryDir dir;
        const QString root = dir.path() + "/Favorites/";
        QVERIFY(QDir().mkpath(root + "A/E"));
        QVERIFY(QDir().mkpath(root + "Links"));
        QVERIFY(QDir().mkpath(root + ".hidden"));
        QVERIFY(QDir().mkpath(root + "ro"));
        shortcut(root + "ro/x.url", "http://ro.test/");
        QVERIFY(QFile::setPermissions(root + "ro", QFile::ReadOwner | QFile::ExeOwner));
        QVERIFY(QFile::link(root + "A", root + "loop"));
        shortcut(root + "Links/x.url", "http://x.test/");
        shortcut(root + "b.url", "http://b.test/");
        shortcut(root + QString(50, 'c') + ".url", "http://c.test/");
        shortcut(root + "news.ini.url", "http://news.test/");
        writeFile(root + "setup.ini", {});
        writeFile(root + "desktop.ini", {});

        CommandBar bar;
        SkinLoader::loadFile(bar, QStringLiteral(QUB_SKIN_FILE));
        RecordingShell shell;
        FavouritesMenus menus(bar, shell);
        Band& fav = *bar.band(key::favMenu);
        const int fixed = fav.count();
        for (int round = 0; round < 2; ++round)
            menus.build(FavouritesScan::read(root));

        QStringList top;
        for (int i = fixed; i < fav.count(); ++i)
            top << QStringLiteral("%1 %2 %3")
                       .arg(fav.at(i)->key())
                       .arg(fav.at(i)->id())
                       .arg(fav.at(i)->caption());
        QCOMPARE(top,
                 QStringList({"fav4 1900 A", "fav5 2000 Links", "fav2 1502 b",
                              "fav3 1503 " + QString(39, 'c') + " ...", "fav4 1504 news.ini"}));
        QCOMPARE(fav.at(fixed)->subBand(), "favband1");
        const Band& a = *bar.band("favband1");
        QCOMPARE(a.count(), 1);
        QCOMPARE(a.at(0)->key(), "fav1");
        QCOMPARE(a.at(0)->id(), 1600);
        const Band& e = *bar.band("favband2");
        QCOMPARE(e.count(), 1);
        QCOMPARE(e.at(0)->caption(), "— NONE —");
        QCOMPARE(bar.band("favband3")->at(0)->key(), "fav1");
        QCOMPARE(bar.band("favband3")->at(0)->tag(), root + "Links/x.url");
        QVERIFY(!bar.band("favband4"));
        // The Links folder also beside Go and in the View menu, once.
        const Band& address = *bar.band(key::addressBar);
        QCOMPARE(address.at(address.indexOf(address.tool(key::go)) + 1)->subBand(), "favband3");
        QCOMPARE(bar.band(key::viewMenu)->at(bar.band(key::viewMenu)->count() - 1)->subBand(),
                 "favband3");

        fav.tool(key::favIcons)->setChecked(true);
        menus.build(FavouritesScan::read(root));
        QCOMPARE(shell.iconsAsked.size(), 3 + 4);
        QCOMPARE(address.count(), 4);

        ScriptedDialogs dialogs;
        FavouritesStore store(root, dialogs, shell);
        FavouritesModel model(store);
        QAbstractItemModelTester tester(&model);
        store.refresh();
        QCOMPARE(model.rowCount(), 5);
        const QModelIndex folder = model.index(0, 0);
        QCOMPARE(folder.data(FavouritesModel::KeyRole), "favband1");
        QCOMPARE(model.index(0, 0, model.index(0, 0, folder)).data(), "— NONE —");
        QCOMPARE(model.index(0, 0, model.index(1, 0)).data(FavouritesModel::KeyRole), "K1");
        QCOMPARE(model.indexOfEntry(3).data().toString(), QString(39, 'c') + " ...");
        QVERIFY(model.flags(model.indexOfEntry(3)).testFlag(Qt::ItemIsEditable));
        QVERIFY(!model.flags(folder).testFlag(Qt::ItemIsEditable));
    }

    void aRefreshShowsWhatAFreshBuildShows()
    {
        QTemporaryDir dir;
        const QString root = dir.path() + "/Favorites/";
        for (const char* folder : {"A", "B/C", "Links"})
            QVERIFY(QDir().mkpath(root + folder));
        shortcut(root + "A/x.url", "http://x.test/");
        shortcut(root + "A/y.url", "http://y.test/");
        shortcut(root + "B/C/z.url", "http://z.test/");
        shortcut(root + "Links/l.url", "http://l.test/");
        shortcut(root + "top.url", "http://top.test/");
        writeFile(root + "— Empty —.url", {});
        QMainWindow window;
        RedrawPacer pacer;
        CommandBar bar;
        SkinLoader::loadFile(bar, QStringLiteral(QUB_SKIN_FILE));
        CommandBarWidgets widgets(bar, window, pacer);
        RecordingShell shell;
        FavouritesMenus menus(bar, shell);
        const int fixed = bar.band(key::favMenu)->count();
        menus.build(FavouritesScan::read(root));
        const QStringList before = menuLines(bar, widgets);

        // Entries in front of others, a folder gone, a new folder before the
        // rest, a favourite turned folder, the links folder renamed.
        shortcut(root + "A/a.url", "http://a.test/");
        QVERIFY(QDir(root + "B/C").removeRecursively());
        QVERIFY(QDir().mkpath(root + "0"));
        shortcut(root + "0/new.url", "http://new.test/");
        QVERIFY(QFile::remove(root + "A/y.url"));
        QVERIFY(QDir().mkpath(root + "A/y.url"));
        QVERIFY(QFile::remove(root + "— Empty —.url"));
        shortcut(root + "— Empty —2.url", "http://e.test/");
        QVERIFY(QDir().rename(root + "Links", root + "链接"));
        const FavouritesScan changed = FavouritesScan::read(root);
        menus.build(changed);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);

        CommandBar freshBar;
        SkinLoader::loadFile(freshBar, QStringLiteral(QUB_SKIN_FILE));
        CommandBarWidgets freshWidgets(freshBar, window, pacer);
        FavouritesMenus(freshBar, shell).build(changed);
        const QStringList after = menuLines(bar, widgets);
        QCOMPARE(after, menuLines(freshBar, freshWidgets));
        QVERIFY(after != before);
        QVERIFY(after.contains("5 folders"));
        QVERIFY(after.contains("favband5 链接"));
        QCOMPARE(before.filter("— Empty —.url 0 |").size(), 1);

        menus.build(FavouritesScan());
        QCOMPARE(bar.band(key::favMenu)->count(), fixed);
        QVERIFY(!bar.band("favband1"));
    }

    void entriesOpenRenameAndSayWhenGone()
    {
        QTemporaryDir dir;
        const QString root = dir.path() + "/Favorites/";
        QVERIFY(QDir().mkpath(root + "Sub"));
        shortcut(root + "Caps.URL", "http://caps.test/a;b,c");
        writeFile(root + "Program.lnk", {});
        shortcut(root + "Sub/Page.url", "http://page.test/");
        shortcut(root + "Sub/Taken.url", "http://taken.test/");
        ScriptedDialogs dialogs;
        RecordingShell shell;
        FavouritesStore store(root, dialogs, shell);
        store.refresh();
        QCOMPARE(store.scan().favouriteCount(), 4);
        QCOMPARE(store.open(3), "http://caps.test/a;b,c");
        QCOMPARE(store.open(4), QString());
        QCOMPARE(shell.opened, QStringList({root + "Program.lnk"}));

        QCOMPARE(store.open(1), "http://page.test/");
        QVERIFY(!store.rename(1, "Page", "../../Escaped"));
        QVERIFY(!store.rename(1, "Page", "Taken"));
        QCOMPARE(dialogs.asked, QStringList({"Error when rename!", "Error when rename!"}));
        QCOMPARE(entries(root + "Sub"), QStringList({"Page.url", "Taken.url"}));
        QVERIFY(store.rename(1, "Page", "Sub Page"));
        QCOMPARE(store.scan().path(1), root + "Sub/Sub Page.url");
        QCOMPARE(store.open(1), "http://page.test/");

        QVERIFY(QFile::remove(root + "Sub/Taken.url"));
        QCOMPARE(store.open(2), QString());
        QCOMPARE(dialogs.asked.last(), "Possible external changes ocurred, so please try again!");
        QCOMPARE(store.scan().favouriteCount(), 3);
        QVERIFY(ProfileFile(root + "Bare.url").writeString("Other", "URL", "http://other.test/"));
        store.refresh();
        QCOMPARE(store.scan().path(2), root + "Bare.url");
        QCOMPARE(store.open(2), QString());

        QCOMPARE(FavouritesStore::sanitizeTitle("a*b?c/d\\e<f>g|h:i\"j"), "a*b c d e f g h:i\"j");
        QCOMPARE(shortenCaption(QString(20, QChar(0xE9)), 40), QString(20, QChar(0xE9)));
        QCOMPARE(shortenCaption(QString(21, QChar(0xE9)), 40), QString(19, QChar(0xE9)) + " ...");
    }

    void panelOpensRenamesAndDeletesAfterAsking()
    {
        QTemporaryDir dir;
        const QString root = dir.path() + "/Favorites/";
        QVERIFY(QDir().mkpath(root + "Folder/Inner"));
        shortcut(root + "Page.url", "http://page.test/");
        shortcut(root + "u.url", "http://u.test/");
        writeFile(root + "App.desktop", "[Desktop Entry]\n");
        // The folder's picture from the program's "res" folder; the
        // favourite's is missing there.
        const QString pictures = dir.path() + "/res/";
        QVERIFY(QDir().mkpath(pictures));
        QImage red(16, 16, QImage::Format_ARGB32);
        red.fill(Qt::red);
        QVERIFY(red.save(pictures + "res1.ico"));
        StripFixture fixture;
        fixture.tabs.openFirstTab();
        ScriptedDialogs dialogs;
        RecordingShell shell;
        FavouritesStore store(root, dialogs, shell);
        FavouritesPanel panel(store, fixture.tabs, dialogs, shell, pictures);
        store.refresh();
        FavouritesModel& model = *panel.model();
        const auto picture = [](const QModelIndex& node) {
            const QImage image =
                node.data(Qt::DecorationRole).value<QIcon>().pixmap(16, 16).toImage();
            return image.valid(8, 8) ? image.pixel(8, 8) : 0;
        };
        QCOMPARE(picture(model.index(0, 0)), QColor(Qt::red).rgb());
        QVERIFY(picture(model.indexOfEntry(1)) != QColor(Qt::red).rgb());

        // A click on a folder opens and closes it; on a favourite, opens it.
        const QModelIndex folder = model.index(0, 0);
        panel.openNode(folder);
        QVERIFY(panel.tree()->isExpanded(folder));
        panel.openNode(folder);
        QVERIFY(!panel.tree()->isExpanded(folder));
        QCOMPARE(fixture.state.tabCount, 1);
        panel.openNode(model.indexOfEntry(2));
        QCOMPARE(fixture.state.tabCount, 2);
        QCOMPARE(fixture.view(2)->locationUrl(), "http://page.test/");

        dialogs.answers = {Dialogs::Answer::No, Dialogs::Answer::Yes};
        QVERIFY(!model.setData(model.indexOfEntry(2), "Other", Qt::EditRole));
        QVERIFY(QFileInfo::exists(root + "Page.url"));
        QVERIFY(!model.setData(model.indexOfEntry(2), "Other", Qt::EditRole));
        QVERIFY(QFileInfo::exists(root + "Other.url"));
        QCOMPARE(model.indexOfEntry(2).data(), "Other");
        QCOMPARE(dialogs.asked, QStringList({"Are you sure?", "Are you sure?"}));

        // The label edited is the name without its extension, which stays.
        QCOMPARE(model.indexOfEntry(1).data(Qt::EditRole), "App");
        dialogs.answers = {Dialogs::Answer::Yes, Dialogs::Answer::Yes};
        model.setData(model.indexOfEntry(1), "Tool", Qt::EditRole);
        model.setData(model.indexOfEntry(3), "x", Qt::EditRole);
        QCOMPARE(entries(root), QStringList({"Folder", "Other.url", "Tool.desktop", "x.url"}));

        // Delete names what it deletes.
        dialogs.answers = {Dialogs::Answer::No, Dialogs::Answer::No};
        panel.deleteNode(model.indexOfEntry(3));
        panel.deleteNode(model.index(0, 0));
        QCOMPARE(
            dialogs.asked.mid(4),
            QStringList({"Delete \"x\"?\nAre you sure?",
                         "Delete the folder \"Folder\" and everything in it?\nAre you sure?"}));
        QCOMPARE(entries(root).size(), 4);
    }

    void menuEntriesOpenAndAFileGoneRebuildsFromItsOwnClick()
    {
        const TemporaryFavourites folder;
        const QString& root = folder.root;
        QVERIFY(folder.add("Folder/Gone.url", "http://gone.test/"));
        QVERIFY(folder.add("Page.url", "http://page.test/"));
        Subsystem fixture(folder);
        fixture.tabs.openFirstTab();
        RedrawPacer pacer;
        CommandBarWidgets widgets(fixture.bar, fixture.window, pacer);
        Band& menu = *fixture.bar.band(key::favMenu);
        QAction* page = widgets.action(menu.at(menu.count() - 1));

        page->trigger();
        QCOMPARE(fixture.view(1)->locationUrl(), "http://page.test/");
        page->trigger();
        QCOMPARE(fixture.state.tabCount, 2);
        QCOMPARE(fixture.view(2)->locationUrl(), "http://page.test/");

        QVERIFY(QFile::remove(root + "Folder/Gone.url"));
        widgets.action(fixture.bar.band("favband1")->at(0))->trigger();
        QCOMPARE(fixture.dialogs.asked,
                 QStringList({"Possible external changes ocurred, so please try again!"}));
        QCOMPARE(fixture.bar.band("favband1")->at(0)->caption(), "— NONE —");
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QCOMPARE(widgets.menu("favband1")->actions().size(), 1);
        QCOMPARE(fixture.state.tabCount, 2);
    }

    void menusFollowChangesMadeOutside()
    {
        const TemporaryFavourites folder;
        QVERIFY(folder.add("Page.url", "http://page.test/"));
        Subsystem fixture(folder);
        FavouritesSubsystem& favourites = fixture.favourites;
        const Band& menu = *fixture.bar.band(key::favMenu);
        const int fixed = menu.count() - 1;
        // The program's own changes, coming back from the folder, rebuild nothing.
        QSignalSpy rebuilt(&favourites.store(), &FavouritesStore::rebuilt);
        favourites.store().refreshIfChanged();
        QCOMPARE(rebuilt.count(), 0);

        QVERIFY(folder.add("Later.url", "http://later.test/"));
        QTRY_COMPARE(captions(menu, fixed), QStringList({"Later", "Page"}));
        // A folder made meanwhile is followed as well.
        QVERIFY(QDir().mkpath(folder.root + "New"));
        QTRY_COMPARE(captions(menu, fixed), QStringList({"New", "Later", "Page"}));
        QVERIFY(folder.add("New/inner.url", "http://inner.test/"));
        QTRY_COMPARE(captions(*fixture.bar.band("favband1")), QStringList({"inner"}));
        QCOMPARE(favourites.panel().model()->rowCount(), 3);
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
        Subsystem fixture(folder);
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
