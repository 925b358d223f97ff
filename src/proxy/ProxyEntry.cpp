#include "ProxyEntry.h"

#include <QUrl>

namespace proxy {

std::optional<ProxyEntry> ProxyEntry::parse(const QString& text, QString* problem)
{
    const auto refuse = [problem](const char* why) {
        if (problem)
            *problem = QString::fromLatin1(why);
        return std::nullopt;
    };
    QString line = text.trimmed();
    if (line.isEmpty())
        return refuse("it is empty");
    if (!line.contains(QLatin1String("://")))
        line.prepend(QLatin1String("http://"));
    const QUrl url(line, QUrl::StrictMode);
    ProxyEntry entry;
    const QString scheme = line.section(QLatin1String("://"), 0, 0).toLower();
    if (scheme == QLatin1String("socks5"))
        entry.kind = Kind::Socks5;
    else if (scheme != QLatin1String("http"))
        return refuse("only http:// and socks5:// proxies work");
    // The port is looked at before the whole address: an address with a port
    // out of range is not an address at all.
    const QString authority = line.section(QLatin1String("://"), 1)
                                  .section(QLatin1Char('/'), 0, 0)
                                  .section(QLatin1Char('@'), -1);
    const qsizetype colon = authority.lastIndexOf(QLatin1Char(':'));
    if (colon < 0 || colon < authority.lastIndexOf(QLatin1Char(']')))
        return refuse("it names no port");
    bool number = false;
    const uint port = QStringView(authority).mid(colon + 1).toUInt(&number);
    if (!number || port == 0 || port > 65535)
        return refuse("its port is not a number from 1 to 65535");
    if (!url.isValid() || url.host().isEmpty())
        return refuse("it names no host");
    if (!url.path().isEmpty() && url.path() != QLatin1String("/"))
        return refuse("a proxy has no path");
    entry.host = url.host();
    entry.port = quint16(port);
    entry.user = url.userName();
    entry.password = url.password();
    return entry;
}

} // namespace proxy
