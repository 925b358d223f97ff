#pragma once
// The page-command object: working offline for the whole browser, and the
// page's source in a tab of its own. The File menu's and the status band's
// Work Offline tools both show the mode, which the menu reads again each
// time it drops down.
class BarEventRouter;
class CommandDispatcher;
class Tabs;

namespace platform {
class BrowserView;
class ConnectionState;
} // namespace platform
namespace commandbar {
class CommandBar;
} // namespace commandbar

class PageCommands
{
public:
    PageCommands(commandbar::CommandBar& bar, Tabs& tabs, platform::ConnectionState& connection,
                 CommandDispatcher& commands, BarEventRouter& events);

    void setWorkOffline(bool offline);
    void showSource(const platform::BrowserView& view);

private:
    void showOffline();

    commandbar::CommandBar& bar_;
    Tabs& tabs_;
    platform::ConnectionState& connection_;
};
