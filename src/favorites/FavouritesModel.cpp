#include "FavouritesModel.h"
#include "FavouritesOrganiser.h"
#include "FavouritesStore.h"
#include "InternetShortcut.h"
#include "core/ToolKeys.h"
#include "platform/NarrowText.h"

namespace {

QIcon picture(const QString& path, const QString& themeName)
{
    const QIcon file(path);
    return file.isNull() ? QIcon::fromTheme(themeName) : file;
}

constexpr QLatin1String folderTheme{"folder"};
constexpr QLatin1String favouriteTheme{"text-html"};

} // namespace

FavouritesModel::FavouritesModel(FavouritesStore& store, QObject* parent)
    : QAbstractItemModel(parent), store_(store), folderPicture_(QIcon::fromTheme(folderTheme)),
      favouritePicture_(QIcon::fromTheme(favouriteTheme))
{
    connect(&store_, &FavouritesStore::rebuilt, this, [this] {
        beginResetModel();
        endResetModel();
    });
    connect(&store_, &FavouritesStore::renamed, this, [this](int entry) {
        const QModelIndex node = indexOfEntry(entry);
        emit dataChanged(node, node);
    });
}

static const std::vector<int>& childrenOf(const FavouritesScan& scan, const QModelIndex& parent)
{
    return parent.isValid() ? scan.items()[size_t(parent.internalId())].children : scan.topItems();
}

QModelIndex FavouritesModel::index(int row, int column, const QModelIndex& parent) const
{
    const std::vector<int>& level = childrenOf(store_.scan(), parent);
    if (column != 0 || row < 0 || row >= int(level.size()))
        return {};
    return createIndex(row, 0, quintptr(level[size_t(row)]));
}

QModelIndex FavouritesModel::parent(const QModelIndex& child) const
{
    if (!child.isValid())
        return {};
    return indexOfItem(store_.scan().items()[size_t(child.internalId())].parent);
}

QModelIndex FavouritesModel::indexOfItem(int item) const
{
    if (item < 0)
        return {};
    return createIndex(store_.scan().items()[size_t(item)].row, 0, quintptr(item));
}

QModelIndex FavouritesModel::indexOfEntry(int entry) const
{
    return indexOfItem(store_.scan().itemOf(entry));
}

void FavouritesModel::loadPictures(const QString& folder)
{
    folderPicture_ = picture(folder + QStringLiteral("res1.ico"), folderTheme);
    favouritePicture_ = picture(folder + QStringLiteral("res2.ico"), favouriteTheme);
}

int FavouritesModel::rowCount(const QModelIndex& parent) const
{
    if (parent.column() > 0)
        return 0;
    return int(childrenOf(store_.scan(), parent).size());
}

int FavouritesModel::columnCount(const QModelIndex&) const
{
    return 1;
}

QVariant FavouritesModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const FavouriteItem& item = store_.scan().items()[size_t(index.internalId())];
    const bool favourite = item.kind == FavouriteItem::Kind::Favourite;
    switch (role) {
    case Qt::DisplayRole:
        return platform::shortenCaption(item.name, 40);
    case Qt::EditRole:
        return favourite ? FavouritesOrganiser::displayName(item.path) : item.name;
    case Qt::ToolTipRole:
        return favourite ? QStringLiteral("Double Click ->") + InternetShortcut::address(item.path)
                         : QStringLiteral("Click to open the directory!");
    case Qt::DecorationRole:
        if (item.kind == FavouriteItem::Kind::Empty)
            return {};
        return favourite ? favouritePicture_ : folderPicture_;
    case KeyRole:
        if (item.kind == FavouriteItem::Kind::Folder)
            return keys::favouriteBandKey(item.number);
        return favourite ? QString(u'K' + QString::number(item.number)) : QString();
    case EntryRole:
        return favourite ? item.number : 0;
    case PathRole:
        return item.path;
    default:
        return {};
    }
}

bool FavouritesModel::setData(const QModelIndex& index, const QVariant& value, int role)
{
    const int entry = index.data(EntryRole).toInt();
    if (role == Qt::EditRole && entry > 0 && value.toString() != index.data(Qt::EditRole))
        emit renameRequested(entry, value.toString());
    return false;
}

Qt::ItemFlags FavouritesModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
    if (index.data(EntryRole).toInt() > 0)
        flags |= Qt::ItemIsEditable;
    return flags;
}
