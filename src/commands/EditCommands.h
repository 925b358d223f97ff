#pragma once
// The Edit menu: each entry runs its editing command on the shown page, and
// each time the menu drops down its entries are disabled until the page
// answers, one by one, whether the command can run now. An answer that comes
// after a newer drop-down, or from a page no longer shown, is dropped.
class BarEventRouter;
class CommandDispatcher;
class Tabs;
struct MainState;

namespace commandbar {
class CommandBar;
} // namespace commandbar

class EditCommands
{
public:
    EditCommands(commandbar::CommandBar& bar, const MainState& state, const Tabs& tabs,
                 CommandDispatcher& commands, BarEventRouter& events);

private:
    void updateMenu();

    commandbar::CommandBar& bar_;
    const MainState& state_;
    const Tabs& tabs_;
    int asking_ = 0;
};
