#include "BarSwitches.h"
#include "core/BarEventRouter.h"
#include "core/CommandDispatcher.h"
#include "core/Keys.h"
#include "platform/commandbar/CommandBar.h"

namespace {

struct BandSwitch
{
    cmd::Command command;
    const char* tool;
    const char* band;
};

const BandSwitch bandSwitches[] = {
    {cmd::Command::ShowMainBar, key::showMainBar, key::mainBar},
    {cmd::Command::ShowAddressBar, key::showAddressBar, key::addressBar},
    {cmd::Command::ShowStatusBar, key::showStatusBar, key::statusBar},
};

} // namespace

BarSwitches::BarSwitches(platform::CommandBar& bar, CommandDispatcher& commands,
                         BarEventRouter& events)
    : bar_(bar)
{
    for (const BandSwitch& s : bandSwitches) {
        commands.on(s.command, [this, band = s.band](const CommandContext& c) {
            platform::Band* shown = bar_.band(band);
            if (!shown)
                return;
            shown->setVisible(!c.tool.checked());
            c.tool.setChecked(!c.tool.checked());
            bar_.recalcLayout();
        });
    }

    events.onDropDown(QLatin1String(key::viewMenu), [this](platform::Band&) {
        for (const BandSwitch& s : bandSwitches)
            if (platform::Tool* tool = bar_.tool(key::viewMenu, s.tool))
                if (const platform::Band* band = bar_.band(s.band))
                    tool->setChecked(band->visible());
    });
}
