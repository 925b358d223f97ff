#include "Shell.h"
#include "DesktopEntry.h"

#include <QDesktopServices>
#include <QProcess>
#include <QUrl>

namespace platform {

bool DesktopShell::open(const QString& address)
{
    // Tolerant: a mailto: text is built unescaped and may hold spaces.
    return QDesktopServices::openUrl(QUrl(address, QUrl::TolerantMode));
}

bool DesktopShell::openAddressBook()
{
    QStringList command = installedApplication(QStringLiteral("ContactManagement")).command;
    if (command.isEmpty())
        return false;
    const QString program = command.takeFirst();
    return start(program, command);
}

bool DesktopShell::start(const QString& program, const QStringList& arguments)
{
    return QProcess::startDetached(program, arguments);
}

} // namespace platform
