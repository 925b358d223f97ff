#include "ProtectSubsystem.h"
#include "commandbar/Tool.h"
#include "core/CommandDispatcher.h"
#include "core/MainState.h"
#include "core/Switches.h"
#include "platform/browser/BrowserView.h"
#include "tabs/Ellipsis.h"
#include "tabs/TabStrip.h"

namespace {
// Characters of a closed page's entry in the blocked list.
constexpr int blockedListWidth = 50;
} // namespace

ProtectSubsystem::ProtectSubsystem(const MainState& state, commandbar::CommandBar& bar,
                                   TabStrip& tabs, const EveryTabSignals& every,
                                   ActiveTabPresenter& events, platform::BrowserViewFactory& views,
                                   const platform::ClickHook& hook, const platform::Clock& clock,
                                   platform::Shell& shell, platform::Dialogs& dialogs,
                                   ContentFilters::Captions captions, CommandDispatcher& commands)
    : blocked_(bar, tabs, commands), killList_(state.folder),
      filters_(state, bar, tabs, every, views, dialogs, std::move(captions), commands),
      blocker_(state, bar, tabs, every, hook, clock, shell, blocked_, killList_, filters_),
      blockerAsked_(views, blocker_), content_(state, bar, tabs, every, events, commands),
      security_(state, bar, tabs, every)
{
    tabs.setNewWindowPolicy(blocker_);
    // Each switch is read where it acts: new windows, navigations, new tabs.
    switches::registerFlips(
        bar, commands, {cmd::Command::StopPopups, cmd::Command::KillPopups, cmd::Command::Silent});
    commands.on(cmd::Command::AddToBlockList,
                [this](const CommandContext& c) { killList_.add(c.view->locationUrl()); });
    // A tab closed by itself, not among all or the others, is listed when its
    // page had an address.
    QObject::connect(&tabs, &TabStrip::changed, &tabs, [this](const TabChange& change) {
        if (change.kind != TabChange::Kind::Removed || change.cause != TabChange::Cause::CloseTab)
            return;
        const QString address = change.view->locationUrl();
        if (address.isEmpty())
            return;
        const QString shortTitle = ellipsis(change.view->title(), blockedListWidth);
        blocked_.recordClosed(
            shortTitle.isEmpty() ? ellipsis(address, blockedListWidth) : shortTitle, address);
    });
}

void ProtectSubsystem::relabel(const std::function<void()>& recaption)
{
    const int blocked = blocked_.count();
    recaption();
    blocked_.setCount(blocked);
    filters_.showCurrent();
    security_.showCurrent();
}
