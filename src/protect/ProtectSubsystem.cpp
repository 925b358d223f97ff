#include "ProtectSubsystem.h"
#include "core/CommandDispatcher.h"
#include "core/MainState.h"
#include "platform/browser/BrowserView.h"
#include "platform/commandbar/Tool.h"
#include "tabs/TabStrip.h"

ProtectSubsystem::ProtectSubsystem(const MainState& state, platform::CommandBar& bar,
                                   TabStrip& tabs, platform::BrowserViewFactory& views,
                                   const platform::ClickHook& hook, const platform::Clock& clock,
                                   platform::Shell& shell, CommandDispatcher& commands)
    : blocked_(bar, tabs, commands), killList_(state.appDir),
      blocker_(state, bar, tabs, hook, clock, shell, blocked_, killList_),
      content_(state, bar, tabs, commands), security_(state, bar, tabs)
{
    tabs.setNewWindowPolicy(blocker_);
    views.setNavigationPolicy(blocker_);
    // Each switch is read where it acts: new windows, navigations, new tabs.
    for (cmd::Command command :
         {cmd::Command::StopPopups, cmd::Command::KillPopups, cmd::Command::Silent})
        commands.on(command, [](const CommandContext& c) { c.tool.setChecked(!c.tool.checked()); });
}

void ProtectSubsystem::relabel(const std::function<void()>& recaption)
{
    const int blocked = blocked_.count();
    recaption();
    blocked_.setCount(blocked);
    security_.showCurrent();
}
