#pragma once
// Drags in and out of pages: a link or picture dragged out of a page opens in
// a new tab; text dropped on the address box becomes the address and is
// opened; the page icon beside the box drags away the current address.
#include <QObject>
#include <QPoint>
#include <QPointer>

class AddressBar;
class EveryTabSignals;
namespace platform {
class BrowserView;
} // namespace platform
class QComboBox;
class QWidget;
class Tabs;

class DragToOpen : public QObject
{
    Q_OBJECT
public:
    DragToOpen(QComboBox& box, QWidget& pageIcon, Tabs& tabs, const EveryTabSignals& every,
               AddressBar& addressBar);

    // Only what names a scheme within its first eight characters opens.
    static bool opensFromDrag(const QString& address);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void draggedOut(platform::BrowserView* view, const QString& address);
    bool dropOnBox(QEvent* event);
    bool dragIcon(QEvent* event);
    // The tab whose page a drag came from; nullptr for any other source.
    platform::BrowserView* pageOf(const QObject* source) const;

    QComboBox& box_;
    QWidget& pageIcon_;
    Tabs& tabs_;
    AddressBar& addressBar_;
    QPoint pressedAt_;
    // The tab whose page is about to report as gone out the drag the address
    // box took from it.
    QPointer<platform::BrowserView> takenFrom_;
};
