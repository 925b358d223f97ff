#include "FavouritesFolder.h"
#include "platform/ini/ProfileFile.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace {

struct Starter
{
    const char* file;
    const char* address;
};

constexpr Starter starters[] = {
    {"Debian.url", "https://www.debian.org/"},
    {"Qt Documentation.url", "https://doc.qt.io/"},
    {"Wikipedia.url", "https://www.wikipedia.org/"},
    {"Links/DuckDuckGo.url", "https://duckduckgo.com/"},
};

} // namespace

FavouritesFolder::FavouritesFolder(QString root) : root_(std::move(root))
{
    if (!root_.endsWith(u'/'))
        root_ += u'/';
}

QString FavouritesFolder::userRoot()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) +
           QStringLiteral("/QUB-BROWSER/Favorites/");
}

bool FavouritesFolder::ensure() const
{
    if (QFileInfo(root_).isDir())
        return true;
    if (!QDir().mkpath(root_ + QStringLiteral("Links")))
        return false;
    for (const Starter& starter : starters)
        platform::ProfileFile(root_ + QString::fromUtf8(starter.file))
            .writeString(QStringLiteral("InternetShortcut"), QStringLiteral("URL"),
                         QString::fromUtf8(starter.address));
    return true;
}
