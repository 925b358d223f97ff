#include "Switches.h"
#include "CommandDispatcher.h"
#include "platform/commandbar/CommandBar.h"

namespace switches {

bool isOn(const platform::CommandBar& bar, cmd::Command command)
{
    const platform::Tool* tool = bar.collectionTool(QLatin1String(cmd::keyOf(command)));
    return tool && tool->checked();
}

void set(platform::CommandBar& bar, cmd::Command command, bool on)
{
    const QString key = QLatin1String(cmd::keyOf(command));
    if (platform::Tool* tool = bar.collectionTool(key))
        tool->setChecked(on);
    for (const auto& band : bar.bands())
        if (platform::Tool* tool = band->tool(key))
            tool->setChecked(on);
}

void registerFlips(platform::CommandBar& bar, CommandDispatcher& commands,
                   std::initializer_list<cmd::Command> flips)
{
    for (cmd::Command command : flips)
        commands.on(command, [&bar, command](const CommandContext&) {
            set(bar, command, !isOn(bar, command));
        });
}

} // namespace switches
