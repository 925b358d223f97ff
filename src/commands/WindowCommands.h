#pragma once
// The commands about the program rather than a page: the About box, the
// mail commands, which hand a mailto: text to the desktop's mail program, the
// desktop's address book, and
// clearing the cookies, the cache or the history of every tab.
#include <QString>

class CommandDispatcher;
class Tabs;

namespace platform {
class Dialogs;
class PrivateData;
class Shell;
} // namespace platform
namespace commandbar {
class CommandBar;
} // namespace commandbar

class WindowCommands
{
public:
    WindowCommands(platform::Dialogs& dialogs, platform::Shell& shell, commandbar::CommandBar& bar,
                   platform::PrivateData& privateData, CommandDispatcher& commands);
};

// The About box's text: the version, what the program is, and its copyright.
QString aboutText();
// The text of a new mail message, unescaped: "mailto:" + to + "?subject=" ...
QString mailText(const QString& to, const QString& subject, const QString& body);
