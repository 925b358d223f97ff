#include "AppDir.h"

#include <QCoreApplication>

namespace platform {

QString appDir()
{
    QString dir = qEnvironmentVariable("QUB_APPDIR");
    if (dir.isEmpty())
        dir = QCoreApplication::applicationDirPath();
    if (!dir.endsWith(QLatin1Char('/')))
        dir += QLatin1Char('/');
    return dir;
}

} // namespace platform
