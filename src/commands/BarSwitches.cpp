#include "BarSwitches.h"
#include "commandbar/CommandBar.h"
#include "core/BarEventRouter.h"
#include "core/CommandDispatcher.h"
#include "core/Keys.h"
#include "core/Switches.h"

namespace {

struct BandSwitch
{
    cmd::Command command;
    QLatin1String band;
};

const BandSwitch bandSwitches[] = {
    {cmd::Command::ShowMainBar, key::mainBar},
    {cmd::Command::ShowAddressBar, key::addressBar},
    {cmd::Command::ShowStatusBar, key::statusBar},
};

} // namespace

BarSwitches::BarSwitches(commandbar::CommandBar& bar, CommandDispatcher& commands,
                         BarEventRouter& events)
    : bar_(bar)
{
    for (const BandSwitch& s : bandSwitches) {
        commands.on(s.command, [this, s](const CommandContext&) {
            commandbar::Band* shown = bar_.band(s.band);
            if (!shown)
                return;
            // The band, not its check: a band can be hidden another way.
            const bool show = !shown->visible();
            shown->setVisible(show);
            switches::set(bar_, s.command, show);
            bar_.recalcLayout();
        });
    }

    events.onDropDown(QLatin1String(key::viewMenu), [this](commandbar::Band&) {
        for (const BandSwitch& s : bandSwitches)
            if (const commandbar::Band* band = bar_.band(s.band))
                switches::set(bar_, s.command, band->visible());
    });
}
