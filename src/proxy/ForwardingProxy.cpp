#include "ForwardingProxy.h"
#include "ProxyTunnel.h"

#include <QPointer>
#include <QRandomGenerator>
#include <QTcpServer>
#include <QTcpSocket>

#include <deque>

namespace proxy {

class ProxyServer : public QTcpServer
{
public:
    ProxyServer(const ProxyRouting& routing, QByteArray credentials, int timeoutMs,
                std::atomic<int>& open, ProxyTunnel::SignInNeeded signInNeeded)
        : routing_(routing), credentials_(std::move(credentials)), timeoutMs_(timeoutMs),
          headTimeoutMs_(std::min(timeoutMs, ForwardingProxy::headTimeoutMs)), open_(open),
          signInNeeded_(std::move(signInNeeded))
    {
    }

    void routeChanged()
    {
        for (ProxyTunnel* tunnel : findChildren<ProxyTunnel*>(Qt::FindDirectChildrenOnly))
            tunnel->routeChanged();
    }

protected:
    void incomingConnection(qintptr descriptor) override
    {
        auto* client = new QTcpSocket;
        if (!client->setSocketDescriptor(descriptor)) {
            delete client;
            return;
        }
        ++open_;
        auto* tunnel = new ProxyTunnel(client, routing_, credentials_, timeoutMs_, headTimeoutMs_,
                                       signInNeeded_, this);
        connect(tunnel, &ProxyTunnel::finished, this, [this] { --open_; });
        keepFewWaiting(tunnel);
    }

private:
    // Anyone on this computer may connect; only the program has the secret.
    // The longest waiting of too many connections that have not yet shown it
    // goes, so a flood of them costs the program little and the engine's own,
    // which ask at once, get through.
    void keepFewWaiting(ProxyTunnel* newest)
    {
        std::erase_if(waiting_, [](const QPointer<ProxyTunnel>& tunnel) {
            return !tunnel || !tunnel->waitingForFirstRequest();
        });
        while (waiting_.size() >= ForwardingProxy::maxWaiting) {
            if (waiting_.front())
                waiting_.front()->close();
            waiting_.pop_front();
        }
        waiting_.emplace_back(newest);
    }

    const ProxyRouting& routing_;
    QByteArray credentials_;
    int timeoutMs_;
    int headTimeoutMs_;
    std::deque<QPointer<ProxyTunnel>> waiting_;
    std::atomic<int>& open_;
    ProxyTunnel::SignInNeeded signInNeeded_;
};

namespace {
QString newSecret()
{
    QByteArray bytes(24, Qt::Uninitialized);
    QRandomGenerator::system()->fillRange(reinterpret_cast<quint32*>(bytes.data()),
                                          bytes.size() / 4);
    return QString::fromLatin1(bytes.toBase64(QByteArray::Base64UrlEncoding));
}
} // namespace

ForwardingProxy::ForwardingProxy(int timeoutMs) : secret_(newSecret())
{
    const QByteArray credentials =
        "Basic " + (user() + QLatin1Char(':') + secret_).toUtf8().toBase64();
    // Emitted from the proxy's thread; receivers get it in their own.
    server_ = new ProxyServer(routing_, credentials, timeoutMs, open_,
                              [this](const QString& host, quint16 port, const QString& realm) {
                                  emit signInNeeded(host, port, realm);
                              });
    thread_.setObjectName(QStringLiteral("Forwarding proxy"));
    server_->moveToThread(&thread_);
    thread_.start();
    QMetaObject::invokeMethod(
        server_,
        [this] {
            // A page opens many connections at once; none should wait for a
            // second try of its connect.
            server_->setListenBacklogSize(1024);
            server_->listen(QHostAddress::LocalHost, 0);
            port_ = server_->serverPort();
        },
        Qt::BlockingQueuedConnection);
}

ForwardingProxy::~ForwardingProxy()
{
    QMetaObject::invokeMethod(
        server_, [this] { delete server_; }, Qt::BlockingQueuedConnection);
    thread_.quit();
    thread_.wait();
}

void ForwardingProxy::setUpstream(const QString& entry)
{
    routing_.setUpstream(ProxyEntry::parse(entry));
    routeChanged();
}

void ForwardingProxy::setBypass(const QStringList& hosts)
{
    routing_.setBypass(hosts);
    routeChanged();
}

void ForwardingProxy::routeChanged()
{
    QMetaObject::invokeMethod(server_, [server = server_] { server->routeChanged(); });
}

} // namespace proxy
