#pragma once
// The tab's own menu: while the pointer is over a tab, the bar's customise
// menu gives way to tab_Menu, whose commands then act on that tab. Keeps the
// tab entry's tooltip (its address) up to date as the pointer reaches it.
#include "core/TabMenuState.h"

#include <QObject>

namespace commandbar {
class CommandBar;
class Tool;
} // namespace commandbar
class BarEventRouter;
class TabStrip;

class TabMenu : public QObject
{
    Q_OBJECT
public:
    TabMenu(TabMenuState& state, commandbar::CommandBar& bar, const TabStrip& tabs,
            BarEventRouter& events);

    // The command bar reports the tool under the pointer.
    void reportTool(commandbar::Tool* tool);

    static constexpr int tooltipWidth = 50;

private:
    TabMenuState& state_;
    commandbar::CommandBar& bar_;
    const TabStrip& tabs_;
};
