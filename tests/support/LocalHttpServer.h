#pragma once
// A tiny HTTP server on 127.0.0.1 (port chosen by the system) that answers GET
// requests from a table of paths; anything else is 404. For engine tests only.
#include <QHash>
#include <QTcpServer>
#include <QTcpSocket>

class LocalHttpServer : public QTcpServer
{
public:
    LocalHttpServer()
    {
        listen(QHostAddress::LocalHost, 0);
        connect(this, &QTcpServer::newConnection, this, [this] {
            while (QTcpSocket* socket = nextPendingConnection()) {
                connect(socket, &QTcpSocket::readyRead, socket, [this, socket] { answer(socket); });
                connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            }
        });
    }

    void setPage(const QString& path, const QByteArray& html) { pages_.insert(path, html); }
    QString url(const QString& path) const
    {
        return QStringLiteral("http://127.0.0.1:%1%2").arg(serverPort()).arg(path);
    }

private:
    void answer(QTcpSocket* socket)
    {
        const QByteArray request = socket->peek(socket->bytesAvailable());
        if (!request.contains("\r\n\r\n"))
            return;
        socket->readAll();
        const QString path = QString::fromLatin1(request.split(' ').value(1));
        const bool found = pages_.contains(path);
        const QByteArray body = found ? pages_.value(path) : QByteArray("not found");
        socket->write((found ? "HTTP/1.1 200 OK\r\n" : "HTTP/1.1 404 Not Found\r\n") +
                      QByteArray("Content-Type: text/html; charset=utf-8\r\nContent-Length: ") +
                      QByteArray::number(body.size()) + "\r\nConnection: close\r\n\r\n" + body);
        socket->disconnectFromHost();
    }

    QHash<QString, QByteArray> pages_;
};
