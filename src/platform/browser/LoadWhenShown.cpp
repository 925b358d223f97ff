#include "LoadWhenShown.h"

#include <QEvent>

namespace platform {

LoadWhenShown::LoadWhenShown(QWidget& widget, Load load) : widget_(&widget), load_(std::move(load))
{
    widget.installEventFilter(this);
}

bool LoadWhenShown::wait(const QString& address, const QString& title)
{
    address_ = address;
    title_ = title.isEmpty() ? address : title;
    waiting_ = true;
    if (widget_ && widget_->isVisible())
        loadNow();
    return waiting_;
}

void LoadWhenShown::loadNow()
{
    if (!waiting_)
        return;
    waiting_ = false;
    load_(address_);
}

bool LoadWhenShown::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Show && watched == widget_)
        loadNow();
    return false;
}

} // namespace platform
