#include "TabMenu.h"
#include "Ellipsis.h"
#include "TabStrip.h"
#include "commandbar/CommandBar.h"
#include "core/BarEventRouter.h"
#include "core/Keys.h"
#include "core/ToolKeys.h"

TabMenu::TabMenu(TabMenuState& state, commandbar::CommandBar& bar, const TabStrip& tabs,
                 BarEventRouter& events)
    : state_(state), bar_(bar), tabs_(tabs)
{
    connect(&bar_, &commandbar::CommandBar::toolHovered, this, &TabMenu::reportTool);
    events.onDropDown(QStringLiteral("SysCustomize"), [this](commandbar::Band&) {
        if (!state_.tabMenuArmed)
            return;
        state_.tabMenuPending = false;
        bar_.cancelCustomize();
        bar_.popUp(bar_.band(key::tabMenu));
    });
    events.onBandShown(QLatin1String(key::tabMenu),
                       [this](commandbar::Band&) { state_.tabMenuPending = true; });
}

void TabMenu::reportTool(commandbar::Tool* tool)
{
    const QString name = tool ? tool->key() : QString();
    if (!keys::isTabKey(name)) {
        state_.tabMenuArmed = false;
        if (state_.tabMenuPending)
            state_.targetTab = 0;
        return;
    }
    state_.tabMenuArmed = true;
    const int index = keys::tabIndex(name);
    QString address;
    if (const platform::BrowserView* v = tabs_.view(index))
        address = v->locationUrl().replace(QLatin1String("%20"), QLatin1String(" "));
    const QString shortAddress = ellipsis(address, tooltipWidth);
    tool->setTooltip(shortAddress.isEmpty() ? QStringLiteral("Blank Page") : shortAddress);
    state_.targetTab = index;
}
