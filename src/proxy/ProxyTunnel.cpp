#include "ProxyTunnel.h"
#include "HttpHead.h"
#include "InwardRequest.h"
#include "RequestHead.h"

#include <QHostInfo>
#include <QNetworkProxy>
#include <QTcpSocket>

namespace proxy {

using namespace httphead;

ProxyTunnel::ProxyTunnel(QTcpSocket* client, const ProxyRouting& routing, QByteArray credentials,
                         int timeoutMs, int headTimeoutMs, SignInNeeded signInNeeded,
                         QObject* parent)
    : QObject(parent), client_(client), routing_(routing), credentials_(std::move(credentials)),
      signInNeeded_(std::move(signInNeeded)), timeoutMs_(timeoutMs)
{
    client_->setParent(this);
    // Heads and small answers go out at once, not held for an acknowledgement.
    client_->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    timeout_.setSingleShot(true);
    timeout_.setInterval(headTimeoutMs);
    connect(&timeout_, &QTimer::timeout, this, [this] {
        if (state_ == State::Head)
            close();
        else
            reply(504, "The proxy or the site did not answer in time.");
    });
    connect(client_, &QTcpSocket::readyRead, this, &ProxyTunnel::readClient);
    connect(client_, &QTcpSocket::disconnected, this, &ProxyTunnel::close);
    timeout_.start();
}

void ProxyTunnel::readClient()
{
    clientBuffer_ += client_->readAll();
    if (state_ == State::Head)
        readHead();
    else if (state_ == State::Pipe)
        pipeClient();
}

void ProxyTunnel::readHead()
{
    if (std::optional<QByteArray> head = takeHead(clientBuffer_)) {
        head_ = std::move(*head);
        startRequest();
    } else if (clientBuffer_.size() > maxHead) {
        reply(431, "The request head is too long.");
    }
}

void ProxyTunnel::routeChanged()
{
    switch (state_) {
    case State::Connecting:
    case State::UpstreamReply:
    case State::Socks:
        rerouted();
        break;
    case State::Head:
    case State::Pipe:
    case State::Closing:
        break;
    }
}

// Nothing of the request has gone out yet, so it may still take the route in
// force when that changed meanwhile.
bool ProxyTunnel::rerouted()
{
    if (generation_ == routing_.generation())
        return false;
    startRequest();
    return true;
}

void ProxyTunnel::startRequest()
{
    const RequestHead request = RequestHead::parse(head_, credentials_);
    if (request.malformed) {
        reply(400, "This is not an HTTP request.");
        return;
    }
    if (!request.authorised) {
        reply(407, "This proxy serves QUB-BROWSER only.",
              "Proxy-Authenticate: Basic realm=\"QUB-BROWSER\"\r\n");
        return;
    }
    if (!authorised_) {
        authorised_ = true;
        timeout_.setInterval(timeoutMs_);
    }
    if (!request.problem.isEmpty()) {
        reply(400, request.problem);
        return;
    }
    bodyLeft_ = request.bodyLength;
    responseHeadPassed_ = false;
    answerStarted_ = false;
    addresses_.clear();
    lookupId_ = -1;
    method_ = request.method;
    // A body whose end is the connection's end leaves nothing after it.
    keepAlive_ = !request.closes && bodyLeft_ >= 0;
    tunnel_ = request.tunnel;
    host_ = request.host;
    port_ = request.port;
    const QByteArray& target = request.target;

    const ProxyRouting::Route route = routing_.routeFor(host_);
    generation_ = route.generation;
    upstreamProxy_ = route.upstream;
    const bool viaHttp = upstreamProxy_ && upstreamProxy_->kind == ProxyEntry::Kind::Http;
    if (tunnel_) {
        outgoing_.clear();
        if (viaHttp) {
            outgoing_ = "CONNECT " + target + " HTTP/1.1\r\nHost: " + target + "\r\n";
            if (!upstreamProxy_->user.isEmpty())
                outgoing_ += "Proxy-Authorization: " +
                             basicAuthorization(upstreamProxy_->user, upstreamProxy_->password) +
                             "\r\n";
            outgoing_ += "\r\n";
        }
    } else {
        outgoing_ = request.method + ' ' + (viaHttp ? target : request.originTarget) + ' ' +
                    request.version + "\r\n" + request.headers;
        if (viaHttp && !upstreamProxy_->user.isEmpty())
            outgoing_ += "Proxy-Authorization: " +
                         basicAuthorization(upstreamProxy_->user, upstreamProxy_->password) +
                         "\r\n";
        // A site's connection is kept only when reached straight.
        outgoing_ += keepAlive_ && !upstreamProxy_ ? "\r\n" : "Connection: close\r\n\r\n";
    }
    sent_ = bodyLeft_ == 0 ? outgoing_ : QByteArray();

    state_ = State::Connecting;
    if (reusedUpstream())
        return;
    timeout_.start();
    connectRoute();
}

bool ProxyTunnel::reusedUpstream()
{
    reused_ = !tunnel_ && !upstreamProxy_ && upstream_ &&
              upstream_->state() == QAbstractSocket::ConnectedState && upstreamBuffer_.isEmpty() &&
              upstreamHost_ == host_ && upstreamPort_ == port_ &&
              upstreamGeneration_ == generation_;
    if (reused_)
        reached();
    return reused_;
}

void ProxyTunnel::dropUpstream()
{
    if (!upstream_)
        return;
    upstream_->disconnect(this);
    upstream_->abort();
    upstream_->deleteLater();
    upstream_ = nullptr;
    upstreamBuffer_.clear();
}

void ProxyTunnel::connectRoute()
{
    dropUpstream();
    upstreamHost_ = host_;
    upstreamPort_ = port_;
    upstreamGeneration_ = generation_;
    if (upstreamProxy_) {
        connectUpstream(upstreamProxy_->host, upstreamProxy_->port);
        return;
    }
    // A host the user's own resolver rules name goes where they say, and one
    // the user listed to be reached straight may be on this computer.
    const QString mapped = routing_.connectHost(host_);
    if (mapped != host_ || routing_.listedStraight(host_)) {
        connectUpstream(mapped, port_);
        return;
    }
    lookupId_ = QHostInfo::lookupHost(host_, this, &ProxyTunnel::lookedUp);
}

void ProxyTunnel::lookedUp(const QHostInfo& info)
{
    if (info.lookupId() != lookupId_ || state_ != State::Connecting)
        return;
    lookupId_ = -1;
    if (info.error() != QHostInfo::NoError || info.addresses().isEmpty()) {
        reply(502, "Cannot find " + host_.toUtf8() + ": " + info.errorString().toUtf8());
        return;
    }
    for (const QHostAddress& address : info.addresses())
        if (isThisComputer(address)) {
            reply(403, host_.toUtf8() + " leads to this computer (" + address.toString().toUtf8() +
                           "); this proxy takes no page there.");
            return;
        }
    // The addresses checked are the ones connected to: a name that changes
    // its answer meanwhile is not asked again.
    addresses_ = info.addresses();
    connectNextAddress();
}

void ProxyTunnel::connectNextAddress()
{
    if (state_ != State::Connecting || addresses_.isEmpty() ||
        (upstream_ && upstream_->state() != QAbstractSocket::UnconnectedState))
        return;
    connectUpstream(addresses_.takeFirst().toString(), port_);
}

void ProxyTunnel::connectUpstream(const QString& host, quint16 port)
{
    if (upstream_) {
        upstream_->disconnect(this);
        upstream_->abort();
        upstream_->deleteLater();
    }
    upstreamBuffer_.clear();
    upstream_ = new QTcpSocket(this);
    upstream_->setProxy(QNetworkProxy::NoProxy);
    connect(upstream_, &QTcpSocket::connected, this, &ProxyTunnel::upstreamConnected);
    connect(upstream_, &QTcpSocket::readyRead, this, &ProxyTunnel::readUpstream);
    connect(upstream_, &QTcpSocket::errorOccurred, this, [this] {
        if (state_ == State::Head) {
            // A kept connection the site closed while no request was on it.
            dropUpstream();
        } else if (state_ == State::Pipe && mayResend()) {
            // The site closed its kept connection as the request went out:
            // the request goes again, on a new one.
            reused_ = false;
            outgoing_ = sent_;
            state_ = State::Connecting;
            timeout_.start();
            QMetaObject::invokeMethod(this, &ProxyTunnel::connectRoute, Qt::QueuedConnection);
        } else if (state_ == State::Pipe || state_ == State::Closing)
            close();
        else if (state_ == State::Connecting && !addresses_.isEmpty())
            QMetaObject::invokeMethod(this, &ProxyTunnel::connectNextAddress, Qt::QueuedConnection);
        else
            reply(502, "Cannot reach " + (upstreamProxy_ ? upstreamProxy_->host : host_).toUtf8() +
                           ": " + upstream_->errorString().toUtf8());
    });
    connect(upstream_, &QTcpSocket::disconnected, this, [this] {
        if (state_ == State::Pipe && !mayResend())
            close();
    });
    upstream_->connectToHost(host, port);
}

void ProxyTunnel::upstreamConnected()
{
    if (rerouted())
        return;
    upstream_->setSocketOption(QAbstractSocket::LowDelayOption, 1);
    if (upstreamProxy_ && upstreamProxy_->kind == ProxyEntry::Kind::Socks5) {
        socks_.emplace(host_, port_, upstreamProxy_->user, upstreamProxy_->password);
        upstream_->write(socks_->greeting());
        state_ = State::Socks;
    } else if (upstreamProxy_ && tunnel_) {
        upstream_->write(outgoing_);
        state_ = State::UpstreamReply;
    } else {
        reached();
    }
}

void ProxyTunnel::readUpstream()
{
    upstreamBuffer_ += upstream_->readAll();
    if (state_ == State::Head) {
        // Bytes no request asked for: the site's connection is not trusted
        // with another request.
        dropUpstream();
        return;
    }
    answerStarted_ = answerStarted_ || !upstreamBuffer_.isEmpty();
    switch (state_) {
    case State::Pipe:
        passUpstream();
        break;
    case State::UpstreamReply:
        if (!rerouted())
            readUpstreamReply();
        break;
    case State::Socks:
        if (!rerouted())
            readSocks();
        break;
    default:
        break;
    }
}

void ProxyTunnel::passUpstream()
{
    if (tunnel_)
        client_->write(std::exchange(upstreamBuffer_, {}));
    else
        readResponse();
}

void ProxyTunnel::readResponse()
{
    while (!responseHeadPassed_) {
        const std::optional<QByteArray> head = takeHead(upstreamBuffer_);
        if (!head) {
            if (upstreamBuffer_.size() > maxHead)
                reply(502, "The site sent an endless head.");
            return;
        }
        const int code = statusOf(*head);
        if (code == 0) {
            reply(502, "The site did not answer in HTTP.");
            return;
        }
        if (code == 407 && upstreamProxy_ && upstreamProxy_->kind == ProxyEntry::Kind::Http) {
            refusedForSignIn(*head);
            return;
        }
        body_ = ResponseBody::of(method_, *head);
        // An interim answer (100, 103) is followed by the final one.
        if (code >= 100 && code < 200 && code != 101) {
            client_->write(body_.passedHead(*head, false));
            continue;
        }
        responseHeadPassed_ = true;
        keepAlive_ = keepAlive_ && code != 101 && body_.kind() != ResponseBody::Kind::UntilClose;
        bool siteCloses = !firstLine(*head).trimmed().startsWith("HTTP/1.1 ");
        for (const QByteArray& line : head->split('\n'))
            siteCloses = siteCloses || (headerIs(line, "Connection") &&
                                        headerValue(line).toLower().contains("close"));
        upstreamReusable_ = keepAlive_ && !upstreamProxy_ && !siteCloses;
        client_->write(body_.passedHead(*head, !keepAlive_));
        // After a change of protocols, what the client sends is the new one's.
        if (code == 101)
            bodyLeft_ = -1;
    }
    QByteArray out;
    const bool whole = body_.take(upstreamBuffer_, out);
    client_->write(out);
    if (!whole)
        close();
    else if (body_.done())
        answered();
}

void ProxyTunnel::answered()
{
    if (!keepAlive_) {
        close();
        return;
    }
    if (!upstreamReusable_ || !upstreamBuffer_.isEmpty())
        dropUpstream();
    state_ = State::Head;
    responseHeadPassed_ = false;
    reused_ = false;
    timeout_.start();
    if (!clientBuffer_.isEmpty())
        readHead();
}

void ProxyTunnel::readUpstreamReply()
{
    const std::optional<QByteArray> head = takeHead(upstreamBuffer_);
    if (!head) {
        if (upstreamBuffer_.size() > maxHead)
            reply(502, "The upstream proxy sent an endless head.");
        return;
    }
    const int code = statusOf(*head);
    if (code == 407) {
        refusedForSignIn(*head);
        return;
    }
    if (code / 100 != 2) {
        reply(502, "The upstream proxy refused the connection (" + QByteArray::number(code) + ").");
        return;
    }
    outgoing_.clear();
    reached();
}

void ProxyTunnel::readSocks()
{
    QByteArray out;
    switch (socks_->read(upstreamBuffer_, out)) {
    case Socks5Handshake::Step::Waiting:
        if (!out.isEmpty())
            upstream_->write(out);
        break;
    case Socks5Handshake::Step::Reached:
        reached();
        break;
    case Socks5Handshake::Step::SignInRefused:
        refusedForSignIn({});
        break;
    case Socks5Handshake::Step::Unreachable:
        reply(502, "The SOCKS proxy could not reach " + host_.toUtf8() + '.');
        break;
    }
}

// The host is reached: a tunnel is confirmed to the client, a request goes out.
void ProxyTunnel::reached()
{
    timeout_.stop();
    state_ = State::Pipe;
    if (tunnel_) {
        client_->write("HTTP/1.1 200 Connection established\r\n\r\n");
        bodyLeft_ = -1;
    } else {
        upstream_->write(std::exchange(outgoing_, {}));
    }
    if (!upstreamBuffer_.isEmpty())
        passUpstream();
    pipeClient();
}

void ProxyTunnel::pipeClient()
{
    if (clientBuffer_.isEmpty())
        return;
    if (bodyLeft_ == 0) {
        // A next request waits for this one's answer; on a connection that
        // closes after it, none is heard.
        if (!keepAlive_ || clientBuffer_.size() > maxHead)
            clientBuffer_.clear();
        return;
    }
    if (generation_ != routing_.generation()) {
        // The route changed: not one more byte out through the old one.
        close();
        return;
    }
    if (bodyLeft_ < 0) {
        upstream_->write(std::exchange(clientBuffer_, {}));
        return;
    }
    const qint64 part = std::min<qint64>(bodyLeft_, clientBuffer_.size());
    upstream_->write(clientBuffer_.left(part));
    clientBuffer_.remove(0, part);
    bodyLeft_ -= part;
    pipeClient();
}

void ProxyTunnel::refusedForSignIn(const QByteArray& responseHead)
{
    QString realm;
    for (const QByteArray& line : responseHead.split('\n'))
        if (headerIs(line.trimmed(), "Proxy-Authenticate")) {
            const QByteArray value = headerValue(line.trimmed());
            const qsizetype start = value.indexOf("realm=\"");
            if (start >= 0)
                realm = QString::fromUtf8(
                    value.mid(start + 7, value.indexOf('"', start + 7) - start - 7));
        }
    if (signInNeeded_)
        signInNeeded_(upstreamProxy_->host, upstreamProxy_->port, realm);
    reply(502, "The proxy " + upstreamProxy_->host.toUtf8() +
                   " wants a user name and password. Sign in, then load the page again.");
}

void ProxyTunnel::reply(int status, const QByteArray& reason, const QByteArray& extraHeaders)
{
    static const QHash<int, QByteArray> texts = {{400, "Bad Request"},
                                                 {403, "Forbidden"},
                                                 {407, "Proxy Authentication Required"},
                                                 {431, "Request Header Fields Too Large"},
                                                 {502, "Bad Gateway"},
                                                 {504, "Gateway Timeout"}};
    client_->write("HTTP/1.1 " + QByteArray::number(status) + ' ' + texts.value(status) + "\r\n" +
                   extraHeaders + "Content-Type: text/plain; charset=utf-8\r\nContent-Length: " +
                   QByteArray::number(reason.size()) +
                   "\r\nConnection: close\r\nProxy-Connection: close\r\n\r\n" + reason);
    close();
}

void ProxyTunnel::close()
{
    // The last of an answer goes the way the rest went.
    if (state_ == State::Pipe && upstream_ && upstream_->bytesAvailable())
        readUpstream();
    if (state_ != State::Closing) {
        state_ = State::Closing;
        timeout_.stop();
        for (QTcpSocket* socket : {client_, upstream_})
            if (socket) {
                connect(socket, &QTcpSocket::disconnected, this, &ProxyTunnel::checkClosed);
                socket->disconnectFromHost();
            }
        // A peer that never reads its last bytes does not keep the tunnel.
        QTimer::singleShot(5000, this, [this] {
            for (QTcpSocket* socket : {client_, upstream_})
                if (socket)
                    socket->abort();
            checkClosed();
        });
    }
    checkClosed();
}

void ProxyTunnel::checkClosed()
{
    for (QTcpSocket* socket : {client_, upstream_})
        if (socket && socket->state() != QAbstractSocket::UnconnectedState)
            return;
    if (!finished_) {
        finished_ = true;
        emit finished();
        deleteLater();
    }
}

} // namespace proxy
