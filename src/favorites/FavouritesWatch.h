#pragma once
// Keeps the favourites in step with their folder: a change in the root or in
// any folder listed (an entry made, renamed or deleted, by another program
// or by hand) reads the folder again once it has been quiet for a moment, and
// the menus and the tree change only if what they show did. Folders are
// watched, never files, so thousands of favourites cost no more than the
// folders that hold them.
#include <QFileSystemWatcher>
#include <QTimer>

class FavouritesStore;

class FavouritesWatch
{
public:
    explicit FavouritesWatch(FavouritesStore& store);

private:
    // Watches the folders of the store's latest reading, and only those.
    void follow();

    FavouritesStore& store_;
    QFileSystemWatcher watcher_;
    QTimer quiet_;
};
