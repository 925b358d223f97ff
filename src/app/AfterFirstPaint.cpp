#include "AfterFirstPaint.h"

#include <QEvent>
#include <QTimer>

namespace {

class FirstPaintWatch : public QObject
{
public:
    FirstPaintWatch(QWidget& window, std::function<void()> work)
        : QObject(&window), work_(std::move(work))
    {
        window.installEventFilter(this);
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            watched->removeEventFilter(this);
            // Queued: the painted window reaches the screen before the work starts.
            QTimer::singleShot(0, parent(), std::exchange(work_, {}));
            deleteLater();
        }
        return false;
    }

private:
    std::function<void()> work_;
};

} // namespace

void afterFirstPaint(QWidget& window, std::function<void()> work)
{
    new FirstPaintWatch(window, std::move(work));
}
