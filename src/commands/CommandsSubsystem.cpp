#include "CommandsSubsystem.h"
#include "core/CommandDispatcher.h"
#include "platform/browser/BrowserView.h"
#include "tabs/TabSubsystem.h"

CommandsSubsystem::CommandsSubsystem(QWidget& window, commandbar::CommandBar& bar,
                                     const MainState& state, TabSubsystem& tabs,
                                     platform::Dialogs& dialogs, platform::Shell& shell,
                                     platform::BrowserViewFactory& engine,
                                     CommandDispatcher& commands, BarEventRouter& events)
    : switches_(bar, commands, events), editing_(bar, state, tabs.strip(), commands, events),
      textSize_(bar, tabs.strip(), commands, events), document_(dialogs, commands),
      window_(dialogs, shell, bar, engine.privateData(), commands),
      fullScreen_(window, bar, tabs.strip(), tabs.presenter(), commands),
      page_(bar, tabs.strip(), engine.connection(), commands, events),
      links_(tabs.strip(), dialogs, commands),
      quickSave_(window, state, dialogs, shell, engine, commands),
      findBar_(new FindBar(tabs.strip(), tabs.active(), &window))
{
    commands.on(cmd::Command::Find, [this](const CommandContext&) { findBar_->open(); });
}
