#pragma once
// The open tabs: one browser view per tab, numbered by view index (never
// reused) and placed by strip position, each shown as a tool on the tab
// band. Opens, activates and closes tabs and keeps the tab state in step. The
// active view is on the stage; all others are parked, alive. Observers hear
// every change as one record.
#include "Tab.h"
#include "TabBand.h"
#include "TabChange.h"
#include "Tabs.h"
#include "core/MainState.h"
#include "core/TabPositions.h"
#include "platform/browser/BrowserView.h"
#include "platform/browser/ViewPolicies.h"

#include <QObject>
#include <map>

class TabStrip : public QObject, public Tabs
{
    Q_OBJECT
public:
    TabStrip(MainState& state, commandbar::CommandBar& bar, platform::BrowserViewFactory& factory,
             platform::ViewStage& stage);
    ~TabStrip() override;

    // View 0: never a tab, never shown.
    void createCatchView();
    // Start-up: view 1 as the one active tab "New".
    void openFirstTab();

    Tab* tab(int index) const override;
    platform::BrowserView* view(int index) const override;
    platform::BrowserView* currentView() const override { return view(state_.currentTab); }
    std::vector<platform::BrowserView*> tabViews() const override;
    const TabBand& band() const { return band_; }
    TabBand& band() { return band_; }
    const TabPositions& positions() const { return positions_; }
    TabPositions& positions() { return positions_; }

    int newTab(const QString& address, bool activate) override;
    // A background tab that stands for its page and loads it when first
    // shown: how restored pages open.
    int openWhenShown(const QString& address, const QString& title);
    // The current tab again changes nothing, unless something beside the
    // strip moved (iconMoved): then the strip is laid out anew around it.
    void activateTab(int index);
    void openEntry(const QString& address) override;
    // 0 means the active tab.
    void closeTab(int index);
    void closeAllTabs();
    void closeOtherTabs(int index);
    void pageClosing(int index, bool isChildWindow) override;
    void refreshActiveTab();
    // A page asked for a new window. The new-window policy decides; an allowed
    // one opens in a new tab, in the background when the page asked for that.
    // Refused while the program shuts down.
    void openNewWindow(platform::BrowserView& opener, platform::NewWindowRequest& request);
    void setNewWindowPolicy(platform::NewWindowPolicy& policy) { newWindowPolicy_ = &policy; }

signals:
    void changed(const TabChange& change);

private:
    void layOutAgain();
    void showActive(platform::BrowserView* left);
    void closeEvery(TabChange::Cause cause);
    void retire(int index, int position, TabChange::Cause cause);
    // Retires a tab and drops its tool, with no choice of a tab to show.
    void drop(int index, int position, TabChange::Cause cause);

    MainState& state_;
    commandbar::CommandBar& bar_;
    platform::BrowserViewFactory& factory_;
    platform::ViewStage& stage_;
    std::map<int, std::unique_ptr<Tab>> tabs_;
    TabBand band_;
    TabPositions positions_;
    platform::OpenEveryNewWindow openEveryNewWindow_;
    platform::NewWindowPolicy* newWindowPolicy_ = &openEveryNewWindow_;
};
