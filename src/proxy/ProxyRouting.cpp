#include "ProxyRouting.h"

namespace proxy {

void ProxyRouting::setUpstream(std::optional<ProxyEntry> upstream)
{
    QMutexLocker lock(&mutex_);
    upstream_ = std::move(upstream);
    ++generation_;
}

void ProxyRouting::setUpstreamLogin(const QString& host, quint16 port, const QString& user,
                                    const QString& password)
{
    QMutexLocker lock(&mutex_);
    if (upstream_ && upstream_->host == host && upstream_->port == port) {
        upstream_->user = user;
        upstream_->password = password;
    }
}

void ProxyRouting::setBypass(const QStringList& hosts)
{
    QMutexLocker lock(&mutex_);
    bypass_ = hosts;
    ++generation_;
}

void ProxyRouting::setHostRules(HostRules rules)
{
    QMutexLocker lock(&mutex_);
    hostRules_ = std::move(rules);
}

ProxyRouting::Route ProxyRouting::routeFor(const QString& host) const
{
    QMutexLocker lock(&mutex_);
    if (!upstream_ || bypassed(bypass_, host))
        return {std::nullopt, generation_};
    return {upstream_, generation_};
}

quint64 ProxyRouting::generation() const
{
    QMutexLocker lock(&mutex_);
    return generation_;
}

QString ProxyRouting::connectHost(const QString& host) const
{
    QMutexLocker lock(&mutex_);
    return hostRules_.map(host);
}

bool ProxyRouting::listedStraight(const QString& host) const
{
    QMutexLocker lock(&mutex_);
    return bypassed(bypass_, host);
}

bool ProxyRouting::bypassed(const QStringList& hosts, const QString& host)
{
    for (QString entry : hosts) {
        entry = entry.trimmed().toLower();
        if (entry.startsWith(QLatin1String("*.")))
            entry = entry.mid(2);
        else if (entry.startsWith(QLatin1Char('.')))
            entry = entry.mid(1);
        if (entry.isEmpty())
            continue;
        const QString name = host.toLower();
        if (name == entry || name.endsWith(QLatin1Char('.') + entry))
            return true;
    }
    return false;
}

} // namespace proxy
