#pragma once
// Where a request for a host goes: straight to it, or through the upstream
// proxy in force unless the host is on the bypass list. Shared by the
// program's thread, which changes it, and the proxy's thread, which reads it;
// every change starts a new generation, and a connection opened under an
// older one sends nothing more out.
#include "HostRules.h"
#include "ProxyEntry.h"

#include <QMutex>
#include <QStringList>

namespace proxy {

class ProxyRouting
{
public:
    struct Route
    {
        std::optional<ProxyEntry> upstream; // nullopt: connect directly
        quint64 generation = 0;
    };

    void setUpstream(std::optional<ProxyEntry> upstream);
    // The name and password the user gave for the upstream proxy at host:port;
    // kept while that proxy is in force.
    void setUpstreamLogin(const QString& host, quint16 port, const QString& user,
                          const QString& password);
    void setBypass(const QStringList& hosts);
    void setHostRules(HostRules rules);
    Route routeFor(const QString& host) const;
    quint64 generation() const;
    QString connectHost(const QString& host) const;
    // Whether host is on the user's list of hosts reached straight.
    bool listedStraight(const QString& host) const;

    // A bypass entry matches its host and every host below it.
    static bool bypassed(const QStringList& hosts, const QString& host);

private:
    mutable QMutex mutex_;
    std::optional<ProxyEntry> upstream_;
    QStringList bypass_;
    HostRules hostRules_;
    quint64 generation_ = 0;
};

} // namespace proxy
