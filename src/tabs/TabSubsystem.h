#pragma once
// The tabs subsystem: the strip of tabs and their views, the events of those
// views, the tab menu and the active tab's signals, wired to each other and to
// the command bar in the constructor, and its commands registered. Every
// tab's events reach the rest of the program through every().
#include "ActiveTabSignals.h"
#include "EveryTabSignals.h"
#include "TabMenu.h"
#include "TabStrip.h"
#include "ViewEvents.h"

class BarEventRouter;
class CommandDispatcher;

class TabSubsystem
{
public:
    TabSubsystem(MainState& state, commandbar::CommandBar& bar,
                 platform::BrowserViewFactory& factory, platform::ViewStage& stage,
                 ActiveTabDisplay& display, const platform::Clock& clock,
                 CommandDispatcher& commands, BarEventRouter& events);

    TabStrip& strip() { return strip_; }
    EveryTabSignals& every() { return every_; }
    ViewEvents& events() { return events_; }
    TabMenu& menu() { return menu_; }
    ActiveTabSignals& active() { return active_; }

private:
    TabStrip strip_;
    EveryTabSignals every_;
    ActiveTabSignals active_;
    ViewEvents events_;
    TabMenu menu_;
};
