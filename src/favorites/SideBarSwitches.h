#pragma once
// "b_showfav" and "b_history": each shows its page of the side bar, or hides
// the side bar when its page is the one shown. Their checks, in the View menu
// and on the main toolbar alike, follow what the side bar shows, however it
// changed.
#include <QString>

class BarEventRouter;
class CommandDispatcher;

namespace platform {
class CommandBar;
}

class SideBarSwitches
{
public:
    SideBarSwitches(platform::CommandBar& bar, CommandDispatcher& commands, BarEventRouter& events);

    void toggle(const QString& childKey);

private:
    void updateChecks();

    platform::CommandBar& bar_;
};
