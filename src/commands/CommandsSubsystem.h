#pragma once
// The commands subsystem: the commands that act on pages and on the window
// rather than on tabs, each group registering its own handlers and menu
// drop-downs in its constructor.
#include "BarSwitches.h"
#include "DocumentCommands.h"
#include "EditCommands.h"
#include "FindBar.h"
#include "FullScreen.h"
#include "LinksPage.h"
#include "PageCommands.h"
#include "QuickSave.h"
#include "TextSizeCommands.h"
#include "WindowCommands.h"

class TabSubsystem;

namespace platform {
class BrowserViewFactory;
} // namespace platform

class CommandsSubsystem
{
public:
    CommandsSubsystem(QWidget& window, commandbar::CommandBar& bar, const MainState& state,
                      TabSubsystem& tabs, platform::Dialogs& dialogs, platform::Shell& shell,
                      platform::BrowserViewFactory& engine, CommandDispatcher& commands,
                      BarEventRouter& events);

    // For the window to place under the page.
    FindBar* findBar() const { return findBar_; }

private:
    BarSwitches switches_;
    EditCommands editing_;
    TextSizeCommands textSize_;
    DocumentCommands document_;
    WindowCommands window_;
    FullScreen fullScreen_;
    PageCommands page_;
    LinksPage links_;
    QuickSave quickSave_;
    FindBar* findBar_;
};
