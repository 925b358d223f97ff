#include "ExitFlow.h"
#include "Keys.h"
#include "Language.h"
#include "Settings.h"
#include "platform/ClickHook.h"
#include "platform/Dialogs.h"
#include "platform/commandbar/CommandBar.h"
#include "tabs/TabStrip.h"

#include <QFile>

ExitFlow::ExitFlow(MainState& state, platform::CommandBar& bar, TabStrip& tabs, Settings& settings,
                   const Language& language, platform::Dialogs& dialogs,
                   const platform::Clock& clock, platform::ClickHook& clickHook)
    : state_(state), bar_(bar), tabs_(tabs), settings_(settings), language_(language),
      dialogs_(dialogs), clock_(clock), clickHook_(clickHook)
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
    state_.exitCancelled = userCancels();
    state_.exitAnswered = true;
}

bool ExitFlow::closeRequested()
{
    bool cancel = false;
    if (state_.exitAnswered) {
        cancel = state_.exitCancelled;
        state_.exitAnswered = false;
    } else {
        cancel = userCancels();
    }
    if (cancel)
        return false;

    const double start = clock_.secondsSinceMidnight();
    state_.shuttingDown = true;
    QStringList tabKeys;
    const platform::Band* tabBand = bar_.band(key::tabsBar);
    for (int i = 0; tabBand && i < tabBand->count(); ++i)
        tabKeys.append(tabBand->at(i)->key());
    for (const QString& tabKey : tabKeys) {
        double elapsed = clock_.secondsSinceMidnight() - start;
        if (elapsed < 0)
            elapsed += 24 * 60 * 60;
        if (elapsed > tabSavingLimitSeconds)
            break;
        const int index =
            tabKey.startsWith(QLatin1String(key::tabPrefix)) ? tabKey.mid(5).toInt() : 0;
        if (index < 1)
            continue;
        if (platform::BrowserView* view = tabs_.view(index)) {
            if (const QString address = view->locationUrl(); !address.isEmpty())
                emit lastPageRecorded(address);
        }
        tabs_.closeTab(index);
    }
    settings_.save();
    QFile::remove(state_.appDir + QStringLiteral("Temp.txt"));
    clickHook_.stop();
    return true;
}
