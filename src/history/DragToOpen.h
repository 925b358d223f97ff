#pragma once
// Drags in and out of pages: a link or picture dragged out of a page opens in
// a new tab; text dropped on the address box becomes the address and is
// opened; the page icon beside the box drags away the current address.
#include <QObject>
#include <QPoint>

class AddressBar;
class QComboBox;
class QWidget;
class TabStrip;

class DragToOpen : public QObject
{
    Q_OBJECT
public:
    DragToOpen(QComboBox& box, QWidget& pageIcon, TabStrip& tabs, AddressBar& addressBar);

    // Only what names a scheme within its first eight characters opens.
    static bool opensFromDrag(const QString& address);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void draggedOut(const QString& address);
    bool dropOnBox(QEvent* event);
    bool dragIcon(QEvent* event);

    QComboBox& box_;
    QWidget& pageIcon_;
    TabStrip& tabs_;
    AddressBar& addressBar_;
    QPoint pressedAt_;
    // The address box took the drag a page is about to report as gone out.
    bool takenByBox_ = false;
};
