#pragma once
// The commands subsystem: the commands that act on pages and on the window
// rather than on tabs, each group registering its own handlers and menu
// drop-downs in its constructor.
#include "BarSwitches.h"
#include "DocumentCommands.h"
#include "EditCommands.h"
#include "TextSizeCommands.h"
#include "WindowCommands.h"

class CommandsSubsystem
{
public:
    CommandsSubsystem(platform::CommandBar& bar, const MainState& state, TabStrip& tabs,
                      platform::Dialogs& dialogs, platform::Shell& shell,
                      CommandDispatcher& commands, BarEventRouter& events);

private:
    BarSwitches switches_;
    EditCommands editing_;
    TextSizeCommands textSize_;
    DocumentCommands document_;
    WindowCommands window_;
};
