#pragma once
// The program's own proxy: a server on the loopback address, in a thread of
// its own, through which the engine sends every request. Only a client that
// presents this run's secret is served. Choosing another upstream or bypass
// list takes effect for the next request of every view: a request still
// waiting for its old route to answer is sent the new way, one already sent
// is answered the way it went (a page loading at the switch comes in), and
// nothing more goes out the old way.
#include "ProxyRouting.h"

#include <QObject>
#include <QThread>

#include <atomic>

namespace proxy {

class ProxyServer;

class ForwardingProxy : public QObject
{
    Q_OBJECT
public:
    // How many connections may wait at once for their first request, and how
    // long each may wait.
    static constexpr std::size_t maxWaiting = 256;
    static constexpr int headTimeoutMs = 5000;

    // timeoutMs: how long a site or upstream proxy may take to answer (and a
    // first request to come, when shorter than headTimeoutMs).
    explicit ForwardingProxy(int timeoutMs = 30000);
    ~ForwardingProxy();

    quint16 port() const { return port_; }
    static QString user() { return QStringLiteral("qub"); }
    const QString& secret() const { return secret_; }

    // "" or an entry that names no proxy: straight to the sites.
    void setUpstream(const QString& entry);
    void setBypass(const QStringList& hosts);
    void setHostRules(HostRules rules) { routing_.setHostRules(std::move(rules)); }
    int openConnections() const { return open_; }
    // A name and password for the upstream proxy at host:port, from now on.
    void setUpstreamLogin(const QString& host, quint16 port, const QString& user,
                          const QString& password)
    {
        routing_.setUpstreamLogin(host, port, user, password);
    }

signals:
    // The upstream proxy at host:port wants a name and password it was not
    // given; the request that met it was answered with a page that says so.
    void signInNeeded(const QString& host, quint16 port, const QString& realm);

private:
    void routeChanged();

    QString secret_;
    ProxyRouting routing_;
    QThread thread_;
    ProxyServer* server_;
    quint16 port_ = 0;
    std::atomic<int> open_ = 0;
};

} // namespace proxy
