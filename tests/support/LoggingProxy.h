#pragma once
// A proxy for tests on the loopback address, HTTP or SOCKS5, that logs the
// host of every request it carries and answers each itself with a page
// titled "via <name> <host>", so a page shows which route it came by. With a
// login ("user:password") set, an HTTP request without it is refused (407).
// Requests for holdHost are logged and left unanswered until release(): a
// slow site.
#include <QHostAddress>
#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>

#include <utility>
#include <vector>

class LoggingProxy : public QTcpServer
{
public:
    enum class Kind { Http, Socks5 };

    LoggingProxy(QString name, Kind kind) : name_(std::move(name)), kind_(kind)
    {
        listen(QHostAddress::LocalHost, 0);
        connect(this, &QTcpServer::pendingConnectionAvailable, this, [this] {
            while (QTcpSocket* socket = nextPendingConnection()) {
                socket->setParent(this);
                socket->setProperty("stage", kind_ == Kind::Socks5 ? 0 : 2);
                connect(socket, &QTcpSocket::readyRead, this, [this, socket] { read(socket); });
            }
        });
    }
    QString entry() const
    {
        return (kind_ == Kind::Socks5 ? QStringLiteral("socks5://127.0.0.1:")
                                      : QStringLiteral("127.0.0.1:")) +
               QString::number(serverPort());
    }
    QStringList hosts;
    QByteArray login;
    QString holdHost;

    void release()
    {
        for (const auto& [socket, host] : std::exchange(held_, {}))
            if (socket)
                answer(socket, host);
    }

private:
    void read(QTcpSocket* socket)
    {
        QByteArray buffer = socket->property("buffer").toByteArray() + socket->readAll();
        int stage = socket->property("stage").toInt();
        if (stage == 0 && buffer.size() >= 3) { // greeting: no sign-in
            buffer.remove(0, 2 + quint8(buffer[1]));
            socket->write(QByteArray("\x05\x00", 2));
            stage = 1;
        }
        if (stage == 1 && buffer.size() >= 5 && buffer.size() >= 7 + quint8(buffer[4])) {
            const int length = quint8(buffer[4]);
            socket->setProperty("host", buffer.mid(5, length));
            buffer.remove(0, 7 + length);
            socket->write(QByteArray("\x05\x00\x00\x01\x7f\x00\x00\x01\x00\x50", 10));
            stage = 2;
        }
        if (stage == 2 && buffer.contains("\r\n\r\n") && !login.isEmpty() &&
            !buffer.contains("Proxy-Authorization: Basic " + login.toBase64())) {
            socket->write(
                "HTTP/1.1 407 Proxy Authentication Required\r\nProxy-Authenticate: "
                "Basic realm=\"tests\"\r\nContent-Length: 0\r\nConnection: close\r\n\r\n");
            socket->disconnectFromHost();
            buffer.clear();
            stage = 3;
        }
        if (stage == 2 && buffer.contains("\r\n\r\n")) {
            QByteArray host = socket->property("host").toByteArray();
            for (const QByteArray& line : buffer.split('\n'))
                if (host.isEmpty() && line.toLower().startsWith("host:"))
                    host = line.mid(5).trimmed().split(':').value(0);
            hosts << QString::fromLatin1(host);
            if (host == holdHost.toLatin1())
                held_.push_back({socket, host});
            else
                answer(socket, host);
            buffer.clear();
            stage = 3;
        }
        socket->setProperty("buffer", buffer);
        socket->setProperty("stage", stage);
    }

    void answer(QTcpSocket* socket, const QByteArray& host)
    {
        // The page names its icon, so the engine asks no /favicon.ico late,
        // by whatever route is in force by then.
        const QByteArray page = "<html><head><link rel=icon href=\"data:,\"><title>via " +
                                name_.toLatin1() + ' ' + host +
                                "</title></head><body>proxied</body></html>";
        socket->write("HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nContent-Length: " +
                      QByteArray::number(page.size()) + "\r\nConnection: close\r\n\r\n" + page);
        socket->disconnectFromHost();
    }

    QString name_;
    Kind kind_;
    std::vector<std::pair<QPointer<QTcpSocket>, QByteArray>> held_;
};
