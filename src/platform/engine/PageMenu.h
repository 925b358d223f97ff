#pragma once
// The page's own right-click menu, as the engine makes it, with one change:
// its "open link in a new tab / window" entries say so to the view. A window
// the user asked for by choosing one of them is then known for what it is:
// the press that chose the entry lies on the menu, not on the link, and no
// click of the page came with it.
#include <QObject>
#include <QUrl>

class QWebEngineView;

namespace platform {

class PageMenu : public QObject
{
    Q_OBJECT
public:
    explicit PageMenu(QWebEngineView& view);

    // True for the window the user chose from the menu: the next request,
    // when it is for the link the menu was opened on.
    bool takeChosen(const QUrl& requested);

private:
    void show(const QPoint& at);

    QWebEngineView& view_;
    QUrl chosen_;
};

} // namespace platform
