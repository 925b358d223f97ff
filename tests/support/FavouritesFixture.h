#pragma once
// A favourites folder's files, and the favourites subsystem started on one:
// the base of the tests of the folder and of its menus.
#include "favorites/FavouritesScan.h"
#include "favorites/FavouritesSubsystem.h"
#include "platform/ini/ProfileFile.h"
#include "support/Fakes.h"
#include "support/Files.h"
#include "support/StripFixture.h"

#include <QDir>
#include <QMainWindow>
#include <QStandardPaths>
#include <QTest>

// Deletes go to the trash, which lives in the data folder.
inline bool makeTrashFolder()
{
    return QDir().mkpath(QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation));
}

inline QStringList entries(const QString& folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name);
}

inline void shortcut(const QString& path, const QString& address)
{
    QVERIFY(platform::ProfileFile(path).writeString("InternetShortcut", "URL", address));
}

// The names on one level of a scan, in order.
inline QStringList names(const FavouritesScan& scan, int folder = -1)
{
    QStringList found;
    for (int index : folder < 0 ? scan.topItems() : scan.items()[size_t(folder)].children)
        found << scan.items()[size_t(index)].name;
    return found;
}

// The favourites subsystem on the shipped skin's bar and a tab strip, started
// on the folder given.
struct FavouritesFixture : StripFixture
{
    QMainWindow window;
    ScriptedDialogs dialogs;
    RecordingShell shell;
    FavouritesSubsystem favourites;

    explicit FavouritesFixture(const TemporaryFavourites& folder)
        : favourites(window, folder.data.path() + '/', bar, tabs, dialogs, shell, commands, events)
    {
        favourites.start();
    }
};
