#include "WidgetViewStage.h"

#include <QLayout>
#include <QVBoxLayout>
#include <QWidget>

namespace platform {

WidgetViewStage::WidgetViewStage(QWidget& clientArea, QWidget& hideFrame)
    : clientArea_(clientArea), hideFrame_(hideFrame)
{
    if (!clientArea_.layout()) {
        auto* layout = new QVBoxLayout(&clientArea_);
        layout->setContentsMargins(0, 0, 0, 0);
    }
    hideFrame_.hide();
}

void WidgetViewStage::show(BrowserView& view)
{
    QWidget* widget = view.widget();
    if (shown_ && shown_ != widget) {
        clientArea_.layout()->removeWidget(shown_);
        shown_->setParent(&hideFrame_);
        shown_->show();
    }
    if (widget->parentWidget() != &clientArea_)
        widget->setParent(&clientArea_);
    clientArea_.layout()->addWidget(widget);
    widget->show();
    widget->raise();
    shown_ = widget;
}

void WidgetViewStage::park(BrowserView& view)
{
    QWidget* widget = view.widget();
    if (widget == shown_) {
        clientArea_.layout()->removeWidget(widget);
        shown_ = nullptr;
    }
    if (widget->parentWidget() != &hideFrame_)
        widget->setParent(&hideFrame_);
    widget->show();
}

} // namespace platform
