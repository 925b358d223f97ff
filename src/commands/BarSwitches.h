#pragma once
// The three band switches of the View menu, which show or hide their band
// and keep the state in their tool's check. The View menu shows each band
// switch as its band is, whatever hid it.
class BarEventRouter;
class CommandDispatcher;

namespace commandbar {
class CommandBar;
} // namespace commandbar

class BarSwitches
{
public:
    BarSwitches(commandbar::CommandBar& bar, CommandDispatcher& commands, BarEventRouter& events);

private:
    commandbar::CommandBar& bar_;
};
