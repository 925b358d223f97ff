#include "Shell.h"

#include <QDesktopServices>
#include <QUrl>

namespace platform {

bool DesktopShell::open(const QString& address)
{
    // Tolerant: a mailto: text is built unescaped and may hold spaces.
    return QDesktopServices::openUrl(QUrl(address, QUrl::TolerantMode));
}

} // namespace platform
