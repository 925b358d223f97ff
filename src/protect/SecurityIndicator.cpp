#include "SecurityIndicator.h"
#include "SecurityCaption.h"
#include "commandbar/CommandBar.h"
#include "commandbar/Tool.h"
#include "core/Keys.h"
#include "core/MainState.h"
#include "platform/browser/BrowserView.h"
#include "tabs/EveryTabSignals.h"
#include "tabs/TabStrip.h"

SecurityIndicator::SecurityIndicator(const MainState& state, commandbar::CommandBar& bar,
                                     TabStrip& tabs, const EveryTabSignals& every)
    : bar_(bar), tabs_(tabs)
{
    QObject::connect(&every, &EveryTabSignals::lockLevelChanged, &context_,
                     [this, &state](platform::BrowserView* view, int level) {
                         if (view->index() == state.currentTab)
                             show(level);
                     });
    QObject::connect(&tabs, &TabStrip::changed, &context_, [this](const TabChange& change) {
        if (change.kind == TabChange::Kind::Activated)
            show(change.view->security().lockLevel());
    });
}

void SecurityIndicator::showCurrent()
{
    if (platform::BrowserView* view = tabs_.currentView())
        show(view->security().lockLevel());
}

void SecurityIndicator::show(int level)
{
    commandbar::Tool* tool =
        bar_.tool(QLatin1String(key::statusBar), QLatin1String(key::securityTool));
    if (!tool)
        return;
    const QString caption = securityCaption(tool->tag(), level);
    if (caption != tool->caption())
        tool->setCaption(caption);
}
