#include "Commands.h"

#include <QString>

namespace cmd {

const CommandInfo* find(QStringView key)
{
    for (const CommandInfo& command : commandTable)
        if (key == QLatin1String(command.key))
            return &command;
    return nullptr;
}

bool onRoute(QStringView key, Route route)
{
    return key.startsWith(QLatin1String(routeTable[size_t(route)].prefix));
}

} // namespace cmd
