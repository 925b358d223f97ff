#pragma once
// The Text Size menu: five entries that set the shown page's zoom level, and
// on each drop-down the one entry of the level the page reports is checked.
// A blank tab leaves the checks as they were.
class BarEventRouter;
class CommandDispatcher;
class Tabs;

namespace commandbar {
class CommandBar;
} // namespace commandbar

class TextSizeCommands
{
public:
    TextSizeCommands(commandbar::CommandBar& bar, const Tabs& tabs, CommandDispatcher& commands,
                     BarEventRouter& events);

private:
    void markLevel();

    commandbar::CommandBar& bar_;
    const Tabs& tabs_;
};
