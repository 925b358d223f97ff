#include "IconTheme.h"

#include <QDir>
#include <QIcon>

namespace platform {

void chooseIconTheme()
{
    const QString current = QIcon::themeName();
    if (!current.isEmpty() && current != QLatin1String("hicolor"))
        return;
    for (const QString& theme : {QStringLiteral("Adwaita"), QStringLiteral("breeze")})
        if (QDir(QStringLiteral("/usr/share/icons/") + theme).exists()) {
            QIcon::setThemeName(theme);
            return;
        }
}

} // namespace platform
