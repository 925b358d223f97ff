#pragma once
// One client connection of the forwarding proxy, in the proxy's thread. It
// reads a request head, refuses a client without the run's credentials, and
// takes the request where the routing says: straight to the host, through an
// HTTP proxy, or through a SOCKS5 proxy. CONNECT becomes a byte tunnel; a
// plain request goes out with "Connection: close", and the next request on
// the same client connection is routed afresh. When the route changes, a
// request still waiting for its route to answer is sent the new way; one
// already out gets its answer the way it went, and nothing more goes out
// that way.
#include "ProxyRouting.h"

#include <QByteArray>
#include <QObject>
#include <QTimer>

#include <functional>

class QTcpSocket;

namespace proxy {

class ProxyTunnel : public QObject
{
    Q_OBJECT
public:
    // Called, in the proxy's thread, when an upstream proxy wants a name and
    // password it was not given: its host, port and what it calls itself.
    using SignInNeeded = std::function<void(const QString&, quint16, const QString&)>;

    ProxyTunnel(QTcpSocket* client, const ProxyRouting& routing, QByteArray credentials,
                int timeoutMs, SignInNeeded signInNeeded, QObject* parent);

    // The routing changed: see the class comment.
    void routeChanged();
    void close();

signals:
    void finished();

private:
    enum class State {
        Head,
        Connecting,
        UpstreamReply,
        SocksGreeting,
        SocksAuth,
        SocksReply,
        Pipe,
        Closing
    };

    void readClient();
    void readHead();
    bool rerouted();
    // Sends the request of head_ where the routing says now.
    void startRequest();
    void upstreamConnected();
    void readUpstream();
    void readUpstreamReply();
    void readSocks();
    void reached();
    void pipeClient();
    void reply(int status, const QByteArray& reason, const QByteArray& extraHeaders = {});
    // An upstream refused us for want of a sign-in: the user is asked, the
    // page says so.
    void refusedForSignIn(const QByteArray& responseHead);
    void checkClosed();

    QTcpSocket* client_;
    QTcpSocket* upstream_ = nullptr;
    const ProxyRouting& routing_;
    QByteArray credentials_;
    SignInNeeded signInNeeded_;
    QTimer timeout_;
    State state_ = State::Head;
    // The routing generation the request was sent under.
    quint64 generation_ = 0;

    QByteArray head_;
    QByteArray clientBuffer_;
    QByteArray upstreamBuffer_;
    // What goes out once the host is reached: the rewritten request head.
    QByteArray outgoing_;
    bool tunnel_ = false;
    QString host_;
    quint16 port_ = 0;
    std::optional<ProxyEntry> upstreamProxy_;
    // Bytes of the request body still to pass before a next request may
    // begin; -1 when the body's end is the connection's end.
    qint64 bodyLeft_ = 0;
    bool finished_ = false;
    // Whether the status of a plain request's response through an HTTP
    // upstream has been looked at.
    bool responseChecked_ = false;
};

} // namespace proxy
