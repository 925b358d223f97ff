#include "CommandDispatcher.h"
#include "Keys.h"
#include "MainState.h"
#include "commandbar/CommandBar.h"

CommandDispatcher::CommandDispatcher(const MainState& state, commandbar::CommandBar& bar,
                                     ViewLookup views)
    : state_(state), bar_(bar), views_(std::move(views))
{
    connect(&bar_, &commandbar::CommandBar::toolClicked, this, &CommandDispatcher::dispatch);
}

void CommandDispatcher::on(cmd::Command command, Handler handler)
{
    Handler& slot = commands_[size_t(command)];
    if (slot) {
        qWarning("command %s registered twice", cmd::keyOf(command).data());
        return;
    }
    slot = std::move(handler);
}

void CommandDispatcher::on(cmd::Route route, Handler handler)
{
    Handler& slot = routes_[size_t(route)];
    if (slot) {
        qWarning("route %s registered twice", cmd::routeTable[size_t(route)].prefix);
        return;
    }
    slot = std::move(handler);
}

// The tab chosen through the tab strip counts for commands of the tab's own
// menu; everywhere else a command acts on the tab that is shown.
int CommandDispatcher::tabFor(const cmd::CommandInfo& command, const commandbar::Tool& tool) const
{
    switch (command.actsOn) {
    case cmd::ActsOn::Nothing:
        return 0;
    case cmd::ActsOn::TargetTab:
        if (tool.band() && tool.band()->key() == QLatin1String(key::tabMenu) &&
            state_.targetTab >= 1 && views_(state_.targetTab))
            return state_.targetTab;
        break;
    case cmd::ActsOn::CurrentTab:
        break;
    }
    return state_.currentTab;
}

void CommandDispatcher::dispatch(commandbar::Tool* tool)
{
    if (!tool)
        return;
    // A handler may delete the tool (closing a tab drops its tool).
    const QString key = tool->key();
    if (const cmd::CommandInfo* command = cmd::find(key)) {
        const Handler& handler = commands_[size_t(command->id)];
        if (!handler)
            return;
        CommandContext context{*tool};
        if (command->actsOn != cmd::ActsOn::Nothing) {
            context.tab = tabFor(*command, *tool);
            context.view = views_(context.tab);
            if (!context.view)
                return;
        }
        handler(context);
        return;
    }
    // No generated key matches two prefixes, so the first match is the only one.
    for (const cmd::RouteInfo& route : cmd::routeTable)
        if (cmd::onRoute(key, route.id)) {
            if (routes_[size_t(route.id)])
                routes_[size_t(route.id)](CommandContext{*tool});
            return;
        }
}

void CommandDispatcher::run(cmd::Command command)
{
    dispatch(bar_.collectionTool(QLatin1String(cmd::keyOf(command))));
}
