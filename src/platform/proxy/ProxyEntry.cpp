#include "ProxyEntry.h"

#include <QUrl>

namespace platform {

std::optional<ProxyEntry> ProxyEntry::parse(const QString& text)
{
    QString line = text.trimmed();
    if (line.isEmpty())
        return std::nullopt;
    if (!line.contains(QLatin1String("://")))
        line.prepend(QLatin1String("http://"));
    const QUrl url(line, QUrl::StrictMode);
    ProxyEntry entry;
    const QString scheme = url.scheme().toLower();
    if (scheme == QLatin1String("socks5"))
        entry.kind = Kind::Socks5;
    else if (scheme != QLatin1String("http"))
        return std::nullopt;
    const int port = url.port();
    if (!url.isValid() || url.host().isEmpty() || port <= 0 ||
        (!url.path().isEmpty() && url.path() != QLatin1String("/")))
        return std::nullopt;
    entry.host = url.host();
    entry.port = quint16(port);
    entry.user = url.userName();
    entry.password = url.password();
    return entry;
}

} // namespace platform
