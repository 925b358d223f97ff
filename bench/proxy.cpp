// The forwarding proxy under load: 200 clients at once each open a tunnel
// (CONNECT with the run's secret) to an echo server and send 64 KiB through
// it. Prints "tunnels <ms> <completed>" per round: the time until every
// client has its bytes back.
//
// Then the cost of one request's hop: requests one after another to a small
// HTTP server, straight and through the proxy (plain, and inside one CONNECT
// tunnel), each client keeping its connection while the answers allow it, as
// the engine does. Prints "hop <straight> <proxied> <tunnelled>": the median
// time of a request in microseconds, blocks of each interleaved.
#include "proxy/ForwardingProxy.h"
#include "proxy/HostRules.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QNetworkProxy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <optional>
#include <vector>

namespace {

constexpr int clients = 200;
constexpr qsizetype payload = qsizetype(64) * 1024;

class EchoServer : public QTcpServer
{
protected:
    void incomingConnection(qintptr descriptor) override
    {
        auto* socket = new QTcpSocket(this);
        socket->setSocketDescriptor(descriptor);
        connect(socket, &QTcpSocket::readyRead, socket,
                [socket] { socket->write(socket->readAll()); });
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    }
};

// Answers every request head with a 512-byte page, keeping the connection.
class PageServer : public QTcpServer
{
protected:
    void incomingConnection(qintptr descriptor) override
    {
        auto* socket = new QTcpSocket(this);
        socket->setSocketDescriptor(descriptor);
        socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        auto buffer = std::make_shared<QByteArray>();
        connect(socket, &QTcpSocket::readyRead, socket, [socket, buffer] {
            *buffer += socket->readAll();
            qsizetype end = 0;
            while ((end = buffer->indexOf("\r\n\r\n")) >= 0) {
                buffer->remove(0, end + 4);
                socket->write("HTTP/1.1 200 OK\r\nContent-Type: text/html\r\n"
                              "Content-Length: 512\r\n\r\n" +
                              QByteArray(512, 'p'));
            }
        });
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
    }
};

// A client that sends one request at a time and reads its whole answer.
class Client
{
public:
    enum class Way { Straight, Proxied, Tunnelled };

    Client(Way way, quint16 serverPort, const proxy::ForwardingProxy& proxy)
        : way_(way), serverPort_(serverPort), proxyPort_(proxy.port()),
          authorisation_(
              "Proxy-Authorization: Basic " +
              (proxy::ForwardingProxy::user() + ':' + proxy.secret()).toUtf8().toBase64() + "\r\n")
    {
        socket_.setProxy(QNetworkProxy::NoProxy);
    }

    // The time of one request, connection included when one was needed; -1
    // when it failed.
    qint64 request(int n)
    {
        QElapsedTimer timer;
        timer.start();
        if (socket_.state() != QAbstractSocket::ConnectedState && !connect())
            return -1;
        const QByteArray authority = "bench.test:" + QByteArray::number(serverPort_);
        const QByteArray path = "/" + QByteArray::number(n);
        QByteArray head = way_ == Way::Proxied
                              ? "GET http://" + authority + path + " HTTP/1.1\r\n" +
                                    authorisation_ + "Proxy-Connection: keep-alive\r\n"
                              : "GET " + path + " HTTP/1.1\r\n";
        socket_.write(head + "Host: " + authority + "\r\n\r\n");
        const std::optional<QByteArray> answer = readAnswer();
        if (!answer)
            return -1;
        if (answer->toLower().contains("connection: close"))
            socket_.abort();
        return timer.nsecsElapsed() / 1000;
    }

private:
    bool connect()
    {
        socket_.abort();
        buffer_.clear();
        socket_.connectToHost(QHostAddress::LocalHost,
                              way_ == Way::Straight ? serverPort_ : proxyPort_);
        if (!socket_.waitForConnected(5000))
            return false;
        socket_.setSocketOption(QAbstractSocket::LowDelayOption, 1);
        if (way_ != Way::Tunnelled)
            return true;
        socket_.write("CONNECT bench.test:" + QByteArray::number(serverPort_) + " HTTP/1.1\r\n" +
                      authorisation_ + "\r\n");
        return readAnswer(false).has_value();
    }

    // The head of an answer, its body read past.
    std::optional<QByteArray> readAnswer(bool withBody = true)
    {
        qsizetype end = -1;
        while ((end = buffer_.indexOf("\r\n\r\n")) < 0)
            if (!fill())
                return std::nullopt;
        const QByteArray head = buffer_.left(end);
        buffer_.remove(0, end + 4);
        if (!head.startsWith("HTTP/1.1 200"))
            return std::nullopt;
        const qsizetype length = withBody ? 512 : 0;
        while (buffer_.size() < length)
            if (!fill())
                return std::nullopt;
        buffer_.remove(0, length);
        return head;
    }

