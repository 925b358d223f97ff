#pragma once
// The Proxy menu: "Empty" (no proxy), a separator, then the proxies of the
// list in its order, exactly one entry checked. Rebuilt from scratch, so an
// entry's name follows its place in the list; a proxy in force that the list
// no longer holds falls back to a direct connection. A line that names no
// proxy the program can use is listed greyed with the reason, and is never
// chosen: it would give a direct connection in the guise of a proxy.
#include <QString>

namespace platform {
class ConnectionHelper;
} // namespace platform
namespace commandbar {
class CommandBar;
class Tool;
} // namespace commandbar

class ProxyMenu
{
public:
    ProxyMenu(commandbar::CommandBar& bar, platform::ConnectionHelper& connection);

    static constexpr const char* emptyCaption = "Empty";

    // Start-up: the stored choice is set, then the menu built around it.
    void start(const QString& stored);
    // The list changed: the menu anew around the checked entry.
    void rebuild();
    void select(commandbar::Tool& tool);
    // The checked entry as it is stored: "" for "Empty" or none.
    QString checkedEntry() const;
    platform::ConnectionHelper& connection() { return connection_; }

private:
    commandbar::Tool* checkedTool() const;
    void build(const QString& current);

    commandbar::CommandBar& bar_;
    platform::ConnectionHelper& connection_;
};
