#include "SideBarSwitches.h"
#include "commandbar/CommandBar.h"
#include "core/BarEventRouter.h"
#include "core/CommandDispatcher.h"
#include "core/Keys.h"

SideBarSwitches::SideBarSwitches(commandbar::CommandBar& bar, CommandDispatcher& commands,
                                 BarEventRouter& events)
    : bar_(bar)
{
    commands.on(cmd::Command::FavouritesPanel,
                [this](const CommandContext&) { toggle(key::favouritesPage); });
    commands.on(cmd::Command::HistoryPanel,
                [this](const CommandContext&) { toggle(key::historyPage); });
    events.onBandShown(key::leftBar, [this](commandbar::Band&) { updateChecks(); });
    // However the side bar went (the bar's own right-click menu, say), the
    // switches follow it.
    QObject::connect(&bar_, &commandbar::CommandBar::bandChanged, &bar_,
                     [this](commandbar::Band* band) {
                         if (band->key() == QLatin1String(key::leftBar))
                             updateChecks();
                     });
    QObject::connect(&bar_, &commandbar::CommandBar::childBandChanged, &bar_,
                     [this] { updateChecks(); });
}

void SideBarSwitches::toggle(const QString& childKey)
{
    commandbar::Band* side = bar_.band(key::leftBar);
    if (!side)
        return;
    if (side->visible() && side->currentChild() == childKey) {
        side->setVisible(false);
    } else {
        side->setCurrentChild(childKey);
        side->setVisible(true);
    }
    updateChecks();
    bar_.recalcLayout();
}

void SideBarSwitches::updateChecks()
{
    const commandbar::Band* side = bar_.band(key::leftBar);
    const bool shown = side && side->visible();
    for (const QLatin1String band : {key::mainBar, key::viewMenu}) {
        if (commandbar::Tool* tool = bar_.tool(band, key::favouritesSwitch))
            tool->setChecked(shown && side->currentChild() == QLatin1String(key::favouritesPage));
        if (commandbar::Tool* tool = bar_.tool(band, key::historySwitch))
            tool->setChecked(shown && side->currentChild() == QLatin1String(key::historyPage));
    }
}
