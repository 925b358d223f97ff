#pragma once
// The open tabs: one browser view per tab, numbered by view index (never
// reused) and placed by strip position (kept in the view's tag), each shown
// as a tool "tabs-" + index on the tab band. Opens, activates and closes tabs
// and keeps MainState's tab fields in step. The active view is on the stage;
// all others are parked, alive.
#include "app/MainState.h"
#include "platform/browser/BrowserView.h"
#include "platform/commandbar/SkinLoader.h"

#include <QObject>
#include <map>
#include <optional>

namespace platform {
class Band;
class CommandBar;
class Tool;
} // namespace platform

class TabStrip : public QObject
{
    Q_OBJECT
public:
    TabStrip(MainState& state, platform::CommandBar& bar, platform::BrowserViewFactory& factory,
             platform::ViewStage& stage);
    ~TabStrip() override;

    // What the tab band of a skin lacks for the strip to work.
    static std::optional<platform::SkinError> skinProblem(const platform::CommandBar& bar);

    // View 0: never a tab, never shown.
    void createCatchView();
    // Start-up: view 1 as the one active tab "New".
    void openFirstTab();

    platform::BrowserView* view(int index) const;
    platform::BrowserView* currentView() const { return view(state_.currentTab); }

    void addTabTool(const QString& caption, int index, bool withIcon);
    // Returns the new view index, or 0 when no more views can be numbered.
    int newTab(const QString& address, bool activate);
    void activateTab(int index);
    // 0 means the active tab.
    void closeTab(int index);
    void closeAllTabs();
    void closeOtherTabs(int index);
    // A page asked to close its own window.
    void pageClosing(int index, bool isChildWindow);
    // The command bar reports the tool under the pointer.
    void reportTool(platform::Tool* tool);
    void refreshActiveTab();
    // A page asked for a new window: it opens in a new tab, in the background
    // when the page asked for that. Refused while the program shuts down.
    void openNewWindow(platform::NewWindowRequest& request);

signals:
    void viewCreated(platform::BrowserView* view);
    // A new tab became the active one.
    void newTabActivated(platform::BrowserView* view);
    void activeTabRefreshed(platform::BrowserView* view);
    // The active tab is being left for another; it is still the current tab.
    void tabLeft(platform::BrowserView* view);
    // A page that had an address was closed: short title and address.
    void pageClosed(const QString& shortTitle, const QString& address);

private:
    platform::Band& band() const;
    platform::Tool* tabTool(int index) const;
    void setTabChecked(int index, bool checked);
    int lastPosition() const { return int(state_.tabView.size()) - 1; }
    void shiftLeftFrom(int position);
    void removeTabTool(int index);
    void retire(int index);

    MainState& state_;
    platform::CommandBar& bar_;
    platform::BrowserViewFactory& factory_;
    platform::ViewStage& stage_;
    std::map<int, platform::BrowserView*> views_;
};
