#pragma once
// The favourites as menus of the command bar: after the fixed tools of
// "sub_Fav", one drop-down per folder opening its own pop-up band
// ("favband" + folder number, tool "fav" + position, identifier position ×
// 100 + 1500) and one tool per favourite ("fav" + entry, identifier entry +
// 1500, the file's path as its tag); a folder named "Links" also beside the
// Go button and in the View menu. Folder and favourite tools share the "fav"
// keys, so they live in their bands only, never in the bar's collection.
// Shell icons are asked for only while "b_iconon" is checked.
#include "commandbar/Tool.h"

#include <QString>
#include <vector>

class FavouritesScan;
struct FavouriteItem;

namespace platform {
class Shell;
} // namespace platform
namespace commandbar {
class Band;
class CommandBar;
} // namespace commandbar

class FavouritesMenus
{
public:
    FavouritesMenus(commandbar::CommandBar& bar, platform::Shell& shell);

    // Makes the menus show scan. A refresh mostly finds what the last build
    // made: tools already in their place are changed in place, and only
    // places that differ in kind are made anew, so ten thousand favourites
    // are not torn down and built again because one file came or went.
    void build(const FavouritesScan& scan);
    // The menu tool of table entry n shows name (shortened).
    void setCaption(int entry, const QString& name);

private:
    // What one place on a menu holds.
    struct Entry
    {
        QString key;
        int id;
        commandbar::ControlType type;
        QString caption;
        QString subBand;
        QString tag;
        QIcon picture;
        bool enabled;
    };

    Entry entryFor(const FavouriteItem& item, bool icons) const;
    void fill(commandbar::Band& band, int first, const std::vector<Entry>& entries);
    void addLinkCopies(const commandbar::Tool& folder);
    void removeLinkCopies();

    commandbar::CommandBar& bar_;
    platform::Shell& shell_;
    int fixedTools_ = -1;
    int folderBands_ = 0;
    std::vector<commandbar::Tool*> favouriteTools_;
    std::vector<commandbar::Tool*> linkCopies_;
};
