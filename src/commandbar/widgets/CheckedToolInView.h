#pragma once
// Keeps the checked tool of a toolbar in view when the bar is too narrow for
// all its tools (the active tab among many): the tools before it are left out
// of the bar until it shows, and a button at the bar's start then lists every
// tool of the band. The tools after it stay in the bar's own overflow list.
#include <QHash>
#include <QList>
#include <QObject>
#include <QTimer>

class QAction;
class QMenu;
class QToolBar;

namespace commandbar {

class Band;
class CommandBar;
class Tool;

class CheckedToolInView : public QObject
{
public:
    CheckedToolInView(QToolBar& toolBar, CommandBar& bar, const Band& band,
                      const QHash<const Tool*, QAction*>& actions);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void update();
    void fillList();

    QToolBar& toolBar_;
    CommandBar& bar_;
    const Band& band_;
    const QHash<const Tool*, QAction*>& actions_;
    QList<QAction*> leftOut_;
    struct Layout
    {
        const QAction* checked = nullptr;
        int width = 0;
        int tools = 0;
        int widths = 0;
        bool operator==(const Layout&) const = default;
    };
    Layout last_;
    QAction* listAction_;
    QMenu* list_;
    // Changes come in bursts (a tab opened: a tool added, then checked).
    QTimer pending_;
};

} // namespace commandbar
