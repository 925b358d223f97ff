#include "UserRegistry.h"
#include "PrivateFiles.h"
#include "ini/ProfileFile.h"

#include <QFileInfo>
#include <QStandardPaths>
#include <QStringList>

namespace platform {

UserRegistry::UserRegistry(QString path) : path_(std::move(path))
{
    if (path_.isEmpty())
        path_ = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) +
                QStringLiteral("/QUB-BROWSER/registry.ini");
}

QString UserRegistry::readValue(const QString& keyPath, const QString& valueName) const
{
    return ProfileFile(path_).readString(keyPath, valueName).left(1023);
}

bool UserRegistry::writeValues(const QString& keyPath, const ProfileFile::Entries& values) const
{
    makePrivateFolder(QFileInfo(path_).absolutePath());
    return ProfileFile(path_).writeStrings(keyPath, values);
}

void recordTypedUrl(const UserRegistry& registry, const QString& address)
{
    if (address.isEmpty())
        return;
    QStringList urls{address};
    for (int n = 1; n <= maxTypedUrls; ++n) {
        const QString url = registry.readValue(typedUrlsKey, QStringLiteral("url%1").arg(n));
        if (url.isEmpty())
            break;
        if (url != address)
            urls << url;
    }
    // One write for the whole list: cut short, it is the old list or the new.
    ProfileFile::Entries values;
    for (int n = 1; n <= maxTypedUrls; ++n) {
        const QString name = QStringLiteral("url%1").arg(n);
        if (n <= urls.size())
            values.append({name, urls[n - 1]});
        // An entry left behind a gap would show again once the gap is filled.
        else if (!registry.readValue(typedUrlsKey, name).isEmpty())
            values.append({name, QString()});
    }
    registry.writeValues(typedUrlsKey, values);
}

void forgetTypedUrls(const UserRegistry& registry)
{
    ProfileFile::Entries values;
    for (int n = 0;; ++n) {
        const QString name = QStringLiteral("url%1").arg(n);
        if (!registry.readValue(typedUrlsKey, name).isEmpty())
            values.append({name, QString()});
        else if (n > 0)
            break;
    }
    if (!values.isEmpty())
        registry.writeValues(typedUrlsKey, values);
}

} // namespace platform
