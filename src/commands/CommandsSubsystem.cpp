#include "CommandsSubsystem.h"

CommandsSubsystem::CommandsSubsystem(QWidget& window, platform::CommandBar& bar,
                                     const MainState& state, TabStrip& tabs, ViewEvents& viewEvents,
                                     platform::Dialogs& dialogs, platform::Shell& shell,
                                     CommandDispatcher& commands, BarEventRouter& events)
    : switches_(bar, commands, events), editing_(bar, state, tabs, commands, events),
      textSize_(bar, tabs, commands, events), document_(dialogs, commands),
      window_(dialogs, shell, bar, commands), fullScreen_(window, bar, tabs, viewEvents, commands)
{
}
