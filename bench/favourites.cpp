// Favourites at scale: a folder of 10,000 favourites in 500 folders read
// into the Favorites menu (model and menus) and the side panel's tree.
// Prints per round "first <ms>" (a fresh window's first build, as at
// start-up), "refresh <ms>" (nothing changed), "added <ms>" (a favourite
// added in the first folder, which renumbers nearly every entry after it);
// then "scan <ms>" for the reading alone and "icons <ms>" for a refresh with
// "Show Icons" checked.
#include "commandbar/SkinLoader.h"
#include "commandbar/widgets/CommandBarWidgets.h"
#include "favorites/FavouritesMenus.h"
#include "favorites/FavouritesModel.h"
#include "favorites/FavouritesStore.h"
#include "platform/Dialogs.h"
#include "platform/Shell.h"
#include "platform/ini/ProfileFile.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QMainWindow>
#include <QTemporaryDir>
#include <QTreeView>
#include <cstdio>

namespace {

void addFavourite(const QString& path, int n)
{
    platform::ProfileFile(path).writeString(QStringLiteral("InternetShortcut"),
                                            QStringLiteral("URL"),
                                            QStringLiteral("https://example.org/%1").arg(n));
}

void makeFolder(const QString& root)
{
    int made = 0;
    for (int top = 0; top < 25; ++top)
        for (int sub = 0; sub < 20; ++sub) {
            QString folder = root + QStringLiteral("Topic %1/").arg(top);
            if (sub > 0)
                folder += QStringLiteral("Part %1/").arg(sub);
            QDir().mkpath(folder);
            for (int n = 0; n < 20; ++n, ++made)
                addFavourite(folder + QStringLiteral("Page number %1.url").arg(made), made);
        }
}

double millis(QElapsedTimer& timer)
{
    return double(timer.nsecsElapsed()) / 1e6;
}

// One window with the Favorites menu and the side panel's tree.
struct Window
{
    Window(const QString& skin, const QString& root)
        : store(root, dialogs, shell), menus(bar, shell), model(store)
    {
        commandbar::SkinLoader::loadFile(bar, skin);
        widgets = std::make_unique<commandbar::CommandBarWidgets>(bar, window, pacer);
        QObject::connect(&store, &FavouritesStore::rebuilt, [this] { menus.build(store.scan()); });
        auto* tree = new QTreeView;
        tree->setUniformRowHeights(true);
        tree->setModel(&model);
        window.setCentralWidget(tree);
        window.resize(1000, 700);
        window.show();
        QCoreApplication::processEvents();
    }

    // Reads the folder into menus and tree, as the program's event loop
    // would see it through: the old menu entries go too.
    double refresh()
    {
        QElapsedTimer timer;
        timer.start();
        store.refresh();
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return millis(timer);
    }

    QMainWindow window;
    commandbar::CommandBar bar;
    commandbar::RedrawPacer pacer;
    std::unique_ptr<commandbar::CommandBarWidgets> widgets;
    platform::QtDialogs dialogs;
    platform::DesktopShell shell;
    FavouritesStore store;
    FavouritesMenus menus;
    FavouritesModel model;
};

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: bench_favourites <skin file> [rounds]\n");
        return 2;
    }
    const QString skin = QString::fromLocal8Bit(argv[1]);
    const int rounds = argc > 2 ? std::atoi(argv[2]) : 7;
    QTemporaryDir dir;
    const QString root = dir.path() + QStringLiteral("/Favorites/");
    makeFolder(root);

    for (int round = 0; round < rounds; ++round) {
        auto window = std::make_unique<Window>(skin, root);
        std::printf("first %.1f\n", window->refresh());
        window.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    Window window(skin, root);
    window.refresh();
    for (int round = 0; round < rounds; ++round)
        std::printf("refresh %.1f\n", window.refresh());
    for (int round = 0; round < rounds; ++round) {
        addFavourite(root + QStringLiteral("Topic 0/Added %1.url").arg(round), round);
        std::printf("added %.1f\n", window.refresh());
    }

    QElapsedTimer timer;
    timer.start();
    const FavouritesScan scan = FavouritesScan::read(root);
    std::printf("scan %.1f\n", millis(timer));
    window.bar.tool(QStringLiteral("sub_Fav"), QStringLiteral("b_iconon"))->setChecked(true);
    std::printf("icons %.1f\n", window.refresh());
    std::printf("entries %d folders %d\n", window.store.scan().favouriteCount(),
                window.store.scan().folderCount());
    return 0;
}
