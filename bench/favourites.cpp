// Favourites at scale: a folder of 10,000 favourites in 500 folders read
// into the Favorites menu (model and menus) and the side panel's tree, as at
// start-up and at every refresh. Prints "favourites <ms>" per round (scan,
// menus and tree), "scan <ms>" for the reading alone, and "icons <ms>" for a
// round with "Show Icons" checked.
#include "favorites/FavouritesMenus.h"
#include "favorites/FavouritesModel.h"
#include "favorites/FavouritesStore.h"
#include "platform/Dialogs.h"
#include "platform/Shell.h"
#include "platform/commandbar/CommandBarWidgets.h"
#include "platform/commandbar/SkinLoader.h"
#include "platform/ini/ProfileFile.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QMainWindow>
#include <QTemporaryDir>
#include <QTreeView>
#include <cstdio>

namespace {

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
                platform::ProfileFile(folder + QStringLiteral("Page number %1.url").arg(made))
                    .writeString(QStringLiteral("InternetShortcut"), QStringLiteral("URL"),
                                 QStringLiteral("https://example.org/%1").arg(made));
        }
}

double millis(QElapsedTimer& timer)
{
    return double(timer.nsecsElapsed()) / 1e6;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication app(argc, argv);
    if (argc < 2) {
        std::fprintf(stderr, "usage: bench_favourites <skin file> [rounds]\n");
        return 2;
    }
    const int rounds = argc > 2 ? std::atoi(argv[2]) : 7;
    QTemporaryDir dir;
    const QString root = dir.path() + QStringLiteral("/Favorites/");
    makeFolder(root);

    QMainWindow window;
    platform::CommandBar bar;
    if (platform::SkinLoader::loadFile(bar, QString::fromLocal8Bit(argv[1])))
        return 1;
    platform::RedrawPacer pacer;
    platform::CommandBarWidgets widgets(bar, window, pacer);
    platform::QtDialogs dialogs;
    platform::DesktopShell shell;
    FavouritesStore store(root, dialogs, shell);
    FavouritesMenus menus(bar, shell);
    QObject::connect(&store, &FavouritesStore::rebuilt, [&] { menus.build(store.scan()); });
    FavouritesModel model(store);
    auto* tree = new QTreeView;
    tree->setUniformRowHeights(true);
    tree->setModel(&model);
    window.setCentralWidget(tree);
    window.resize(1000, 700);
    window.show();
    QCoreApplication::processEvents();

    QElapsedTimer timer;
    for (int round = 0; round < rounds; ++round) {
        timer.start();
        store.refresh();
        QCoreApplication::processEvents();
        // The old menus' entries go as they would in the program's event
        // loop, which this loop is not: kept, they would slow every round after.
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        std::printf("favourites %.1f\n", millis(timer));
    }
    timer.start();
    const FavouritesScan scan = FavouritesScan::read(root);
    std::printf("scan %.1f\n", millis(timer));
    bar.tool(QStringLiteral("sub_Fav"), QStringLiteral("b_iconon"))->setChecked(true);
    timer.start();
    store.refresh();
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    std::printf("icons %.1f\n", millis(timer));
    std::printf("entries %d folders %d\n", store.scan().favouriteCount(),
                store.scan().folderCount());
    return 0;
}
