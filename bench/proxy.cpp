// The forwarding proxy under load: 200 clients at once each open a tunnel
// (CONNECT with the run's secret) to an echo server and send 64 KiB through
// it. Prints "tunnels <ms> <completed>" per round: the time until every
// client has its bytes back.
#include "proxy/ForwardingProxy.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QNetworkProxy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>
#include <cstdio>
#include <memory>
#include <vector>

namespace {

constexpr int clients = 200;
constexpr qsizetype payload = 64 * 1024;

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
    const QByteArray request =
        "CONNECT 127.0.0.1:" + QByteArray::number(echoPort) +
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
    QMetaObject::invokeMethod(
        echo, [echo] { delete echo; }, Qt::BlockingQueuedConnection);
    echoThread.quit();
    echoThread.wait();
    return 0;
}
