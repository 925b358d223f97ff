#include "ProxyTunnel.h"

#include <QNetworkProxy>
#include <QTcpSocket>

namespace proxy {

namespace {

constexpr qsizetype maxHead = qsizetype(64) * 1024;

bool headerIs(const QByteArray& line, const char* name)
{
    const qsizetype colon = line.indexOf(':');
    return colon > 0 && line.left(colon).trimmed().compare(name, Qt::CaseInsensitive) == 0;
}

QByteArray headerValue(const QByteArray& line)
{
    return line.mid(line.indexOf(':') + 1).trimmed();
}

// "host:port" or "[v6]:port"; port 0 when there is none.
std::pair<QString, quint16> splitAuthority(const QByteArray& authority, quint16 fallback)
{
    QByteArray text = authority.mid(authority.lastIndexOf('@') + 1);
    QByteArray host = text;
    quint16 port = fallback;
    const qsizetype colon = text.lastIndexOf(':');
    if (colon > 0 && colon > text.lastIndexOf(']')) {
        bool ok = false;
        const uint value = text.mid(colon + 1).toUInt(&ok);
        port = ok && value > 0 && value < 65536 ? quint16(value) : 0;
        host = text.left(colon);
    }
    if (host.startsWith('[') && host.endsWith(']'))
        host = host.mid(1, host.size() - 2);
    return {QString::fromLatin1(host), port};
}

// The head at the front of buffer, taken off it with its blank line; nullopt
// while it has not all come.
std::optional<QByteArray> takeHead(QByteArray& buffer)
{
    const qsizetype end = buffer.indexOf("\r\n\r\n");
    if (end < 0)
        return std::nullopt;
    QByteArray head = buffer.left(end);
    buffer.remove(0, end + 4);
    return head;
}

QByteArray basic(const QString& user, const QString& password)
{
    return "Basic " + (user + QLatin1Char(':') + password).toUtf8().toBase64();
}

} // namespace

ProxyTunnel::ProxyTunnel(QTcpSocket* client, const ProxyRouting& routing, QByteArray credentials,
                         int timeoutMs, SignInNeeded signInNeeded, QObject* parent)
    : QObject(parent), client_(client), routing_(routing), credentials_(std::move(credentials)),
      signInNeeded_(std::move(signInNeeded))
{
    client_->setParent(this);
    timeout_.setSingleShot(true);
    timeout_.setInterval(timeoutMs);
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
    responseChecked_ = false;
    upstreamBuffer_.clear();
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
                             basic(upstreamProxy_->user, upstreamProxy_->password) + "\r\n";
            outgoing_ += "\r\n";
        }
    } else {
        outgoing_ =
            method + ' ' + (viaHttp ? target : originTarget) + ' ' + request[2] + "\r\n" + headers;
        if (viaHttp && !upstreamProxy_->user.isEmpty())
            outgoing_ +=
                "Proxy-Authorization: " + basic(upstreamProxy_->user, upstreamProxy_->password) +
                "\r\n";
        outgoing_ += "Connection: close\r\n\r\n";
    }

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
        else
            reply(502, "Cannot reach " + (upstreamProxy_ ? upstreamProxy_->host : host_).toUtf8() +
                           ": " + upstream_->errorString().toUtf8());
    });
    connect(upstream_, &QTcpSocket::disconnected, this, [this] {
        if (state_ == State::Pipe)
            close();
    });
    state_ = State::Connecting;
    timeout_.start();
    if (upstreamProxy_)
        upstream_->connectToHost(upstreamProxy_->host, upstreamProxy_->port);
    else
        upstream_->connectToHost(routing_.connectHost(host_), port_);
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
        if (!responseChecked_ && !tunnel_ && upstreamProxy_ &&
            upstreamProxy_->kind == ProxyEntry::Kind::Http) {
            const qsizetype end = upstreamBuffer_.indexOf("\r\n\r\n");
            if (end < 0 && upstreamBuffer_.size() <= maxHead)
                return;
            responseChecked_ = true;
            if (upstreamBuffer_.startsWith("HTTP/1.") && upstreamBuffer_.mid(9, 3) == "407") {
                refusedForSignIn(upstreamBuffer_.left(end));
                return;
            }
        }
        client_->write(std::exchange(upstreamBuffer_, {}));
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

void ProxyTunnel::readUpstreamReply()
{
    const std::optional<QByteArray> head = takeHead(upstreamBuffer_);
    if (!head) {
        if (upstreamBuffer_.size() > maxHead)
            reply(502, "The upstream proxy sent an endless head.");
        return;
    }
    const int code = head->left(head->indexOf("\r\n")).split(' ').value(1).toInt();
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
        client_->write(std::exchange(upstreamBuffer_, {}));
    pipeClient();
}

void ProxyTunnel::pipeClient()
{
    if (clientBuffer_.isEmpty())
        return;
    if (bodyLeft_ == 0) {
        // A next request on a kept connection: routed afresh.
        state_ = State::Head;
        readHead();
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
    if (state_ != State::Closing) {
        state_ = State::Closing;
        timeout_.stop();
        if (upstream_ && upstream_->bytesAvailable())
            client_->write(upstream_->readAll());
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
