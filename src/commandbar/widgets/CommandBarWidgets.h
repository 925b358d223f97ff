#pragma once
// Shows a CommandBar in a QMainWindow: the menu bar band as its menu bar,
// popup bands as menus, toolbars and the status band as tool bars in their
// dock lines, the side bar as a dock widget with one page per child band. One
// QAction stands for each tool copy; model changes update the widgets (the
// tool bars' redraws paced), and
// clicks, hovers, drop-downs, double and middle clicks go back to the model.
#include "RedrawPacer.h"
#include "ToolBarLines.h"
#include "ToolShortcuts.h"
#include "commandbar/CommandBar.h"

#include <QHash>
#include <QPointer>
#include <QSet>
#include <QTimer>

class QAction;
class QMainWindow;
class QMenu;
class QTabWidget;
class QToolBar;

namespace commandbar {

class CommandBarWidgets : public QObject
{
    Q_OBJECT
public:
    CommandBarWidgets(CommandBar& bar, QMainWindow& window, RedrawPacer& pacer);
    ~CommandBarWidgets() override;

    QWidget* container(const Band* band) const { return containers_.value(band); }
    QAction* action(const Tool* tool) const { return actions_.value(tool); }
    QMenu* menu(const QString& bandKey) const;

    const ToolBarLines& lines() const { return lines_; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void createContainer(Band& band);
    void addBand(Band* band);
    void removeBand(Band* band);
    void insertAction(Band* band, int index);
    void removeAction(Band* band, int index);
    void toolChanged(Tool* tool);
    void updateAction(Tool* tool);
    void flushStatus();
    void updateBand(Band* band);
    void showCustomizeMenu(const QPoint& globalPos);
    void popUp(Band* band);

    CommandBar& bar_;
    QMainWindow& window_;
    RedrawPacer& pacer_;
    QHash<const Band*, QWidget*> containers_;
    ToolBarLines lines_;
    QHash<const Tool*, QAction*> actions_;
    QSet<const QAction*> toolActions_;
    QHash<const QObject*, Tool*> buttonTools_;
    ToolShortcuts shortcuts_;
    QHash<const Band*, QTabWidget*> sidePages_;
    QSet<const QObject*> statusBars_;
    QSet<Tool*> pendingStatus_;
    QTimer statusCalm_;
    // Actions taken out, deleted together once control returns to the event loop.
    QPointer<QObject> removed_;
};

} // namespace commandbar
