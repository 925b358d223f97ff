#pragma once
// The favourites subsystem: the favourites folder read into a store, shown
// as the Favorites menu and the side bar's favourites page and kept in step
// with the folder, and the commands that add, organise, open, import and
// export favourites.
#include "FavouritesFolder.h"
#include "FavouritesMenus.h"
#include "FavouritesStore.h"
#include "FavouritesWatch.h"
#include "SideBarSwitches.h"

class BarEventRouter;
class CommandDispatcher;
class FavouritesPanel;
class Tabs;
class QWidget;

namespace platform {
class Dialogs;
class Shell;
} // namespace platform
namespace commandbar {
class CommandBar;
} // namespace commandbar

class FavouritesSubsystem
{
public:
    // pictures: the folder of the side panel's pictures.
    FavouritesSubsystem(QWidget& window, const QString& pictures, commandbar::CommandBar& bar,
                        Tabs& tabs, platform::Dialogs& dialogs, platform::Shell& shell,
                        CommandDispatcher& commands, BarEventRouter& events);

    // Start-up: the folder made when missing, read, and shown.
    void start();

    FavouritesStore& store() { return store_; }
    FavouritesPanel& panel() { return *panel_; }

private:
    bool ensureFolder();
    void organise();
    void importFavourites(const QString& title);
    void exportFavourites(const QString& title);

    QWidget& window_;
    commandbar::CommandBar& bar_;
    platform::Dialogs& dialogs_;
    FavouritesFolder folder_;
    FavouritesStore store_;
    FavouritesWatch watch_;
    FavouritesMenus menus_;
    SideBarSwitches switches_;
    FavouritesPanel* panel_;
};
