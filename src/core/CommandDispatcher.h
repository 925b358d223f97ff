#pragma once
// The one entry of every tool click. A fixed key is looked up in the command
// table; the tab the command acts on is resolved here; then the one handler
// its folder registered runs. Other keys go to the prefix route they start
// with. A key that names nothing, or a command whose tab has no view, does
// nothing.
#include "Commands.h"

#include <QObject>
#include <array>
#include <functional>

namespace platform {
class BrowserView;
} // namespace platform
namespace commandbar {
class CommandBar;
class Tool;
} // namespace commandbar
struct MainState;

struct CommandContext
{
    commandbar::Tool& tool;
    // The tab the command acts on, and its view; 0 and nullptr for commands
    // that act on nothing.
    int tab = 0;
    platform::BrowserView* view = nullptr;
};

class CommandDispatcher : public QObject
{
    Q_OBJECT
public:
    using Handler = std::function<void(const CommandContext&)>;
    using ViewLookup = std::function<platform::BrowserView*(int index)>;

    CommandDispatcher(const MainState& state, commandbar::CommandBar& bar, ViewLookup views);

    // One handler per command and per route; a second registration is a
    // fault of the composition and is refused with a warning.
    void on(cmd::Command command, Handler handler);
    void on(cmd::Route route, Handler handler);
    bool handles(cmd::Command command) const { return bool(commands_[size_t(command)]); }
    bool handles(cmd::Route route) const { return bool(routes_[size_t(route)]); }

    void dispatch(commandbar::Tool* tool);
    // Runs a command as if its tool had been clicked outside any band.
    void run(cmd::Command command);

private:
    int tabFor(const cmd::CommandInfo& command, const commandbar::Tool& tool) const;

    const MainState& state_;
    commandbar::CommandBar& bar_;
    ViewLookup views_;
    std::array<Handler, cmd::commandCount> commands_;
    std::array<Handler, cmd::routeCount> routes_;
};
