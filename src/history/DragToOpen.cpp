#include "DragToOpen.h"
#include "AddressBar.h"
#include "platform/browser/BrowserView.h"
#include "tabs/EveryTabSignals.h"
#include "tabs/Tabs.h"

#include <QApplication>
#include <QComboBox>
#include <QDrag>
#include <QDropEvent>
#include <QLineEdit>
#include <QMimeData>

DragToOpen::DragToOpen(QComboBox& box, QWidget& pageIcon, Tabs& tabs, const EveryTabSignals& every,
                       AddressBar& addressBar)
    : QObject(&box), box_(box), pageIcon_(pageIcon), tabs_(tabs), addressBar_(addressBar)
{
    box_.lineEdit()->installEventFilter(this);
    pageIcon_.installEventFilter(this);
    connect(&every, &EveryTabSignals::draggedOut, this, &DragToOpen::draggedOut);
}

bool DragToOpen::opensFromDrag(const QString& address)
{
    return QStringView(address).left(8).contains(u"://");
}

void DragToOpen::draggedOut(platform::BrowserView* view, const QString& address)
{
    if (view->index() < 1)
        return;
    // The drag the box took from this page is the one the page now reports.
    if (view == std::exchange(takenFrom_, nullptr).data())
        return;
    if (opensFromDrag(address))
        tabs_.newTab(address, true);
}

platform::BrowserView* DragToOpen::pageOf(const QObject* source) const
{
    const auto* widget = qobject_cast<const QWidget*>(source);
    if (!widget)
        return nullptr;
    for (platform::BrowserView* view : tabs_.tabViews())
        if (QWidget* page = view->widget(); page && (page == widget || page->isAncestorOf(widget)))
            return view;
    return nullptr;
}

bool DragToOpen::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == &pageIcon_)
        return dragIcon(event);
    return dropOnBox(event);
}

bool DragToOpen::dropOnBox(QEvent* event)
{
    if (event->type() != QEvent::DragEnter && event->type() != QEvent::DragMove &&
        event->type() != QEvent::Drop)
        return false;
    auto* drop = static_cast<QDropEvent*>(event);
    const QMimeData* data = drop->mimeData();
    // A page's link carries its words as text and its address as a URL.
    const QString text = data->hasUrls()   ? data->urls().constFirst().toString()
                         : data->hasText() ? data->text()
                                           : QString();
    if (text.isEmpty())
        return false;
    drop->setDropAction(Qt::CopyAction);
    drop->accept();
    if (event->type() == QEvent::Drop) {
        // Only a drag out of a page is reported again by that page; one from
        // anywhere else (the page icon, the favourites) never is.
        takenFrom_ = pageOf(drop->source());
        box_.setEditText(text);
        addressBar_.navigateFromAddressBar(false, AddressBar::Origin::Placed);
    }
    return true;
}

bool DragToOpen::dragIcon(QEvent* event)
{
    if (event->type() == QEvent::MouseButtonPress) {
        pressedAt_ = static_cast<QMouseEvent*>(event)->position().toPoint();
        return false;
    }
    if (event->type() != QEvent::MouseMove)
        return false;
    auto* move = static_cast<QMouseEvent*>(event);
    platform::BrowserView* view = tabs_.currentView();
    if (!(move->buttons() & Qt::LeftButton) || !view ||
        (move->position().toPoint() - pressedAt_).manhattanLength() <
            QApplication::startDragDistance())
        return false;
    auto* drag = new QDrag(&pageIcon_);
    auto* data = new QMimeData;
    data->setText(view->locationUrl());
    drag->setMimeData(data);
    if (const QPixmap picture = pageIcon_.grab(); !picture.isNull())
        drag->setPixmap(picture);
    drag->exec(Qt::CopyAction);
    return true;
}
