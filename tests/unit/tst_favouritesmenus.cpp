// The favourites folder read into menus, a tree and a side panel that follow
// every change to it, from the program or from outside.
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

} // namespace

class FavouritesMenusTest : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { QVERIFY(makeTrashFolder()); }
    void init() { testsupport::failOnUnexpectedWarnings(); }

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
        FavouritesFixture fixture(folder);
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
        FavouritesFixture fixture(folder);
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
};

QUB_TEST_MAIN(FavouritesMenusTest)
#include "tst_favouritesmenus.moc"
