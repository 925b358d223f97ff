#pragma once
// The Translate menu: the services of "Translist.txt" beside the program,
// read once at start-up; choosing one opens it in a new tab on the current
// page's address. Its edit entry opens the list in the program's own text
// window; changes show at the next start.
#include "TranslationList.h"
#include "platform/ProgramFolder.h"

class CommandDispatcher;
class QWidget;
class Tabs;

namespace platform {
class Dialogs;
} // namespace platform
namespace commandbar {
class CommandBar;
} // namespace commandbar

class TranslateSubsystem
{
public:
    TranslateSubsystem(QWidget& window, platform::ProgramFolder folder, commandbar::CommandBar& bar,
                       Tabs& tabs, platform::Dialogs& dialogs, CommandDispatcher& commands);

    // Builds the menu from the list file; editCaption is the language's
    // caption of the edit entry.
    void start(const QString& editCaption);
    const TranslationList& list() const { return list_; }
    // The list read: the user's copy when there is one, else the shipped.
    QString listPath() const;

private:
    QWidget& window_;
    platform::ProgramFolder folder_;
    commandbar::CommandBar& bar_;
    platform::Dialogs& dialogs_;
    TranslationList list_;
};
