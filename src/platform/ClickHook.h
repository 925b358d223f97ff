#pragma once
// Watches every mouse press in the program while started and keeps the time
// and screen point of the last one: the popup blocker and drag-to-open ask it
// whether the user really clicked. Keeps the time of the last key press too,
// the keyboard's way of following a link.
#include "Clock.h"

#include <QObject>
#include <QPoint>

namespace platform {

class ClickHook : public QObject
{
    Q_OBJECT
public:
    explicit ClickHook(const Clock& clock) : clock_(clock) {}
    ~ClickHook() override { stop(); }

    void start();
    void stop();
    bool running() const { return running_; }
    double lastPressTime() const { return lastPressTime_; }
    QPoint lastPressPoint() const { return lastPressPoint_; }
    double lastKeyTime() const { return lastKeyTime_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    const Clock& clock_;
    bool running_ = false;
    double lastPressTime_ = -1;
    QPoint lastPressPoint_;
    double lastKeyTime_ = -1;
};

} // namespace platform
