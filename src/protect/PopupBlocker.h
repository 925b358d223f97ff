#pragma once
// The popup blocker: the new-window and navigation policy of every view. A
// window the user asked for opens in a new tab; any other, while blocking is
// on, is listed in the blocked list and dropped, or, when it names no address
// yet, goes into the hidden catch view 0, whose first navigation is listed
// and cancelled. What the page knew at the request (the
// focused element, the element under the last press) comes from the page
// agent's records of each tab; whether a button really went down, from the
// click hook. While "Kill Popups by Address" is on, a page of a listed site,
// or one a page went to by itself with no click or key press of the user, is
// stopped, listed, and its tab closed as if the page closed itself. A window
// whose address a filter list names as a popup is listed and never made.
#include "PopupVerdict.h"
#include "platform/browser/PageClick.h"
#include "platform/browser/ViewPolicies.h"

#include <QObject>

class BlockedList;
class ContentFilters;
class KillList;
class EveryTabSignals;
class Tabs;
struct MainState;

namespace platform {
class ClickHook;
class Clock;
class Shell;
} // namespace platform
namespace commandbar {
class CommandBar;
} // namespace commandbar

class PopupBlocker : public platform::NewWindowPolicy, public platform::NavigationPolicy
{
public:
    // A press counts as recent for 55 hundredths of a second.
    static constexpr double pressWindowSeconds = 55.0 / 100;
    // With blocking off, the windows a page opens in a second without the
    // user; the rest are blocked.
    static constexpr int unaskedPerSecond = 3;

    PopupBlocker(const MainState& state, const commandbar::CommandBar& bar, Tabs& tabs,
                 const EveryTabSignals& every, const platform::ClickHook& hook,
                 const platform::Clock& clock, platform::Shell& shell, BlockedList& blocked,
                 const KillList& killList, ContentFilters& filters);

    Verdict decide(platform::BrowserView& opener,
                   const platform::NewWindowRequest& request) override;
    bool allows(platform::BrowserView& view, const platform::NavigationRequest& request) override;

private:
    PopupFacts factsFor(const platform::BrowserView& opener) const;
    // A page moving its tab on with no click or key press of the user.
    bool unasked(const platform::BrowserView& view,
                 const platform::NavigationRequest& request) const;
    void record(const QString& address);
    void sound();
    // Counts a window the opener asks for without the user; false past
    // unaskedPerSecond in the current second.
    bool withinBurst(const platform::BrowserView& opener);

    struct Records
    {
        platform::PageClick lastPress;
        platform::PageClick lastEvent;
        bool pressed = false;
        bool any = false;
    };
    struct Burst
    {
        double start = -1;
        int count = 0;
    };

    const MainState& state_;
    const commandbar::CommandBar& bar_;
    Tabs& tabs_;
    const platform::ClickHook& hook_;
    ContentFilters& filters_;
    const platform::Clock& clock_;
    platform::Shell& shell_;
    BlockedList& blocked_;
    const KillList& killList_;
    // Ends every connection to the views when the blocker goes.
    QObject context_;
};
