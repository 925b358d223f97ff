#pragma once
// The Text Size menu: five entries that set the shown page's zoom level, and
// on each drop-down the one entry of the level the page reports is checked.
// A blank tab leaves the checks as they were.
class BarEventRouter;
class CommandDispatcher;
class TabStrip;

namespace platform {
class CommandBar;
}

class TextSizeCommands
{
public:
    TextSizeCommands(platform::CommandBar& bar, const TabStrip& tabs, CommandDispatcher& commands,
                     BarEventRouter& events);

private:
    void markLevel();

    platform::CommandBar& bar_;
    const TabStrip& tabs_;
};
