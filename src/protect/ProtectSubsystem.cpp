#include "ProtectSubsystem.h"
#include "commandbar/Tool.h"
#include "core/CommandDispatcher.h"
#include "core/MainState.h"
#include "core/Switches.h"
#include "platform/browser/BrowserView.h"
#include "tabs/Ellipsis.h"
#include "tabs/TabStrip.h"

ProtectSubsystem::ProtectSubsystem(const MainState& state, commandbar::CommandBar& bar,
                                   TabStrip& tabs, const EveryTabSignals& every,
                                   ActiveTabPresenter& events, platform::BrowserViewFactory& views,
                                   const platform::ClickHook& hook, const platform::Clock& clock,
                                   platform::Shell& shell, CommandDispatcher& commands)
    : blocked_(bar, tabs, commands), killList_(state.appDir),
      blocker_(state, bar, tabs, every, hook, clock, shell, blocked_, killList_),
      content_(state, bar, tabs, every, events, commands), security_(state, bar, tabs, every)
{
    tabs.setNewWindowPolicy(blocker_);
    views.setNavigationPolicy(blocker_);
    // Each switch is read where it acts: new windows, navigations, new tabs.
    switches::registerFlips(
        bar, commands, {cmd::Command::StopPopups, cmd::Command::KillPopups, cmd::Command::Silent});
    commands.on(cmd::Command::AddToBlockList,
                [this](const CommandContext& c) { killList_.add(c.view->locationUrl()); });
    QObject::connect(&tabs, &TabStrip::pageClosed, &tabs,
                     [this](const QString& shortTitle, const QString& address) {
                         blocked_.recordClosed(
                             shortTitle.isEmpty() ? ellipsis(address, 50) : shortTitle, address);
                     });
}

void ProtectSubsystem::relabel(const std::function<void()>& recaption)
{
    const int blocked = blocked_.count();
    recaption();
    blocked_.setCount(blocked);
    security_.showCurrent();
}
