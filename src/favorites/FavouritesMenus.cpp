#include "FavouritesMenus.h"
#include "FavouritesScan.h"
#include "core/Keys.h"
#include "core/ToolKeys.h"
#include "platform/NarrowText.h"
#include "platform/Shell.h"
#include "platform/commandbar/CommandBar.h"

namespace {

constexpr int captionBytes = 40;
const QString disabledCaption = QStringLiteral("— Empty —");

bool isLinksFolder(const QString& name)
{
    return name == QLatin1String("Links") || name == QStringLiteral("链接");
}

} // namespace

FavouritesMenus::FavouritesMenus(platform::CommandBar& bar, platform::Shell& shell)
    : bar_(bar), shell_(shell)
{
}

void FavouritesMenus::build(const FavouritesScan& scan)
{
    clear();
    platform::Band* menu = bar_.band(key::favMenu);
    if (!menu)
        return;
    if (fixedTools_ < 0)
        fixedTools_ = menu->count();
    const platform::Tool* iconSwitch = menu->tool(key::favIcons);
    const bool icons = iconSwitch && iconSwitch->checked();
    favouriteTools_.assign(size_t(scan.favouriteCount()), nullptr);
    for (int index : scan.topItems())
        addItem(scan, index, key::favMenu, icons);
}

void FavouritesMenus::addItem(const FavouritesScan& scan, int index, const QString& bandKey,
                              bool icons)
{
    const FavouriteItem& item = scan.items()[size_t(index)];
    switch (item.kind) {
    case FavouriteItem::Kind::Folder: {
        const QString folderBand = keys::favouriteBandKey(item.number);
        bar_.addBand(folderBand, platform::BandKind::Popup)->setCaption(item.name);
        folderBands_ = item.number;
        platform::Tool* tool = addTool(bandKey, keys::favouriteKey(item.position),
                                       item.position * 100 + 1500, item.name, folderBand);
        if (icons)
            tool->setPicture(shell_.fileIcon(item.path));
        if (isLinksFolder(item.name)) {
            if (platform::Band* address = bar_.band(key::addressBar)) {
                platform::Tool* copy =
                    bar_.insertTool(*address, *tool, address->indexOf(address->tool(key::go)) + 1);
                copy->setDisplayStyle(3);
                linkCopies_.push_back(copy);
            }
            if (platform::Band* view = bar_.band(key::viewMenu))
                linkCopies_.push_back(bar_.insertTool(*view, *tool));
        }
        for (int child : item.children)
            addItem(scan, child, folderBand, icons);
        break;
    }
    case FavouriteItem::Kind::Favourite: {
        platform::Tool* tool =
            addTool(bandKey, keys::favouriteKey(item.number), item.number + 1500, item.name);
        tool->setTag(item.path);
        if (icons)
            tool->setPicture(shell_.fileIcon(item.path));
        if (tool->caption() == disabledCaption)
            tool->setEnabled(false);
        favouriteTools_[size_t(item.number - 1)] = tool;
        break;
    }
    case FavouriteItem::Kind::Empty:
        addTool(bandKey, keys::favouriteKey(item.number + 1000), item.number + 2500, item.name);
        break;
    }
}

platform::Tool* FavouritesMenus::addTool(const QString& bandKey, const QString& key, int id,
                                         const QString& caption, const QString& subBand)
{
    platform::Tool made(bar_, key, id,
                        subBand.isEmpty() ? platform::ControlType::Button
                                          : platform::ControlType::DropDown);
    made.setCaption(platform::shortenCaption(caption, captionBytes));
    made.setSubBand(subBand);
    return bar_.insertTool(*bar_.band(bandKey), made);
}

void FavouritesMenus::setCaption(int entry, const QString& name)
{
    if (entry >= 1 && entry <= int(favouriteTools_.size()))
        favouriteTools_[size_t(entry - 1)]->setCaption(
            platform::shortenCaption(name, captionBytes));
}

void FavouritesMenus::clear()
{
    for (platform::Tool* copy : linkCopies_)
        bar_.removeTool(*copy->band(), copy->band()->indexOf(copy));
    linkCopies_.clear();
    favouriteTools_.clear();
    if (platform::Band* menu = bar_.band(key::favMenu))
        while (fixedTools_ >= 0 && menu->count() > fixedTools_)
            bar_.removeTool(*menu, menu->count() - 1);
    for (int n = 1; n <= folderBands_; ++n)
        bar_.removeBand(keys::favouriteBandKey(n));
    folderBands_ = 0;
}
