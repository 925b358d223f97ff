#pragma once
// How long the event loop went without answering, for the hostile-page tests
// and the benchmarks alike.
#include <QElapsedTimer>
#include <QTimer>

// Ticks every 10 ms and keeps the longest time between two ticks.
class LoopWatch
{
public:
    LoopWatch()
    {
        timer_.setInterval(10);
        QObject::connect(&timer_, &QTimer::timeout,
                         [this] { longest_ = std::max(longest_, clock_.restart()); });
        clock_.start();
        timer_.start();
    }
    qint64 longestGapMs() const { return longest_; }

private:
    QTimer timer_;
    QElapsedTimer clock_;
    qint64 longest_ = 0;
};
