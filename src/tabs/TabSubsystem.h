#pragma once
// The tabs subsystem: the strip of tabs and their views, every tab's and the
// active tab's signals, the tab band's updater, what the window shows of the
// active tab, the tab menu, the loading of restored tabs in the background and the rest of tabs out
// of sight, wired to each other and to the command bar in the constructor, and its commands
// registered. Every tab's events reach the rest of the program through every().
#include "ActiveTabPresenter.h"
#include "ActiveTabSignals.h"
#include "BackgroundRestore.h"
#include "EveryTabSignals.h"
#include "TabBandUpdater.h"
#include "TabMenu.h"
#include "TabRest.h"
#include "TabStrip.h"

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
    TabBandUpdater& updater() { return updater_; }
    ActiveTabPresenter& presenter() { return presenter_; }
    TabMenu& menu() { return menu_; }
    ActiveTabSignals& active() { return active_; }
    BackgroundRestore& backgroundRestore() { return backgroundRestore_; }
    TabRest& rest() { return rest_; }

private:
    TabStrip strip_;
    EveryTabSignals every_;
    TabBandUpdater updater_;
    ActiveTabSignals active_;
    ActiveTabPresenter presenter_;
    TabMenu menu_;
    BackgroundRestore backgroundRestore_;
    TabRest rest_;
};
