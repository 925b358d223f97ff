#include "DragOutWatch.h"
#include "PageAgent.h"

#include <QCursor>
#include <QEvent>
#include <QWebEngineView>

namespace platform {

DragOutWatch::DragOutWatch(QWebEngineView& view, PageAgentBridge& agent) : QObject(&view)
{
    // The widget that draws the page passes drags on to the view.
    view.installEventFilter(this);
    connect(&agent, &PageAgentBridge::dragStarted, this, [this](const QString& address) {
        carried_ = address;
        inside_ = true;
    });
    connect(&agent, &PageAgentBridge::dragEnded, this, [this] {
        if (!carried_.isEmpty() && !inside_)
            emit draggedOut(carried_);
        carried_.clear();
    });
}

bool DragOutWatch::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
        inside_ = true;
        break;
    case QEvent::DragLeave: {
        // A drop the page refuses leaves too, with the pointer still over it.
        auto* view = static_cast<QWidget*>(watched);
        inside_ = view->rect().contains(view->mapFromGlobal(QCursor::pos()));
        break;
    }
    default:
        break;
    }
    return false;
}

} // namespace platform
