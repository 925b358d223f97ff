#include "OneProgram.h"
#include "HandOver.h"

#include <QDeadlineTimer>
#include <QFileInfo>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QThread>
#include <QTimer>
#include <algorithm>

#ifdef Q_OS_LINUX
#include <sys/socket.h>
#include <unistd.h>
#endif

namespace platform {

namespace {

QString runtimeFolder(const QString& given)
{
    return given.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation)
                           : given;
}

// The socket's permissions keep other users out; their own connection's
// credentials say who is calling all the same, where the system tells.
bool fromThisUser(const QLocalSocket& socket)
{
#ifdef Q_OS_LINUX
    ucred peer{};
    socklen_t size = sizeof peer;
    if (getsockopt(int(socket.socketDescriptor()), SOL_SOCKET, SO_PEERCRED, &peer, &size) != 0)
        return false;
    return peer.uid == geteuid();
#else
    Q_UNUSED(socket);
    return true;
#endif
}

} // namespace

OneProgram::OneProgram(const QString& folder)
    : folder_(runtimeFolder(folder)), lock_(folder_ + QStringLiteral("/qub-browser.lock"))
{
    // A running program's lock never grows stale by age: only a lock whose
    // program is gone is taken over.
    lock_.setStaleLockTime(0);
    server_.setSocketOptions(QLocalServer::UserAccessOption);
    server_.setMaxPendingConnections(maxWaiting);
    connect(&server_, &QLocalServer::newConnection, this, &OneProgram::accept);
}

OneProgram::~OneProgram()
{
    server_.close();
}

OneProgram::Start OneProgram::begin(const QString& address)
{
    if (folder_.isEmpty()) {
        problem_ = QStringLiteral("there is no runtime folder to meet later starts in");
        return Start::Alone;
    }
    if (!lock_.tryLock(0)) {
        if (lock_.error() != QLockFile::LockFailedError) {
            problem_ = QStringLiteral("cannot write the lock in %1").arg(folder_);
            return Start::Alone;
        }
        return handOver(address) ? Start::HandedOver : Start::Refused;
    }
    // With the lock held, a socket found here was left by a killed program.
    QLocalServer::removeServer(socketPath());
    if (!server_.listen(socketPath())) {
        problem_ = server_.errorString();
        return Start::Alone;
    }
    return Start::First;
}

bool OneProgram::handOver(const QString& address)
{
    const QByteArray message = handover::message(address);
    if (message.isEmpty()) {
        problem_ = QStringLiteral("the address is too long to hand over");
        return false;
    }
    // The folder is the user's own; a socket of someone else's in it is a trap.
    const QFileInfo socketFile(socketPath());
    if (socketFile.exists() && socketFile.ownerId() != QFileInfo(folder_).ownerId()) {
        problem_ = QStringLiteral("%1 belongs to another user").arg(socketPath());
        return false;
    }
    // The running program may have taken the lock a moment ago and not be
    // listening yet.
    QLocalSocket socket;
    const QDeadlineTimer deadline(800);
    for (;;) {
        socket.connectToServer(socketPath());
        if (socket.waitForConnected(int(deadline.remainingTime())))
            break;
        if (deadline.hasExpired()) {
            problem_ = QStringLiteral("the running program does not answer at %1: %2")
                           .arg(socketPath(), socket.errorString());
            return false;
        }
        QThread::msleep(20);
    }
    socket.write(message);
    const bool sent =
        socket.waitForBytesWritten(int(std::max<qint64>(deadline.remainingTime(), 200)));
    socket.disconnectFromServer();
    if (!sent)
        problem_ = socket.errorString();
    return sent;
}

void OneProgram::accept()
{
    while (QLocalSocket* socket = server_.nextPendingConnection()) {
        connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        if (!fromThisUser(*socket)) {
            socket->abort();
            socket->deleteLater();
            continue;
        }
        connect(socket, &QLocalSocket::readyRead, this, [this, socket] { read(*socket); });
        QTimer::singleShot(messageTimeoutMs, socket, [socket] { socket->abort(); });
        read(*socket);
    }
}

void OneProgram::read(QLocalSocket& socket)
{
    QByteArray received = socket.property("received").toByteArray();
    received += socket.read(handover::maxMessage + 1 - received.size());
    if (received.size() > handover::maxMessage) {
        socket.abort();
        return;
    }
    socket.setProperty("received", received);
    // A message is one line after its first; more waits for the rest.
    if (received.count('\n') < 2)
        return;
    const std::optional<QString> address = handover::addressOf(received);
    socket.abort();
    if (address)
        emit addressHandedOver(*address);
}

} // namespace platform
