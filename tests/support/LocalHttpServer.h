#pragma once
// A tiny HTTP server on 127.0.0.1 (port chosen by the system) that answers GET
// requests from a table of paths; anything else is 404. A path may want basic
// sign-in or carry extra headers. For engine tests only.
#include <QHash>
#include <QTcpServer>
#include <QTcpSocket>

class LocalHttpServer : public QTcpServer
{
public:
    struct Response
    {
        Response(QByteArray body = {}, QByteArray contentType = "text/html; charset=utf-8",
                 QByteArray extraHeaders = {}, QByteArray credentials = {})
            : body(std::move(body)), contentType(std::move(contentType)),
              extraHeaders(std::move(extraHeaders)), credentials(std::move(credentials))
        {
        }
        QByteArray body;
        QByteArray contentType;
        QByteArray extraHeaders; // each ending in \r\n
        QByteArray credentials;  // "user:password" when sign-in is wanted
    };

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

    void setPage(const QString& path, const QByteArray& html) { pages_.insert(path, Response(html)); }
    void setResponse(const QString& path, const Response& response)
    {
        pages_.insert(path, response);
    }
    QString url(const QString& path) const
    {
        return QStringLiteral("http://127.0.0.1:%1%2").arg(serverPort()).arg(path);
    }
    int requests(const QString& path) const { return counts_.value(path); }

private:
    void answer(QTcpSocket* socket)
    {
        const QByteArray request = socket->peek(socket->bytesAvailable());
        if (!request.contains("\r\n\r\n"))
            return;
        socket->readAll();
        const QString path = QString::fromLatin1(request.split(' ').value(1));
        counts_[path] += 1;
        QByteArray status = "200 OK";
        Response response(QByteArrayLiteral("not found"));
        if (!pages_.contains(path)) {
            status = "404 Not Found";
        } else {
            response = pages_.value(path);
            if (!response.credentials.isEmpty() &&
                !request.contains("Authorization: Basic " + response.credentials.toBase64())) {
                status = "401 Unauthorized";
                response = Response("sign in", "text/plain",
                                    "WWW-Authenticate: Basic realm=\"tests\"\r\n");
            }
        }
        socket->write("HTTP/1.1 " + status + "\r\nContent-Type: " + response.contentType +
                      "\r\nContent-Length: " + QByteArray::number(response.body.size()) +
                      "\r\n" + response.extraHeaders + "Connection: close\r\n\r\n" +
                      response.body);
        socket->disconnectFromHost();
    }

    QHash<QString, Response> pages_;
    QHash<QString, int> counts_;
};
