#pragma once
// "b_showfav" and "b_history": each shows its page of the side bar, or hides
// the side bar when its page is the one shown. Their checks, in the View menu
// and on the main toolbar alike, follow what the side bar shows, however it
// changed.
#include <QString>

class BarEventRouter;
class CommandDispatcher;

namespace commandbar {
class CommandBar;
} // namespace commandbar

class SideBarSwitches
{
public:
    SideBarSwitches(commandbar::CommandBar& bar, CommandDispatcher& commands,
                    BarEventRouter& events);

    void toggle(const QString& childKey);

private:
    void updateChecks();

    commandbar::CommandBar& bar_;
};
