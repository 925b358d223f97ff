#include "InternetShortcut.h"
#include "platform/ini/ProfileFile.h"

namespace InternetShortcut {

QString address(const QString& path)
{
    return platform::ProfileFile(path).readString(QStringLiteral("InternetShortcut"),
                                                  QStringLiteral("URL"));
}

} // namespace InternetShortcut
