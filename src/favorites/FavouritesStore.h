#pragma once
// The favourites as the program knows them since it last read the folder:
// the scan, refreshed on demand, and the operations on an entry by its
// number. Everything shown of the favourites (menus, side panel) is rebuilt
// from here when rebuilt() is emitted.
#include "FavouritesScan.h"

#include <QObject>

namespace platform {
class Dialogs;
class Shell;
} // namespace platform

class FavouritesStore : public QObject
{
    Q_OBJECT
public:
    FavouritesStore(QString root, platform::Dialogs& dialogs, platform::Shell& shell);

    const QString& root() const { return root_; }
    const FavouritesScan& scan() const { return scan_; }

    // Reads the folder again.
    void refresh();
    // Reads the folder again and shows it only when anything there changed,
    // for the program's own changes coming back from the folder's watch.
    void refreshIfChanged();
    // The address of favourite n. A link file is handed to the desktop and
    // gives none; a file gone since the last reading makes a new reading and
    // tells the user to try again.
    QString open(int entry);
    // Renames the file of favourite n: oldName becomes newName in the file's
    // name less its extension; the file keeps its folder and extension. False
    // (after saying so) when it cannot.
    bool rename(int entry, const QString& oldName, const QString& newName);

    // Title characters a file name cannot hold become blanks.
    static QString sanitizeTitle(QString title);

signals:
    void rebuilt();
    void renamed(int entry);

private:
    QString root_;
    platform::Dialogs& dialogs_;
    platform::Shell& shell_;
    FavouritesScan scan_;
};
