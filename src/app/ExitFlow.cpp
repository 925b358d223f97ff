#include "ExitFlow.h"
#include "Language.h"
#include "Settings.h"
#include "platform/ClickHook.h"
#include "platform/Dialogs.h"
#include "tabs/TabStrip.h"

#include <QFile>

ExitFlow::ExitFlow(MainState& state, TabStrip& tabs, const Language& language,
                   platform::Dialogs& dialogs, const platform::Clock& clock)
    : state_(state), tabs_(tabs), language_(language), dialogs_(dialogs), clock_(clock)
{
}

bool ExitFlow::userCancels()
{
    if (platform::BrowserView* view = tabs_.currentView())
        view->focusPage();
    return dialogs_.message(language_.text(QStringLiteral("msg_Exit")),
                            platform::Dialogs::Buttons::OkCancel,
                            platform::Dialogs::Icon::Question) == platform::Dialogs::Answer::Cancel;
}

void ExitFlow::askExitQuestion()
{
    exitCancelled_ = userCancels();
    exitAnswered_ = true;
}

bool ExitFlow::closeRequested()
{
    const bool cancel = std::exchange(exitAnswered_, false) ? exitCancelled_ : userCancels();
    if (cancel)
        return false;
    for (const auto& step : steps_)
        step();
    return true;
}

void ExitFlow::closeTabsSavingAddresses()
{
    const double start = clock_.secondsSinceMidnight();
    state_.shuttingDown = true;
    for (const int index : tabs_.band().viewIndices()) {
        double elapsed = clock_.secondsSinceMidnight() - start;
        if (elapsed < 0)
            elapsed += 24 * 60 * 60;
        if (elapsed > tabSavingLimitSeconds)
            break;
        if (index < 1)
            continue;
        if (platform::BrowserView* view = tabs_.view(index)) {
            if (const QString address = view->locationUrl(); !address.isEmpty())
                emit lastPageRecorded(address);
        }
        tabs_.closeTab(index);
    }
}

void addShutdownSteps(ExitFlow& exit, const Settings& settings, platform::ClickHook& clickHook,
                      const QString& appDir)
{
    exit.addStep([&exit] { exit.closeTabsSavingAddresses(); });
    exit.addStep([&settings] { settings.save(); });
    exit.addStep([appDir] { QFile::remove(appDir + QStringLiteral("Temp.txt")); });
    exit.addStep([&clickHook] { clickHook.stop(); });
}
