#include "TabCommands.h"
#include "ActiveTabDisplay.h"
#include "TabStrip.h"
#include "commandbar/Tool.h"
#include "core/BarEventRouter.h"
#include "core/CommandDispatcher.h"
#include "core/ToolKeys.h"

using cmd::Command;
using Context = CommandContext;

void registerTabCommands(CommandDispatcher& commands, BarEventRouter& events, TabStrip& tabs,
                         ActiveTabDisplay& display)
{
    commands.on(Command::NewTab, [&tabs](const Context&) { tabs.newTab({}, true); });
    commands.on(Command::NewTabHome, [&tabs](const Context&) {
        if (const int index = tabs.newTab({}, true))
            tabs.view(index)->goHome();
    });
    commands.on(Command::DuplicateTab,
                [&tabs](const Context& c) { tabs.newTab(c.view->locationUrl(), true); });
    commands.on(Command::Back, [](const Context& c) { c.view->goBack(); });
    commands.on(Command::Forward, [](const Context& c) { c.view->goForward(); });
    commands.on(Command::Refresh, [](const Context& c) { c.view->refresh(); });
    commands.on(Command::Home, [](const Context& c) { c.view->goHome(); });
    commands.on(Command::Stop, [&tabs, &display](const Context& c) {
        c.view->stop();
        tabs.refreshActiveTab();
        // After the refresh, which shows the tab's last percent.
        display.setProgress(0);
    });
    commands.on(Command::StopAll, [&tabs, &display](const Context&) {
        for (platform::BrowserView* view : tabs.tabViews())
            view->stop();
        display.clearInfo();
    });
    commands.on(Command::RefreshAll, [&tabs](const Context&) {
        for (platform::BrowserView* view : tabs.tabViews())
            if (!view->locationUrl().isEmpty())
                view->refresh();
    });
    commands.on(Command::CloseTab, [&tabs](const Context& c) { tabs.closeTab(c.tab); });
    commands.on(Command::CloseOthers, [&tabs](const Context& c) { tabs.closeOtherTabs(c.tab); });
    commands.on(Command::CloseAll, [&tabs](const Context&) { tabs.closeAllTabs(); });
    commands.on(cmd::Route::Tab,
                [&tabs](const Context& c) { tabs.activateTab(keys::tabIndex(c.tool.key())); });
    events.onSecondaryAction(cmd::Route::Tab, [&tabs](commandbar::Tool& tool) {
        // 0 would mean the active tab; a name without a number closes nothing.
        if (const int index = keys::tabIndex(tool.key()); index >= 1)
            tabs.closeTab(index);
    });
}
