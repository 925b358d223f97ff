#include "FavouritesWatch.h"
#include "FavouritesStore.h"

#include <QDir>
#include <QSet>

namespace {
// Long enough that an import or a copy of many files is read once.
constexpr int quietMs = 300;
} // namespace

FavouritesWatch::FavouritesWatch(FavouritesStore& store) : store_(store)
{
    quiet_.setSingleShot(true);
    quiet_.setInterval(quietMs);
    QObject::connect(&quiet_, &QTimer::timeout, &store_, &FavouritesStore::refreshIfChanged);
    QObject::connect(&watcher_, &QFileSystemWatcher::directoryChanged, &quiet_,
                     qOverload<>(&QTimer::start));
    QObject::connect(&store_, &FavouritesStore::rebuilt, &watcher_, [this] { follow(); });
}

void FavouritesWatch::follow()
{
    QSet<QString> wanted{QDir::cleanPath(store_.root())};
    for (const FavouriteItem& item : store_.scan().items())
        if (item.kind == FavouriteItem::Kind::Folder)
            wanted.insert(item.path);
    const QStringList watched = watcher_.directories();
    QStringList gone;
    for (const QString& path : watched)
        if (!wanted.remove(path))
            gone << path;
    if (!gone.isEmpty())
        watcher_.removePaths(gone);
    if (!wanted.isEmpty())
        watcher_.addPaths(wanted.values());
}
