#include "ProgramFolder.h"
#include "AppDir.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

namespace platform {

namespace {

QString withSlash(QString folder)
{
    if (!folder.isEmpty() && !folder.endsWith(QLatin1Char('/')))
        folder += QLatin1Char('/');
    return folder;
}

} // namespace

ProgramFolder::ProgramFolder(const QString& folder)
    : shipped_(withSlash(folder)), own_(shipped_), helpers_(shipped_)
{
}

ProgramFolder::ProgramFolder(const QString& shipped, const QString& own, const QString& helpers)
    : shipped_(withSlash(shipped)), own_(withSlash(own)), helpers_(withSlash(helpers))
{
}

ProgramFolder ProgramFolder::ofThisProgram()
{
    const QString beside = appDir();
    if (!qEnvironmentVariableIsEmpty("QUB_APPDIR") ||
        QFileInfo::exists(beside + QStringLiteral("default.tb2")))
        return ProgramFolder(beside);
    // Installed: bin/ beside share/ and libexec/ under one prefix, wherever
    // that prefix is.
    const QDir bin(QCoreApplication::applicationDirPath());
    return {QDir::cleanPath(bin.filePath(QStringLiteral(QUB_SHIPPED_FROM_BIN))),
            QStandardPaths::writableLocation(QStandardPaths::AppDataLocation),
            QDir::cleanPath(bin.filePath(QStringLiteral(QUB_HELPERS_FROM_BIN)))};
}

QString ProgramFolder::read(const QString& name) const
{
    const QString mine = own_ + name;
    return own_ == shipped_ || QFileInfo::exists(mine) ? mine : shipped_ + name;
}

QStringList ProgramFolder::names(const QStringList& filters) const
{
    QStringList found = QDir(shipped_).entryList(filters, QDir::Files);
    if (own_ != shipped_)
        found += QDir(own_).entryList(filters, QDir::Files);
    found.sort();
    found.removeDuplicates();
    return found;
}

bool ProgramFolder::makeOwn() const
{
    if (QFileInfo::exists(own_))
        return true;
    return QDir().mkpath(own_) &&
           QFile::setPermissions(own_, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

} // namespace platform
