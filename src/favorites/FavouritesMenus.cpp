#include "FavouritesMenus.h"
#include "FavouritesScan.h"
#include "commandbar/CommandBar.h"
#include "core/Keys.h"
#include "core/ToolKeys.h"
#include "platform/NarrowText.h"
#include "platform/Shell.h"

#include <optional>

namespace {

constexpr int captionBytes = 40;
constexpr QStringView disabledCaption = u"— Empty —";

bool isLinksFolder(const QString& name)
{
    return name == QLatin1String("Links") || name == QStringLiteral("链接");
}

} // namespace

FavouritesMenus::FavouritesMenus(commandbar::CommandBar& bar, platform::Shell& shell)
    : bar_(bar), shell_(shell)
{
}

FavouritesMenus::Entry FavouritesMenus::entryFor(const FavouriteItem& item, bool icons) const
{
    Entry entry{{},
                0,
                commandbar::ControlType::Button,
                platform::shortenCaption(item.name, captionBytes),
                {},
                {},
                {},
                true};
    switch (item.kind) {
    case FavouriteItem::Kind::Folder:
        entry.key = keys::favouriteKey(item.position);
        entry.id = keys::favouriteFolderId(item.position);
        entry.type = commandbar::ControlType::DropDown;
        entry.subBand = keys::favouriteBandKey(item.number);
        break;
    case FavouriteItem::Kind::Favourite:
        entry.key = keys::favouriteKey(item.number);
        entry.id = keys::favouriteId(item.number);
        entry.tag = item.path;
        entry.enabled = entry.caption != disabledCaption;
        break;
    case FavouriteItem::Kind::Empty:
        entry.key = keys::emptyFolderKey(item.number);
        entry.id = keys::emptyFolderId(item.number);
        break;
    }
    if (icons && item.kind != FavouriteItem::Kind::Empty)
        entry.picture = shell_.fileIcon(item.path);
    return entry;
}

void FavouritesMenus::build(const FavouritesScan& scan)
{
    commandbar::Band* menu = bar_.band(key::favMenu);
    if (!menu)
        return;
    if (fixedTools_ < 0)
        fixedTools_ = menu->count();
    const bool icons = bar_.isChecked(key::favMenu, key::favIcons);

    // Every level's entries in order: the top level at 0, folder n at n.
    const std::vector<FavouriteItem>& items = scan.items();
    const auto levelOf = [&items](const FavouriteItem& item) {
        return item.parent < 0 ? size_t(0) : size_t(items[size_t(item.parent)].number);
    };
    std::vector<std::vector<Entry>> levels(size_t(scan.folderCount()) + 1);
    for (const FavouriteItem& item : items)
        levels[levelOf(item)].push_back(entryFor(item, icons));

    removeLinkCopies();
    // A drop-down takes its band's menu as it goes in, so new bands come
    // first; bands no longer opened by any drop-down go last.
    for (int n = folderBands_ + 1; n <= scan.folderCount(); ++n)
        bar_.addBand(keys::favouriteBandKey(n), commandbar::BandKind::Popup);
    std::vector<commandbar::Band*> bands{menu};
    for (int n = 1; n <= scan.folderCount(); ++n)
        bands.push_back(bar_.band(keys::favouriteBandKey(n)));
    for (size_t level = 0; level < bands.size(); ++level)
        fill(*bands[level], level == 0 ? fixedTools_ : 0, levels[level]);
    for (int n = scan.folderCount() + 1; n <= folderBands_; ++n)
        bar_.removeBand(keys::favouriteBandKey(n));
    folderBands_ = scan.folderCount();

    favouriteTools_.assign(size_t(scan.favouriteCount()), nullptr);
    for (const FavouriteItem& item : items) {
        if (item.kind == FavouriteItem::Kind::Empty)
            continue;
        const size_t level = levelOf(item);
        commandbar::Tool* tool = bands[level]->at((level == 0 ? fixedTools_ : 0) + item.row);
        if (item.kind == FavouriteItem::Kind::Favourite) {
            favouriteTools_[size_t(item.number - 1)] = tool;
        } else {
            bands[size_t(item.number)]->setCaption(item.name);
            if (isLinksFolder(item.name))
                addLinkCopies(*tool);
        }
    }
}

void FavouritesMenus::fill(commandbar::Band& band, int first, const std::vector<Entry>& entries)
{
    for (size_t i = 0; i < entries.size(); ++i) {
        const Entry& entry = entries[i];
        const int index = first + int(i);
        commandbar::Tool* tool = index < band.count() ? band.at(index) : nullptr;
        if (tool && (tool->type() != entry.type || tool->subBand() != entry.subBand)) {
            bar_.removeTool(band, index);
            tool = nullptr;
        }
        // A new tool is complete before it goes in, so its menu takes it once.
        std::optional<commandbar::Tool> made;
        if (!tool)
            made.emplace(bar_, entry.key, entry.id, entry.type);
        commandbar::Tool& target = tool ? *tool : *made;
        target.setKey(entry.key);
        target.setId(entry.id);
        target.setCaption(entry.caption);
        target.setSubBand(entry.subBand);
        target.setTag(entry.tag);
        target.setPicture(entry.picture);
        target.setEnabled(entry.enabled);
        if (made)
            bar_.insertTool(band, *made, index);
    }
    while (band.count() > first + int(entries.size()))
        bar_.removeTool(band, band.count() - 1);
}

void FavouritesMenus::addLinkCopies(const commandbar::Tool& folder)
{
    if (commandbar::Band* address = bar_.band(key::addressBar)) {
        commandbar::Tool* copy =
            bar_.insertTool(*address, folder, address->indexOf(address->tool(key::go)) + 1);
        copy->setDisplayStyle(commandbar::DisplayStyle::PictureAndCaption);
        linkCopies_.push_back(copy);
    }
    if (commandbar::Band* view = bar_.band(key::viewMenu))
        linkCopies_.push_back(bar_.insertTool(*view, folder));
}

void FavouritesMenus::removeLinkCopies()
{
    for (commandbar::Tool* copy : linkCopies_)
        bar_.removeTool(*copy->band(), copy->band()->indexOf(copy));
    linkCopies_.clear();
}

void FavouritesMenus::setCaption(int entry, const QString& name)
{
    if (entry >= 1 && entry <= int(favouriteTools_.size()))
        favouriteTools_[size_t(entry - 1)]->setCaption(
            platform::shortenCaption(name, captionBytes));
}
