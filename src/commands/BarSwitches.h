#pragma once
// The commands that keep their state in a tool's check: the three band
// switches of the View menu, which show or hide their band, and the popup
// switches of the Tools menu, which other parts read. The View menu shows
// each band switch as its band is, whatever hid it.
class BarEventRouter;
class CommandDispatcher;

namespace platform {
class CommandBar;
}

class BarSwitches
{
public:
    BarSwitches(platform::CommandBar& bar, CommandDispatcher& commands, BarEventRouter& events);

private:
    platform::CommandBar& bar_;
};
