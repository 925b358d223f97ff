#include "EditCommands.h"
#include "commandbar/CommandBar.h"
#include "commandbar/Tool.h"
#include "core/BarEventRouter.h"
#include "core/CommandDispatcher.h"
#include "core/Keys.h"
#include "core/MainState.h"
#include "platform/browser/BrowserView.h"
#include "tabs/Tabs.h"

using platform::EditCommand;

namespace {

struct EditEntry
{
    cmd::Command command;
    EditCommand edit;
};

// In the order the menu asks.
const EditEntry entries[] = {
    {cmd::Command::Undo, EditCommand::Undo},
    {cmd::Command::Redo, EditCommand::Redo},
    {cmd::Command::Cut, EditCommand::Cut},
    {cmd::Command::Copy, EditCommand::Copy},
    {cmd::Command::Paste, EditCommand::Paste},
    {cmd::Command::Delete, EditCommand::Delete},
    {cmd::Command::SelectAll, EditCommand::SelectAll},
};

} // namespace

EditCommands::EditCommands(commandbar::CommandBar& bar, const MainState& state, const Tabs& tabs,
                           CommandDispatcher& commands, BarEventRouter& events)
    : bar_(bar), state_(state), tabs_(tabs)
{
    for (const EditEntry& entry : entries)
        commands.on(entry.command, [edit = entry.edit](const CommandContext& c) {
            c.view->focusPage();
            c.view->editing().run(edit);
        });
    events.onDropDown(QLatin1String(key::editMenu), [this](commandbar::Band&) { updateMenu(); });
}

void EditCommands::updateMenu()
{
    const int asking = ++asking_;
    const int tab = state_.currentTab;
    platform::BrowserView* view = tabs_.view(tab);
    for (const EditEntry& entry : entries) {
        const QLatin1String key = cmd::keyOf(entry.command);
        commandbar::Tool* tool = bar_.tool(key::editMenu, key);
        if (!tool)
            continue;
        tool->setEnabled(false);
        if (!view)
            continue;
        view->editing().queryEnabled(entry.edit, [this, asking, tab, key](bool enabled) {
            if (asking != asking_ || tab != state_.currentTab)
                return;
            if (commandbar::Tool* answered = bar_.tool(key::editMenu, key))
                answered->setEnabled(enabled);
        });
    }
}