    bool fill()
    {
        if (!socket_.bytesAvailable() && !socket_.waitForReadyRead(5000))
            return false;
        buffer_ += socket_.readAll();
        return true;
    }

    Way way_;
    quint16 serverPort_;
    quint16 proxyPort_;
    QByteArray authorisation_;
    QTcpSocket socket_;
    QByteArray buffer_;
};

// The median of each way's request times, in microseconds.
void measureHop(quint16 serverPort, proxy::ForwardingProxy& proxy)
{
    std::vector<std::unique_ptr<Client>> clients;
    for (Client::Way way : {Client::Way::Straight, Client::Way::Proxied, Client::Way::Tunnelled})
        clients.push_back(std::make_unique<Client>(way, serverPort, proxy));
    std::vector<std::vector<qint64>> times(clients.size());
    int n = 0;
    for (int block = 0; block < 40; ++block)
        for (size_t way = 0; way < clients.size(); ++way)
            for (int i = 0; i < 50; ++i) {
                const qint64 took = clients[way]->request(++n);
                if (took < 0) {
                    std::fprintf(stderr, "a request failed\n");
                    std::exit(1);
                }
                times[way].push_back(took);
            }
    std::printf("hop");
    for (std::vector<qint64>& list : times) {
        std::nth_element(list.begin(), list.begin() + qsizetype(list.size() / 2), list.end());
        std::printf(" %lld", static_cast<long long>(list[list.size() / 2]));
    }
    std::printf("\n");
    std::fflush(stdout);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication app(argc, argv);
    const int rounds = argc > 1 ? std::atoi(argv[1]) : 7;
    QThread echoThread;
    auto* echo = new EchoServer;
    echo->moveToThread(&echoThread);
    echoThread.start();
    quint16 echoPort = 0;
    QMetaObject::invokeMethod(
        echo,
        [&] {
            echo->setListenBacklogSize(1024);
            echo->listen(QHostAddress::LocalHost, 0);
            echoPort = echo->serverPort();
        },
        Qt::BlockingQueuedConnection);

    proxy::ForwardingProxy proxy;
    // The proxy takes no request to this computer by address; a name the
    // engine's rules map here it takes, as the tests' pages are reached.
    proxy.setHostRules(
        proxy::HostRules::fromArguments({"--host-resolver-rules=MAP bench.test 127.0.0.1"}));
    const QByteArray request =
        "CONNECT bench.test:" + QByteArray::number(echoPort) +
        " HTTP/1.1\r\nProxy-Authorization: Basic " +
        (proxy::ForwardingProxy::user() + ':' + proxy.secret()).toUtf8().toBase64() + "\r\n\r\n";
    const QByteArray data(payload, 'x');

    for (int round = 0; round < rounds; ++round) {
        std::vector<std::unique_ptr<QTcpSocket>> sockets;
        std::vector<qsizetype> received(clients, -1);
        int done = 0;
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < clients; ++i) {
            auto socket = std::make_unique<QTcpSocket>();
            QTcpSocket* s = socket.get();
            s->setProxy(QNetworkProxy::NoProxy);
            QObject::connect(s, &QTcpSocket::connected, s, [s, &request] { s->write(request); });
            QObject::connect(s, &QTcpSocket::readyRead, s, [&, s, i] {
                QByteArray bytes = s->readAll();
                if (received[size_t(i)] < 0) {
                    const qsizetype end = bytes.indexOf("\r\n\r\n");
                    if (!bytes.startsWith("HTTP/1.1 200") || end < 0)
                        return;
                    bytes.remove(0, end + 4);
                    received[size_t(i)] = 0;
                    s->write(data);
                }
                received[size_t(i)] += bytes.size();
                if (received[size_t(i)] == payload) {
                    ++done;
                    s->disconnectFromHost();
                }
            });
            s->connectToHost(QHostAddress::LocalHost, proxy.port());
            sockets.push_back(std::move(socket));
        }
        QElapsedTimer limit;
        limit.start();
        while (done < clients && limit.elapsed() < 60000)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
        std::printf("tunnels %.1f %d\n", double(timer.nsecsElapsed()) / 1e6, done);
        std::fflush(stdout);
    }
    auto* pages = new PageServer;
    pages->moveToThread(&echoThread);
    quint16 pagePort = 0;
    QMetaObject::invokeMethod(
        pages,
        [&] {
            pages->listen(QHostAddress::LocalHost, 0);
            pagePort = pages->serverPort();
        },
        Qt::BlockingQueuedConnection);
    measureHop(pagePort, proxy);

    QMetaObject::invokeMethod(
        echo,
        [echo, pages] {
            delete echo;
            delete pages;
        },
        Qt::BlockingQueuedConnection);
    echoThread.quit();
    echoThread.wait();
    return 0;
}
