#include "FavouritesScan.h"
#include "FolderOrder.h"

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <algorithm>
#include <climits>

namespace {

constexpr QStringView emptyCaption = u"— NONE —";

bool isMenuFolder(const QFileInfo& entry)
{
    return entry.isDir() && !entry.isSymLink() && !entry.isHidden() && entry.isReadable() &&
           entry.isExecutable() && entry.permissions().testFlag(QFile::WriteOwner);
}

// The folder's own order first, then by name.
QFileInfoList ordered(QFileInfoList entries, const QHash<QString, int>& ranks)
{
    if (!ranks.isEmpty())
        std::stable_sort(
            entries.begin(), entries.end(), [&](const QFileInfo& a, const QFileInfo& b) {
                return ranks.value(a.fileName(), INT_MAX) < ranks.value(b.fileName(), INT_MAX);
            });
    return entries;
}

} // namespace

FavouritesScan FavouritesScan::read(const QString& root)
{
    FavouritesScan scan;
    scan.readFolder(root, -1, 0);
    return scan;
}

int FavouritesScan::itemOf(int entry) const
{
    return entry >= 1 && entry <= favouriteCount() ? entryItems_[size_t(entry - 1)] : -1;
}

QString FavouritesScan::path(int entry) const
{
    const int item = itemOf(entry);
    return item < 0 ? QString() : items_[size_t(item)].path;
}

void FavouritesScan::rename(int entry, const QString& path)
{
    const int item = itemOf(entry);
    if (item < 0)
        return;
    const QString name = path.mid(path.lastIndexOf(u'/') + 1);
    items_[size_t(item)].path = path;
    items_[size_t(item)].name = name.left(name.size() - 4);
}

int FavouritesScan::add(FavouriteItem item)
{
    const int index = int(items_.size());
    std::vector<int>& level = item.parent < 0 ? top_ : items_[size_t(item.parent)].children;
    item.row = int(level.size());
    level.push_back(index);
    items_.push_back(std::move(item));
    return index;
}

void FavouritesScan::readFolder(const QString& folder, int parent, int depth)
{
    const QDir dir(folder);
    const QDir::SortFlags order = QDir::Name | QDir::IgnoreCase;
    QHash<QString, int> ranks;
    const QStringList listed = FolderOrder::read(folder);
    for (int i = 0; i < listed.size(); ++i)
        ranks.insert(listed[i], ranks.value(listed[i], i));
    // One listing of the folder, split into folders and files.
    QFileInfoList folders;
    QFileInfoList files;
    for (const QFileInfo& entry :
         dir.entryInfoList(QDir::Dirs | QDir::Files | QDir::NoDotAndDotDot, order))
        (entry.isDir() ? folders : files).append(entry);
    int position = parent < 0 ? firstTopPosition - 1 : 0;
    if (depth < maxDepth) {
        for (const QFileInfo& entry : ordered(folders, ranks)) {
            if (!isMenuFolder(entry))
                continue;
            const int index = add({FavouriteItem::Kind::Folder,
                                   entry.fileName(),
                                   entry.absoluteFilePath(),
                                   parent,
                                   ++folders_,
                                   ++position,
                                   0,
                                   {}});
            readFolder(entry.absoluteFilePath(), index, depth + 1);
        }
    }
    for (const QFileInfo& entry : ordered(files, ranks)) {
        const QString name = entry.fileName();
        if (name.endsWith(QLatin1String("ini")))
            continue;
        entryItems_.push_back(int(items_.size()));
        add({FavouriteItem::Kind::Favourite,
             name.left(name.size() - 4),
             entry.absoluteFilePath(),
             parent,
             favouriteCount(),
             ++position,
             0,
             {}});
    }
    if (parent >= 0 && items_[size_t(parent)].children.empty())
        add({FavouriteItem::Kind::Empty,
             emptyCaption.toString(),
             {},
             parent,
             favouriteCount(),
             1,
             0,
             {}});
}
