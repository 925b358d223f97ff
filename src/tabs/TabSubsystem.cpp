#include "TabSubsystem.h"
#include "TabCommands.h"
#include "core/CommandDispatcher.h"

TabSubsystem::TabSubsystem(MainState& state, platform::CommandBar& bar,
                           platform::BrowserViewFactory& factory, platform::ViewStage& stage,
                           ActiveTabDisplay& display, const platform::Clock& clock,
                           CommandDispatcher& commands, BarEventRouter& events)
    : active_(state), strip_(state, bar, factory, stage),
      events_(state, bar, strip_, display, clock, active_), menu_(state, bar, strip_, events)
{
    QObject::connect(&strip_, &TabStrip::viewCreated, &strip_,
                     [this](platform::BrowserView* view) { wireView(view); });
    QObject::connect(&strip_, &TabStrip::newTabActivated, &events_, &ViewEvents::newTabActivated);
    QObject::connect(&strip_, &TabStrip::activeTabRefreshed, &events_,
                     &ViewEvents::activeTabRefreshed);
    QObject::connect(&strip_, &TabStrip::tabLeft, &events_, &ViewEvents::tabLeft);
    registerTabCommands(commands, events, strip_, display);
}

void TabSubsystem::wireView(platform::BrowserView* view)
{
    const int index = view->index();
    QObject::connect(view, &platform::BrowserView::windowClosing, &strip_,
                     [this, index](bool isChild) { strip_.pageClosing(index, isChild); });
    QObject::connect(view, &platform::BrowserView::newWindowRequested, &strip_,
                     [this, view](platform::NewWindowRequest& request) {
                         strip_.openNewWindow(*view, request);
                     });
    events_.watch(view);
    active_.watch(view);
}
