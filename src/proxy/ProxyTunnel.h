#pragma once
// One client connection of the forwarding proxy, in the proxy's thread. It
// reads a request head, refuses a client without the run's credentials, and
// takes the request where the routing says: straight to the host, through an
// HTTP proxy, or through a SOCKS5 proxy. CONNECT becomes a byte tunnel. Plain
// requests follow one another on the engine's connection, and straight to a
// host on the site's connection, as the engine's own connections would: each
// answer is passed on framed as the proxy read it (see ResponseBody), a site's
// connection serves only the host it was opened for, and a site that sends
// more than its answer loses its connection, so no late byte of one site can
// pass for the answer to another's request. Straight to a host, a
// name is looked up here and refused when it leads back to this computer:
// the engine sends its own loopback addresses past the proxy, so one that
// arrives is an alias or a rebound name (unless the user listed the name). When the route changes,
// a request still waiting for its route to answer is sent the new way; one already out gets its
// answer the way it went, and nothing more goes out that way.
#include "ProxyRouting.h"
#include "ResponseBody.h"
#include "Socks5Handshake.h"

#include <QByteArray>
#include <QHostAddress>
#include <QObject>
#include <QTimer>

#include <functional>

class QHostInfo;
class QTcpSocket;

namespace proxy {

class ProxyTunnel : public QObject
{
    Q_OBJECT
public:
    // Called, in the proxy's thread, when an upstream proxy wants a name and
    // password it was not given: its host, port and what it calls itself.
    using SignInNeeded = std::function<void(const QString&, quint16, const QString&)>;

    // A client has headTimeoutMs to send its first request head; after that
    // a site or upstream proxy has timeoutMs to answer.
    ProxyTunnel(QTcpSocket* client, const ProxyRouting& routing, QByteArray credentials,
                int timeoutMs, int headTimeoutMs, SignInNeeded signInNeeded, QObject* parent);

    // The routing changed: see the class comment.
    void routeChanged();
    // Whether no request with the run's secret has come yet.
    bool waitingForFirstRequest() const { return !authorised_ && state_ == State::Head; }
    void close();

signals:
    void finished();

private:
    enum class State { Head, Connecting, UpstreamReply, Socks, Pipe, Closing };

    void readClient();
    void readHead();
    bool rerouted();
    // Sends the request of head_ where the routing says now.
    void startRequest();
    // Connects to where the route of the request leads.
    void connectRoute();
    // The site's connection kept from the last answer, when it can carry
    // this request.
    bool reusedUpstream();
    void dropUpstream();
    // Whether the request went out on a kept connection, without a body, and
    // no byte of its answer has come: it may go again on a new one.
    bool mayResend() const { return reused_ && !answerStarted_ && !sent_.isEmpty(); }
    // The answer has passed whole: the connection waits for the next request.
    void answered();
    void lookedUp(const QHostInfo& info);
    void connectUpstream(const QString& host, quint16 port);
    void connectNextAddress();
    void upstreamConnected();
    void readUpstream();
    void readUpstreamReply();
    // A plain request's answer: each head is passed on saying the connection
    // closes after it.
    void readResponse();
    // What came from upstream, on to the client.
    void passUpstream();
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
    int timeoutMs_;
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
    std::optional<Socks5Handshake> socks_;
    // Bytes of the request body still to pass before a next request may
    // begin; -1 when the body's end is the connection's end.
    qint64 bodyLeft_ = 0;
    bool finished_ = false;
    // Whether a plain request's final answer head has passed, and the body
    // that follows it.
    bool responseHeadPassed_ = false;
    ResponseBody body_;
    QByteArray method_;
    // Whether the engine's connection may carry another request after this
    // answer, and the site's connection too.
    bool keepAlive_ = false;
    bool upstreamReusable_ = false;
    // The host, port and routing generation the site's connection was opened
    // for; whether this request went out on one kept from an earlier answer,
    // what it sent, and whether any byte of its answer has come.
    QString upstreamHost_;
    quint16 upstreamPort_ = 0;
    quint64 upstreamGeneration_ = 0;
    bool reused_ = false;
    QByteArray sent_;
    bool answerStarted_ = false;
    bool authorised_ = false;
    // The addresses a direct host's name led to, tried in turn; the lookup
    // whose answer is awaited.
    QList<QHostAddress> addresses_;
    int lookupId_ = -1;
};

} // namespace proxy
