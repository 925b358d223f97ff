#pragma once
// One reading of the favourites folder tree, in the order the menus are built:
// each level's folders first, each followed at once by everything below it,
// then the level's files, then "— NONE —" for a folder that holds nothing.
// Each level is listed in its folder's own order (FolderOrder), the rest by
// name ignoring case, as the Windows file system lists them. A folder is left out unless it is a
// plain directory the user may read and change: hidden ("." names), read-only and symbolic-link
// folders stay out, as do names ending in "ini". Favourite n (from 1, in the order met) is entry n
// of the path table.
#include <QString>
#include <vector>

struct FavouriteItem
{
    enum class Kind { Folder, Favourite, Empty };
    Kind kind;
    // The folder's name, or the file's name less its last four characters.
    QString name;
    // The full path; empty for "— NONE —".
    QString path;
    // Index of the folder item it lies in; -1 directly in the root.
    int parent;
    // Folder: its number (band "favband" + n). Favourite: its table entry.
    // Empty: the table's size when it was met.
    int number;
    // Its place on its menu level, counted as the tool keys count it.
    int position;
    // Its row among the items of its folder (or of the root).
    int row = 0;
    // Indices of the items inside a folder, in order.
    std::vector<int> children;

    bool operator==(const FavouriteItem&) const = default;
};

class FavouritesScan
{
public:
    // Deeper folders than this are not listed: a menu that deep is of no use,
    // and a hostile tree must not exhaust the stack.
    static constexpr int maxDepth = 64;
    // The first position on the top level, after the menu's fixed tools.
    static constexpr int firstTopPosition = 4;

    static FavouritesScan read(const QString& root);

    const std::vector<FavouriteItem>& items() const { return items_; }
    // Indices of the items directly in the root, in order.
    const std::vector<int>& topItems() const { return top_; }
    int folderCount() const { return folders_; }
    int favouriteCount() const { return int(entryItems_.size()); }
    // The file of table entry n; empty for a number outside the table.
    QString path(int entry) const;
    // The index of the item of table entry n; -1 outside the table.
    int itemOf(int entry) const;
    // Points entry n at its file's new name.
    void rename(int entry, const QString& path);

    bool operator==(const FavouritesScan&) const = default;

private:
    void readFolder(const QString& folder, int parent, int depth);
    int add(FavouriteItem item);

    std::vector<FavouriteItem> items_;
    std::vector<int> top_;
    std::vector<int> entryItems_;
    int folders_ = 0;
};
