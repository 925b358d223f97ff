#include "RedrawPacer.h"

namespace commandbar {

RedrawPacer::RedrawPacer()
{
    calm_.setInterval(100);
    connect(&calm_, &QTimer::timeout, this, &RedrawPacer::release);
}

void RedrawPacer::changing(QWidget& widget)
{
    // A widget not on screen draws nothing until it shows, and then all of
    // it: held, the window's first frame would show its bars empty.
    if (!widget.isVisible())
        return;
    if (!calm_.isActive()) {
        calm_.start();
        return;
    }
    if (!widget.updatesEnabled())
        return;
    widget.setUpdatesEnabled(false);
    held_.append(&widget);
}

void RedrawPacer::release()
{
    if (held_.isEmpty()) {
        calm_.stop();
        return;
    }
    // Drawing again updates the whole widget: what it held is drawn now.
    for (const QPointer<QWidget>& widget : std::exchange(held_, {}))
        if (widget)
            widget->setUpdatesEnabled(true);
}

} // namespace commandbar
