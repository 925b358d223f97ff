#include "ProxyTunnel.h"
#include "HttpHead.h"
#include "InwardRequest.h"

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
    case State::SocksGreeting:
    case State::SocksAuth:
    case State::SocksReply:
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
    QList<QByteArray> lines = head_.split('\n');
    for (QByteArray& line : lines)
        line = line.trimmed();
    const QList<QByteArray> request = lines.value(0).split(' ');
    if (request.size() != 3) {
        reply(400, "This is not an HTTP request.");
        return;
    }
    const QByteArray& method = request[0];
    const QByteArray& target = request[1];
    bool authorised = false;
    bodyLeft_ = 0;
    responseHeadPassed_ = false;
    upstreamBuffer_.clear();
    addresses_.clear();
    lookupId_ = -1;
    QByteArray headers;
    for (qsizetype i = 1; i < lines.size(); ++i) {
        const QByteArray& line = lines[i];
        if (headerIs(line, "Proxy-Authorization")) {
            authorised = authorised || headerValue(line) == credentials_;
            continue;
        }
        if (headerIs(line, "Proxy-Connection") || headerIs(line, "Connection") ||
            headerIs(line, "Keep-Alive"))
            continue;
        if (headerIs(line, "Content-Length"))
            bodyLeft_ = headerValue(line).toLongLong();
        if (headerIs(line, "Transfer-Encoding"))
            bodyLeft_ = -1;
        headers += line + "\r\n";
    }
    if (!authorised) {
        reply(407, "This proxy serves QUB-BROWSER only.",
              "Proxy-Authenticate: Basic realm=\"QUB-BROWSER\"\r\n");
        return;
    }
    if (!authorised_) {
        authorised_ = true;
        timeout_.setInterval(timeoutMs_);
    }
    QByteArray originTarget;
    if (method == "CONNECT") {
        tunnel_ = true;
        std::tie(host_, port_) = splitAuthority(target, 0);
    } else {
        tunnel_ = false;
        if (!target.toLower().startsWith("http://")) {
            reply(400, "Only http addresses go through this proxy without CONNECT.");
            return;
        }
        const QByteArray rest = target.mid(7);
        qsizetype slash = rest.indexOf('/');
        const qsizetype query = rest.indexOf('?');
        if (slash < 0 || (query >= 0 && query < slash))
            slash = query;
        const QByteArray authority = slash < 0 ? rest : rest.left(slash);
        originTarget = slash < 0 ? QByteArray("/") : rest.mid(slash);
        if (originTarget.startsWith('?'))
            originTarget.prepend('/');
        std::tie(host_, port_) = splitAuthority(authority, 80);
    }
    if (host_.isEmpty() || port_ == 0) {
        reply(400, "The request names no host and port.");
        return;
    }

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
        outgoing_ =
            method + ' ' + (viaHttp ? target : originTarget) + ' ' + request[2] + "\r\n" + headers;
        if (viaHttp && !upstreamProxy_->user.isEmpty())
            outgoing_ += "Proxy-Authorization: " +
                         basicAuthorization(upstreamProxy_->user, upstreamProxy_->password) +
                         "\r\n";
        outgoing_ += "Connection: close\r\n\r\n";
    }

    state_ = State::Connecting;
    timeout_.start();
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
    upstream_ = new QTcpSocket(this);
    upstream_->setProxy(QNetworkProxy::NoProxy);
    connect(upstream_, &QTcpSocket::connected, this, &ProxyTunnel::upstreamConnected);
    connect(upstream_, &QTcpSocket::readyRead, this, &ProxyTunnel::readUpstream);
    connect(upstream_, &QTcpSocket::errorOccurred, this, [this] {
        if (state_ == State::Pipe || state_ == State::Closing)
            close();
        else if (state_ == State::Connecting && !addresses_.isEmpty())
            QMetaObject::invokeMethod(this, &ProxyTunnel::connectNextAddress, Qt::QueuedConnection);
        else
            reply(502, "Cannot reach " + (upstreamProxy_ ? upstreamProxy_->host : host_).toUtf8() +
                           ": " + upstream_->errorString().toUtf8());
    });
    connect(upstream_, &QTcpSocket::disconnected, this, [this] {
        if (state_ == State::Pipe)
            close();
    });
    upstream_->connectToHost(host, port);
}

void ProxyTunnel::upstreamConnected()
{
    if (rerouted())
        return;
    if (upstreamProxy_ && upstreamProxy_->kind == ProxyEntry::Kind::Socks5) {
        const bool login = !upstreamProxy_->user.isEmpty();
        upstream_->write(login ? QByteArray("\x05\x02\x00\x02", 4) : QByteArray("\x05\x01\x00", 3));
        state_ = State::SocksGreeting;
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
    switch (state_) {
    case State::Pipe:
        passUpstream();
        break;
    case State::UpstreamReply:
        if (!rerouted())
            readUpstreamReply();
        break;
    case State::SocksGreeting:
    case State::SocksAuth:
    case State::SocksReply:
        if (!rerouted())
            readSocks();
        break;
    default:
        break;
    }
}

void ProxyTunnel::passUpstream()
{
    if (tunnel_ || responseHeadPassed_)
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
        if (code == 407 && upstreamProxy_ && upstreamProxy_->kind == ProxyEntry::Kind::Http) {
            refusedForSignIn(*head);
            return;
        }
        client_->write(closingHead(*head));
        // An interim answer (100, 103) is followed by the final one.
        responseHeadPassed_ = code < 100 || code >= 200 || code == 101;
    }
    client_->write(std::exchange(upstreamBuffer_, {}));
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
    if (state_ == State::SocksGreeting) {
        if (upstreamBuffer_.size() < 2)
            return;
        const char method = upstreamBuffer_[1];
        upstreamBuffer_.remove(0, 2);
        if (method == 0x02 && !upstreamProxy_->user.isEmpty()) {
            const QByteArray user = upstreamProxy_->user.toUtf8().left(255);
            const QByteArray password = upstreamProxy_->password.toUtf8().left(255);
            upstream_->write(QByteArray(1, '\x01') + char(user.size()) + user +
                             char(password.size()) + password);
            state_ = State::SocksAuth;
            return;
        }
        if (method != 0x00) {
            refusedForSignIn({});
            return;
        }
    } else if (state_ == State::SocksAuth) {
        if (upstreamBuffer_.size() < 2)
            return;
        const bool accepted = upstreamBuffer_[1] == 0x00;
        upstreamBuffer_.remove(0, 2);
        if (!accepted) {
            refusedForSignIn({});
            return;
        }
    }
    if (state_ != State::SocksReply) {
        const QByteArray host = host_.toUtf8().left(255);
        upstream_->write(QByteArray("\x05\x01\x00\x03", 4) + char(host.size()) + host +
                         char(port_ >> 8) + char(port_ & 0xff));
        state_ = State::SocksReply;
        return;
    }
    if (upstreamBuffer_.size() < 5)
        return;
    const int kind = static_cast<unsigned char>(upstreamBuffer_[3]);
    const qsizetype length = kind == 1   ? 10
                             : kind == 4 ? 22
                             : kind == 3 ? 7 + quint8(upstreamBuffer_[4])
                                         : -1;
    if (upstreamBuffer_[1] != 0 || length < 0) {
        reply(502, "The SOCKS proxy could not reach " + host_.toUtf8() + '.');
        return;
    }
    if (upstreamBuffer_.size() < length)
        return;
    upstreamBuffer_.remove(0, length);
    reached();
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
        // A next request on a connection its answer said closes: not heard.
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
