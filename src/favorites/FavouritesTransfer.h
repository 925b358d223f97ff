#pragma once
// Import and export of the favourites as a Netscape bookmark file. An import
// adds to what is there, after it: a folder of the same name is filled, a
// bookmark already there with the same address is skipped, one whose name is
// taken by another address gets a number, and Firefox's smart bookmarks are
// left out. Names become file names that stay inside their folder ("/",
// control characters and leading dots go), so nothing is ever written
// outside the favourites root.
#include "NetscapeBookmarks.h"

class FavouritesScan;

class FavouritesTransfer
{
public:
    explicit FavouritesTransfer(const QString& root);

    struct Result
    {
        // What was made: favourites written and folders that were not there.
        int favourites = 0;
        int folders = 0;
        // Empty when all went well.
        QString problem;
    };
    Result importFile(const QString& path) const;
    Result importBookmarks(const Bookmark& tree) const;
    // Every internet shortcut of the scan, in its folders and order; an
    // empty text when written, else the problem.
    QString exportFile(const FavouritesScan& scan, const QString& path) const;

    // The file name a bookmark's name becomes (without extension).
    static QString fileName(const QString& name);

private:
    void importFolder(const Bookmark& folder, const QString& path, Result& result) const;

    QString root_;
};
