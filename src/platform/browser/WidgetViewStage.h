#pragma once
// ViewStage over two widgets of the main window: the client area that shows
// the active view and a hidden frame where the others are parked, still
// alive. Both share one top-level window, so a view never changes window.
#include "BrowserView.h"

#include <QPointer>

class QWidget;

namespace platform {

class WidgetViewStage : public ViewStage
{
public:
    WidgetViewStage(QWidget& clientArea, QWidget& hideFrame);
    void show(BrowserView& view) override;
    void park(BrowserView& view) override;

private:
    QWidget& clientArea_;
    QWidget& hideFrame_;
    QPointer<QWidget> shown_;
};

} // namespace platform
