#pragma once
// Leaving the program: the exit question, then, once the user agreed, the
// shut-down steps in the order they were added. Cancel leaves everything as
// it was.
#include "core/MainState.h"

#include <QObject>
#include <functional>
#include <vector>

namespace platform {
class ClickHook;
class Clock;
class Dialogs;
} // namespace platform
class Language;
class Settings;
class TabStrip;

class ExitFlow : public QObject
{
    Q_OBJECT
public:
    ExitFlow(MainState& state, TabStrip& tabs, const Language& language, platform::Dialogs& dialogs,
             const platform::Clock& clock);

    // Asks now and keeps the answer for the close request that follows.
    void askExitQuestion();
    // True when the program may end; the shut-down steps have then run.
    bool closeRequested();
    void addStep(std::function<void()> step) { steps_.push_back(std::move(step)); }

    // The first step: records every tab's address in strip order and closes
    // the tab, until 30 seconds have passed.
    void closeTabsSavingAddresses();
    static constexpr double tabSavingLimitSeconds = 30;

signals:
    // An open tab's address, in strip order, just before the tab closes.
    void lastPageRecorded(const QString& address);

private:
    bool userCancels();

    MainState& state_;
    TabStrip& tabs_;
    const Language& language_;
    platform::Dialogs& dialogs_;
    const platform::Clock& clock_;
    std::vector<std::function<void()>> steps_;
    bool exitAnswered_ = false;
    bool exitCancelled_ = false;
};

// The program's shut-down, in order: tabs saved and closed, settings saved,
// the page tools' temporary file deleted, the click hook stopped.
void addShutdownSteps(ExitFlow& exit, const Settings& settings, platform::ClickHook& clickHook,
                      const QString& appDir);
