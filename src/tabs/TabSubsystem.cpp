#include "TabSubsystem.h"
#include "TabCommands.h"
#include "core/CommandDispatcher.h"
#include "platform/FreeMemory.h"

TabSubsystem::TabSubsystem(MainState& state, commandbar::CommandBar& bar,
                           platform::BrowserViewFactory& factory, platform::ViewStage& stage,
                           ActiveTabDisplay& display, const platform::Clock& clock,
                           CommandDispatcher& commands, BarEventRouter& events)
    : strip_(state, bar, factory, stage), every_(strip_), updater_(bar, strip_), active_(state),
      presenter_(state, bar, strip_, updater_, display, clock, active_),
      menu_(state, bar, strip_, events), backgroundRestore_(strip_, every_),
      rest_(strip_, platform::systemMemoryLow)
{
    QObject::connect(&every_, &EveryTabSignals::windowClosing, &strip_,
                     [this](platform::BrowserView* view, bool isChild) {
                         strip_.pageClosing(view->index(), isChild);
                     });
    QObject::connect(&every_, &EveryTabSignals::newWindowRequested, &strip_,
                     [this](platform::BrowserView* view, platform::NewWindowRequest& request) {
                         strip_.openNewWindow(*view, request);
                     });
    // The tab's own state first, so that the window shows it up to date.
    updater_.follow(every_);
    presenter_.follow(every_);
    active_.follow(every_);
    QObject::connect(&strip_, &TabStrip::changed, &presenter_, [this](const TabChange& change) {
        if (change.kind == TabChange::Kind::Activated)
            presenter_.tabActivated(change);
    });
    registerTabCommands(commands, events, strip_, display);
}
