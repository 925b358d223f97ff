#pragma once
// What the benchmark programs share: the clock they report against, the
// lines they print for bench/run.sh, and the watch on the event loop.
#include <QDateTime>
#include <QElapsedTimer>
#include <QTextStream>
#include <QTimer>

namespace bench {

// Milliseconds since the epoch, comparable with the launching script's clock.
inline qint64 now()
{
    return QDateTime::currentMSecsSinceEpoch();
}

inline void report(const char* name, qint64 value)
{
    QTextStream(stdout) << name << ' ' << value << Qt::endl;
}

// A timer due every 5 ms: how late it comes is how long the event loop did
// not answer.
class Heartbeat
{
public:
    Heartbeat()
    {
        timer_.setTimerType(Qt::PreciseTimer);
        QObject::connect(&timer_, &QTimer::timeout,
                         [this] { longestGap_ = std::max(longestGap_, beat_.restart()); });
        beat_.start();
        timer_.start(5);
    }
    qint64 longestGap() const { return longestGap_; }

private:
    QElapsedTimer beat_;
    QTimer timer_;
    qint64 longestGap_ = 0;
};

} // namespace bench
