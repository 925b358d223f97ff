#pragma once
// The per-user store that stands in for the system registry: one ini file in
// the user's configuration folder, a registry key per section and a value per
// entry. The program keeps its typed addresses here.
#include "ini/ProfileFile.h"

#include <QString>

namespace platform {

class UserRegistry
{
public:
    // The default is QUB-BROWSER/registry.ini in the user's config folder.
    explicit UserRegistry(QString path = {});

    const QString& path() const { return path_; }
    // The text of a value; empty when the key or value is missing. Like the
    // registry reader it stands in for, at most 1023 characters.
    QString readValue(const QString& keyPath, const QString& valueName) const;
    // Values of one key, all in one atomic write.
    bool writeValues(const QString& keyPath, const ProfileFile::Entries& values) const;

private:
    QString path_;
};

// Where the addresses typed into the address bar are kept: "url1" is the
// newest, "url2" the one before...
inline constexpr QLatin1String typedUrlsKey{"Software\\QUB-BROWSER\\TypedURLs"};
inline constexpr int maxTypedUrls = 25;

// Records an address typed into the address bar as the newest, once.
void recordTypedUrl(const UserRegistry& registry, const QString& address);
// Empties the list of typed addresses.
void forgetTypedUrls(const UserRegistry& registry);

} // namespace platform
