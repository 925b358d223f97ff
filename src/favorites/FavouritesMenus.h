#pragma once
// The favourites as menus of the command bar: after the fixed tools of
// "sub_Fav", one drop-down per folder opening its own pop-up band
// ("favband" + folder number, tool "fav" + position, identifier position ×
// 100 + 1500) and one tool per favourite ("fav" + entry, identifier entry +
// 1500, the file's path as its tag); a folder named "Links" also beside the
// Go button and in the View menu. Folder and favourite tools share the "fav"
// keys, so they live in their bands only, never in the bar's collection.
// Shell icons are asked for only while "b_iconon" is checked.
#include <QString>
#include <vector>

class FavouritesScan;
struct FavouriteItem;

namespace platform {
class Band;
class CommandBar;
class Shell;
class Tool;
} // namespace platform

class FavouritesMenus
{
public:
    FavouritesMenus(platform::CommandBar& bar, platform::Shell& shell);

    // Removes what the last build made, then builds the menus of scan.
    void build(const FavouritesScan& scan);
    // The menu tool of table entry n shows name (shortened).
    void setCaption(int entry, const QString& name);

private:
    void clear();
    void addItem(const FavouritesScan& scan, int index, const QString& bandKey, bool icons);
    platform::Tool* addTool(const QString& bandKey, const QString& key, int id,
                            const QString& caption, const QString& subBand = {});

    platform::CommandBar& bar_;
    platform::Shell& shell_;
    int fixedTools_ = -1;
    int folderBands_ = 0;
    std::vector<platform::Tool*> favouriteTools_;
    std::vector<platform::Tool*> linkCopies_;
};
