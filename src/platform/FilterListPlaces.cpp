#include "FilterListPlaces.h"

#include <QFileInfo>
#include <QStandardPaths>

namespace platform {

QStringList systemFilterLists()
{
    const QString folder = QStringLiteral(
        "/usr/share/chromium/extensions/ublock-origin/assets/thirdparties/easylist/");
    QStringList found;
    for (const QString& name : {QStringLiteral("easylist.txt"), QStringLiteral("easyprivacy.txt")})
        if (QFileInfo(folder + name).isReadable())
            found << folder + name;
    return found;
}

QString filterCacheFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::CacheLocation) +
           QStringLiteral("/filters.bin");
}

} // namespace platform
