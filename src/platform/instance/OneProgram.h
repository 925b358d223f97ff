#pragma once
// One program per user. The first start holds a lock in the user's runtime
// folder for as long as it runs and listens on an owner-only socket beside
// it; a later start finds the lock held, hands its address to the running
// program over that socket and ends, having written nothing. A lock left by a
// killed program is taken over, and its socket replaced.
#include <QLocalServer>
#include <QLockFile>
#include <QObject>
#include <QString>

class QLocalSocket;

namespace platform {

class OneProgram : public QObject
{
    Q_OBJECT
public:
    // folder: where the lock and the socket live; the user's runtime folder
    // when empty.
    explicit OneProgram(const QString& folder = {});
    ~OneProgram() override;

    enum class Start {
        // This is the one program: it listens for later starts.
        First,
        // The running program has the address: end now.
        HandedOver,
        // Another program holds the lock, but the address could not be handed
        // over (see problem()): end now.
        Refused,
        // No runtime folder or no socket: this program runs on its own.
        Alone,
    };
    Start begin(const QString& address);
    QString problem() const { return problem_; }
    QString socketPath() const { return folder_ + QStringLiteral("/qub-browser.socket"); }

    // Waits at most this long for a later start's message.
    static constexpr int messageTimeoutMs = 2000;
    static constexpr int maxWaiting = 8;

signals:
    // A later start's address; empty when it gave none (show the window).
    void addressHandedOver(const QString& address);

private:
    bool handOver(const QString& address);
    void accept();
    void read(QLocalSocket& socket);

    QString folder_;
    QLockFile lock_;
    QLocalServer server_;
    QString problem_;
};

} // namespace platform
