#include "TextSizeCommands.h"
#include "commandbar/CommandBar.h"
#include "commandbar/Tool.h"
#include "core/BarEventRouter.h"
#include "core/CommandDispatcher.h"
#include "core/Keys.h"
#include "platform/browser/BrowserView.h"
#include "tabs/Tabs.h"

namespace {

struct TextSize
{
    cmd::Command command;
    int level;
};

const TextSize sizes[] = {
    {cmd::Command::TextLargest, 4}, {cmd::Command::TextLarger, 3},   {cmd::Command::TextMedium, 2},
    {cmd::Command::TextSmaller, 1}, {cmd::Command::TextSmallest, 0},
};

} // namespace

TextSizeCommands::TextSizeCommands(commandbar::CommandBar& bar, const Tabs& tabs,
                                   CommandDispatcher& commands, BarEventRouter& events)
    : bar_(bar), tabs_(tabs)
{
    for (const TextSize& size : sizes)
        commands.on(size.command, [level = size.level](const CommandContext& c) {
            c.view->zoom().setLevel(level);
        });
    events.onDropDown(QLatin1String(key::textMenu), [this](commandbar::Band&) { markLevel(); });
}

void TextSizeCommands::markLevel()
{
    platform::BrowserView* view = tabs_.currentView();
    if (!view || view->locationUrl().isEmpty())
        return;
    const int level = view->zoom().level();
    for (const TextSize& size : sizes)
        if (commandbar::Tool* tool = bar_.tool(key::textMenu, cmd::keyOf(size.command)))
            tool->setChecked(size.level == level);
}
