#pragma once
// The tabs subsystem: the strip of tabs and their views, the events of those
// views, the tab menu and the active tab's signals, wired to each other and to
// the command bar in the constructor, and its commands registered.
#include "ActiveTabSignals.h"
#include "TabMenu.h"
#include "TabStrip.h"
#include "ViewEvents.h"

class BarEventRouter;
class CommandDispatcher;

class TabSubsystem
{
public:
    TabSubsystem(MainState& state, platform::CommandBar& bar, platform::BrowserViewFactory& factory,
                 platform::ViewStage& stage, ActiveTabDisplay& display,
                 const platform::Clock& clock, CommandDispatcher& commands, BarEventRouter& events);

    TabStrip& strip() { return strip_; }
    ViewEvents& events() { return events_; }
    TabMenu& menu() { return menu_; }
    ActiveTabSignals& active() { return active_; }

private:
    void wireView(platform::BrowserView* view);

    ActiveTabSignals active_;
    TabStrip strip_;
    ViewEvents events_;
    TabMenu menu_;
};
