#include "BarEvents.h"
#include "app/Keys.h"
#include "platform/commandbar/CommandBar.h"

BarEvents::BarEvents(MainState& state, platform::CommandBar& bar) : state_(state), bar_(bar) {}

void BarEvents::dropDown(platform::Band* band)
{
    if (!band)
        return;
    const QString& name = band->key();
    if (name == QLatin1String(key::viewMenu)) {
        const std::pair<const char*, const char*> switches[] = {
            {key::showMainBar, key::mainBar},
            {key::showAddressBar, key::addressBar},
            {key::showStatusBar, key::statusBar}};
        for (const auto& [tool, shown] : switches)
            if (platform::Tool* t = bar_.tool(key::viewMenu, tool))
                if (const platform::Band* b = bar_.band(shown))
                    t->setChecked(b->visible());
    } else if (name == QLatin1String("SysCustomize") && state_.tabMenuArmed) {
        state_.tabMenuPending = false;
        bar_.cancelCustomize();
        bar_.popUp(bar_.band(key::tabMenu));
    }
}

void BarEvents::bandShown(platform::Band* band)
{
    if (band && band->key() == QLatin1String(key::tabMenu))
        state_.tabMenuPending = true;
}
