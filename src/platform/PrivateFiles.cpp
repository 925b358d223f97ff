#include "PrivateFiles.h"

#include <QDir>
#include <QFileDevice>
#include <QFileInfo>

namespace platform {

namespace {

constexpr QFileDevice::Permissions ownerFile = QFileDevice::ReadOwner | QFileDevice::WriteOwner;

} // namespace

bool makePrivateFolder(const QString& path)
{
    return QDir().mkpath(path) && QFile::setPermissions(path, ownerFile | QFileDevice::ExeOwner);
}

bool makePrivate(const QString& path)
{
    return QFile::setPermissions(path, ownerFile);
}

bool openPrivate(QFileDevice& file, QIODevice::OpenMode mode)
{
    if (QFileInfo(file.fileName()).isSymLink() || !file.open(mode))
        return false;
    if (file.setPermissions(ownerFile))
        return true;
    file.close();
    return false;
}

} // namespace platform
