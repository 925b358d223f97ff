#include "ClickHook.h"

#include <QCoreApplication>
#include <QMouseEvent>

namespace platform {

void ClickHook::start()
{
    if (running_ || !QCoreApplication::instance())
        return;
    QCoreApplication::instance()->installEventFilter(this);
    running_ = true;
}

void ClickHook::stop()
{
    if (!running_)
        return;
    if (QCoreApplication::instance())
        QCoreApplication::instance()->removeEventFilter(this);
    running_ = false;
}

bool ClickHook::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonPress) {
        lastPressTime_ = clock_.secondsSinceMidnight();
        lastPressPoint_ = static_cast<QMouseEvent*>(event)->globalPosition().toPoint();
    } else if (event->type() == QEvent::KeyPress) {
        lastKeyTime_ = clock_.secondsSinceMidnight();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace platform
