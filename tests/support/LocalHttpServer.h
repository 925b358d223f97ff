#pragma once
// A tiny HTTP server on 127.0.0.1 (port chosen by the system) that answers GET
// requests from a table of paths, whatever the query; anything else is 404. A
// path may want basic sign-in or carry extra headers. LocalHttpsServer speaks
// HTTPS with a self-signed certificate (tests/support/tls), which browsers do
// not trust. For tests that start the engine or another program.
#include <QFile>
#include <QHash>
#include <QSslKey>
#include <QSslServer>
#include <QTcpServer>
#include <QTcpSocket>

template <typename Server> class BasicHttpServer : public Server
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

    explicit BasicHttpServer(QString scheme = QStringLiteral("http")) : scheme_(std::move(scheme))
    {
        this->listen(QHostAddress::LocalHost, 0);
        QObject::connect(this, &QTcpServer::pendingConnectionAvailable, this, [this] {
            while (QTcpSocket* socket = this->nextPendingConnection()) {
                QObject::connect(socket, &QTcpSocket::readyRead, socket,
                                 [this, socket] { answer(socket); });
                QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
            }
        });
    }

    void setPage(const QString& path, const QByteArray& html)
    {
        pages_.insert(path, Response(html));
    }
    void setResponse(const QString& path, const Response& response)
    {
        pages_.insert(path, response);
    }
    QString url(const QString& path) const
    {
        return QStringLiteral("%1://127.0.0.1:%2%3").arg(scheme_).arg(this->serverPort()).arg(path);
    }
    int requests(const QString& path) const { return counts_.value(path); }

private:
    void answer(QTcpSocket* socket)
    {
        const QByteArray request = socket->peek(socket->bytesAvailable());
        if (!request.contains("\r\n\r\n"))
            return;
        socket->readAll();
        // The query does not choose the page; pages read it themselves.
        const QString path = QString::fromLatin1(request.split(' ').value(1)).section('?', 0, 0);
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
                      "\r\nContent-Length: " + QByteArray::number(response.body.size()) + "\r\n" +
                      response.extraHeaders + "Connection: close\r\n\r\n" + response.body);
        socket->disconnectFromHost();
    }

    QString scheme_;
    QHash<QString, Response> pages_;
    QHash<QString, int> counts_;
};

using LocalHttpServer = BasicHttpServer<QTcpServer>;

class LocalHttpsServer : public BasicHttpServer<QSslServer>
{
public:
    LocalHttpsServer() : BasicHttpServer<QSslServer>(QStringLiteral("https"))
    {
        QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
        tls.setLocalCertificate(QSslCertificate(read("localhost.crt")));
        tls.setPrivateKey(QSslKey(read("localhost.key"), QSsl::Rsa));
        setSslConfiguration(tls);
    }

private:
    static QByteArray read(const char* name)
    {
        QFile file(QStringLiteral(QUB_TEST_SUPPORT_DIR "/tls/") + name);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
};
