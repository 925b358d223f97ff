#include "FavouritesTransfer.h"
#include "FavouritesScan.h"
#include "FavouritesStore.h"
#include "FolderOrder.h"
#include "InternetShortcut.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace {

// A name's bytes, leaving room for a number and the extension within the 255
// bytes a file name may have.
constexpr int nameBytes = 200;
constexpr QLatin1String section{"InternetShortcut"};
constexpr QLatin1String urlKey{"URL"};

// Firefox's smart bookmarks ("place:" queries of its own history) open
// nowhere else.
bool opensHere(const Bookmark& entry)
{
    return entry.folder || !entry.address.startsWith(QLatin1String("place:"), Qt::CaseInsensitive);
}

bool writeShortcut(const QString& folder, const QString& path, const QString& address)
{
    // Written under a hidden name and renamed, so no half shortcut is ever
    // listed; a fresh file, so nothing is overwritten.
    const QString temporary = folder + QStringLiteral("/.import.part");
    QFile file(temporary);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return false;
    QString clean = address;
    clean.remove(u'\r').remove(u'\n').remove(QChar(0));
    const bool written = file.write((u'[' + section + QStringLiteral("]\r\n") + urlKey + u'=' +
                                     clean + QStringLiteral("\r\n"))
                                        .toUtf8()) > 0;
    file.close();
    if (written && QFile::rename(temporary, path))
        return true;
    QFile::remove(temporary);
    return false;
}

} // namespace

FavouritesTransfer::FavouritesTransfer(const QString& root) : root_(QDir::cleanPath(root)) {}

QString FavouritesTransfer::fileName(const QString& name)
{
    QString safe = FavouritesStore::sanitizeTitle(name.left(nameBytes));
    for (QChar& c : safe)
        if (c.unicode() < 0x20 || c.unicode() == 0x7F)
            c = u' ';
    safe = safe.simplified();
    while (safe.startsWith(u'.'))
        safe = safe.mid(1).trimmed();
    while (safe.toUtf8().size() > nameBytes || (!safe.isEmpty() && safe.back().isHighSurrogate()))
        safe.chop(1);
    return safe.isEmpty() ? QStringLiteral("Untitled") : safe;
}

FavouritesTransfer::Result FavouritesTransfer::importFile(const QString& path) const
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {0, 0, QStringLiteral("%1 cannot be read.").arg(path)};
    return importBookmarks(readNetscapeBookmarks(file.readAll(), FavouritesScan::maxDepth));
}

FavouritesTransfer::Result FavouritesTransfer::importBookmarks(const Bookmark& tree) const
{
    Result result;
    if (!QDir().mkpath(root_))
        result.problem = QStringLiteral("The favourites folder %1 could not be made.").arg(root_);
    else
        importFolder(tree, root_, result);
    return result;
}

void FavouritesTransfer::importFolder(const Bookmark& folder, const QString& path,
                                      Result& result) const
{
    QStringList made;
    for (const Bookmark& entry : folder.children) {
        if (!opensHere(entry))
            continue;
        const QString base = fileName(entry.name);
        const QString extension = entry.folder ? QString() : QStringLiteral(".url");
        QString name;
        for (int n = 1; n <= 1000 && name.isEmpty(); ++n) {
            const QString candidate =
                (n == 1 ? base : QStringLiteral("%1 (%2)").arg(base).arg(n)) + extension;
            const QFileInfo there(path + u'/' + candidate);
            if (entry.folder ? (!there.exists() || there.isDir())
                             : (!there.exists() ||
                                (there.isFile() &&
                                 InternetShortcut::address(there.filePath()) == entry.address)))
                name = candidate;
        }
        if (name.isEmpty())
            continue;
        const QString target = path + u'/' + name;
        if (entry.folder) {
            if (!QFileInfo(target).isDir()) {
                if (!QDir().mkdir(target)) {
                    result.problem = QStringLiteral("The folder %1 could not be made.").arg(target);
                    continue;
                }
                ++result.folders;
                made << name;
            }
            importFolder(entry, target, result);
        } else if (!QFileInfo::exists(target)) {
            if (!writeShortcut(path, target, entry.address)) {
                result.problem = QStringLiteral("%1 could not be written.").arg(target);
                continue;
            }
            ++result.favourites;
            made << name;
        }
    }
    // What was there keeps its place; what came in follows, in its order.
    if (!made.isEmpty())
        FolderOrder::placeLast(path, made);
}

static void exportFolder(const FavouritesScan& scan, const std::vector<int>& items, Bookmark& into)
{
    for (int index : items) {
        const FavouriteItem& item = scan.items()[size_t(index)];
        if (item.kind == FavouriteItem::Kind::Folder) {
            Bookmark folder{item.name, {}, true, {}};
            exportFolder(scan, item.children, folder);
            into.children.push_back(std::move(folder));
        } else if (item.kind == FavouriteItem::Kind::Favourite &&
                   item.path.endsWith(QLatin1String(".url"), Qt::CaseInsensitive)) {
            const QString address = InternetShortcut::address(item.path);
            if (!address.isEmpty())
                into.children.push_back({item.name, address, false, {}});
        }
    }
}

QString FavouritesTransfer::exportFile(const FavouritesScan& scan, const QString& path) const
{
    Bookmark root{{}, {}, true, {}};
    exportFolder(scan, scan.topItems(), root);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(writeNetscapeBookmarks(root)) < 0 ||
        !file.commit())
        return QStringLiteral("%1 could not be written.").arg(path);
    return {};
}
