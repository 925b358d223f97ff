#include "Switches.h"
#include "CommandDispatcher.h"
#include "commandbar/CommandBar.h"

namespace switches {

bool isOn(const commandbar::CommandBar& bar, cmd::Command command)
{
    const commandbar::Tool* tool = bar.collectionTool(QLatin1String(cmd::keyOf(command)));
    return tool && tool->checked();
}

void set(commandbar::CommandBar& bar, cmd::Command command, bool on)
{
    const QString key = QLatin1String(cmd::keyOf(command));
    if (commandbar::Tool* tool = bar.collectionTool(key))
        tool->setChecked(on);
    for (const auto& band : bar.bands())
        if (commandbar::Tool* tool = band->tool(key))
            tool->setChecked(on);
}

void registerFlips(commandbar::CommandBar& bar, CommandDispatcher& commands,
                   std::initializer_list<cmd::Command> flips)
{
    for (cmd::Command command : flips)
        commands.on(command, [&bar, command](const CommandContext&) {
            set(bar, command, !isOn(bar, command));
        });
}

} // namespace switches
