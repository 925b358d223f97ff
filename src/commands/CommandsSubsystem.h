#pragma once
// The commands subsystem: the commands that act on pages and on the window
// rather than on tabs, each group registering its own handlers and menu
// drop-downs in its constructor.
#include "BarSwitches.h"
#include "DocumentCommands.h"
#include "EditCommands.h"
#include "FullScreen.h"
#include "TextSizeCommands.h"
#include "WindowCommands.h"

class CommandsSubsystem
{
public:
    CommandsSubsystem(QWidget& window, platform::CommandBar& bar, const MainState& state,
                      TabStrip& tabs, ViewEvents& viewEvents, platform::Dialogs& dialogs,
                      platform::Shell& shell, CommandDispatcher& commands, BarEventRouter& events);

    FullScreen& fullScreen() { return fullScreen_; }

private:
    BarSwitches switches_;
    EditCommands editing_;
    TextSizeCommands textSize_;
    DocumentCommands document_;
    WindowCommands window_;
    FullScreen fullScreen_;
};
