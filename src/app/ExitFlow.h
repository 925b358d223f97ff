#pragma once
// Leaving the program: the exit question, and the close request that saves
// every tab's address, closes the tabs within 30 seconds, saves the settings
// and stops the click hook. Cancel leaves everything as it was.
#include "MainState.h"

#include <QObject>

namespace platform {
class ClickHook;
class Clock;
class CommandBar;
class Dialogs;
} // namespace platform
class Language;
class Settings;
class TabStrip;

class ExitFlow : public QObject
{
    Q_OBJECT
public:
    ExitFlow(MainState& state, platform::CommandBar& bar, TabStrip& tabs, Settings& settings,
             const Language& language, platform::Dialogs& dialogs, const platform::Clock& clock,
             platform::ClickHook& clickHook);

    // Asks now and keeps the answer for the close request that follows.
    void askExitQuestion();
    // True when the program may end; the shut-down has then been done.
    bool closeRequested();

    static constexpr double tabSavingLimitSeconds = 30;

signals:
    // An open tab's address, in strip order, just before the tab closes.
    void lastPageRecorded(const QString& address);

private:
    bool userCancels();

    MainState& state_;
    platform::CommandBar& bar_;
    TabStrip& tabs_;
    Settings& settings_;
    const Language& language_;
    platform::Dialogs& dialogs_;
    const platform::Clock& clock_;
    platform::ClickHook& clickHook_;
};
