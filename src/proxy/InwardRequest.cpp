#include "InwardRequest.h"

namespace proxy {

bool isThisComputer(const QHostAddress& address)
{
    bool v4 = false;
    const quint32 ip4 = address.toIPv4Address(&v4);
    if (v4)
        return (ip4 >> 24) == 127 || (ip4 >> 24) == 0 || (ip4 >> 16) == 0xa9fe;
    return address.isLoopback() || address.isLinkLocal() || address == QHostAddress::AnyIPv6;
}

bool isInwardHost(const QString& name)
{
    QString host = name.toLower();
    if (host.startsWith(u'[') && host.endsWith(u']'))
        host = host.mid(1, host.size() - 2);
    QHostAddress address;
    if (address.setAddress(host)) {
        if (isThisComputer(address))
            return true;
        bool v4 = false;
        const quint32 ip = address.toIPv4Address(&v4);
        if (v4)
            return (ip >> 24) == 10 || (ip >> 20) == 0xac1 || (ip >> 16) == 0xc0a8 ||
                   (ip >> 22) == (100u << 2 | 1u); // 100.64.0.0/10, shared address space
        return address.isUniqueLocalUnicast();
    }
    static const QStringList localSuffixes = {
        QStringLiteral(".localhost"), QStringLiteral(".local"),     QStringLiteral(".lan"),
        QStringLiteral(".internal"),  QStringLiteral(".home.arpa"), QStringLiteral(".intranet")};
    if (host == QLatin1String("localhost") || !host.contains(u'.'))
        return true;
    for (const QString& suffix : localSuffixes)
        if (host.endsWith(suffix))
            return true;
    return false;
}

bool reachesInward(const QUrl& initiator, const QUrl& target)
{
    const auto web = [](const QUrl& url) {
        return (url.scheme() == QLatin1String("http") || url.scheme() == QLatin1String("https") ||
                url.scheme() == QLatin1String("ws") || url.scheme() == QLatin1String("wss")) &&
               !url.host().isEmpty();
    };
    return web(initiator) && web(target) && !isInwardHost(initiator.host()) &&
           isInwardHost(target.host());
}

} // namespace proxy
