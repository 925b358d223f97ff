#pragma once
// Page protection: the popup blocker as the policy of every view and every
// new window, the list of what it blocked and of closed pages, the sites whose
// pages it kills ("Add Page to Block List" lists the tab's site), the pictures
// and Flash it takes out of pages, the ads and trackers the filter lists
// keep out, the security indicator, and the switches of the Tools menu.
#include "BlockedList.h"
#include "ContentBlocker.h"
#include "ContentFilters.h"
#include "KillList.h"
#include "PopupBlocker.h"
#include "SecurityIndicator.h"

#include <functional>

namespace platform {
class BrowserViewFactory;
class Dialogs;
class Shell;
} // namespace platform

class ProtectSubsystem
{
public:
    ProtectSubsystem(const MainState& state, commandbar::CommandBar& bar, TabStrip& tabs,
                     const EveryTabSignals& every, ActiveTabPresenter& events,
                     platform::BrowserViewFactory& views, const platform::ClickHook& hook,
                     const platform::Clock& clock, platform::Shell& shell,
                     platform::Dialogs& dialogs, ContentFilters::Captions captions,
                     CommandDispatcher& commands);

    // Runs recaption (a new language) and keeps what the status tools show:
    // the blocked count and the current page's security in the new labels.
    void relabel(const std::function<void()>& recaption);

private:
    BlockedList blocked_;
    KillList killList_;
    ContentFilters filters_;
    PopupBlocker blocker_;
    platform::ScopedNavigationPolicy blockerAsked_;
    ContentBlocker content_;
    SecurityIndicator security_;
};
