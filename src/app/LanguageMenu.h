#pragma once
// The Language menu: one entry per "*.lng" file beside the program, captioned
// with the name the file gives its language ("lng_Name") and holding the file
// name in its tag. Choosing one copies that file over "lng.ini" and reports
// the switch, so the window can caption itself anew; the entry of the
// language in force is checked.
#include "platform/ProgramFolder.h"

#include <QObject>
#include <QString>

class CommandDispatcher;

namespace platform {
class Dialogs;
} // namespace platform
namespace commandbar {
class CommandBar;
class Tool;
} // namespace commandbar

class LanguageMenu : public QObject
{
    Q_OBJECT
public:
    LanguageMenu(platform::ProgramFolder folder, commandbar::CommandBar& bar,
                 platform::Dialogs& dialogs, CommandDispatcher& commands);

    static constexpr const char* nameKey = "lng_Name";

    void build();

signals:
    void switched();

private:
    void choose(const commandbar::Tool& tool);
    void checkCurrent();

    platform::ProgramFolder folder_;
    commandbar::CommandBar& bar_;
    platform::Dialogs& dialogs_;
};
