#pragma once
// Where the favourites live: a folder tree of shortcut files in the user's
// data folder, made on first use with a few favourites to start from.
#include <QString>

class FavouritesFolder
{
public:
    // root ends with "/".
    explicit FavouritesFolder(QString root);
    // The user's folder: the generic data location's "QUB-BROWSER/Favorites/".
    static QString userRoot();

    const QString& root() const { return root_; }
    // Makes the folder when it does not exist yet, with the starting
    // favourites; an existing folder, even an empty one, is left as it is.
    // False when the folder is missing and cannot be made.
    bool ensure() const;

private:
    QString root_;
};
