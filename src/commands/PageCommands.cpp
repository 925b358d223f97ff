#include "PageCommands.h"
#include "commandbar/CommandBar.h"
#include "commandbar/Tool.h"
#include "core/BarEventRouter.h"
#include "core/CommandDispatcher.h"
#include "core/Keys.h"
#include "platform/browser/BrowserView.h"
#include "tabs/Tabs.h"

using cmd::Command;

PageCommands::PageCommands(commandbar::CommandBar& bar, Tabs& tabs,
                           platform::ConnectionState& connection, CommandDispatcher& commands,
                           BarEventRouter& events)
    : bar_(bar), tabs_(tabs), connection_(connection)
{
    commands.on(Command::WorkOffline, [this](const CommandContext&) {
        const commandbar::Tool* tool = bar_.tool(key::fileMenu, key::workOffline);
        setWorkOffline(!(tool ? tool->checked() : connection_.offline()));
    });
    commands.on(Command::ViewSource, [this](const CommandContext& c) { showSource(*c.view); });
    events.onDropDown(QLatin1String(key::fileMenu), [this](commandbar::Band&) { showOffline(); });
}

void PageCommands::setWorkOffline(bool offline)
{
    connection_.setOffline(offline);
    showOffline();
}

void PageCommands::showOffline()
{
    for (const QLatin1String band : {key::fileMenu, key::statusBar})
        if (commandbar::Tool* tool = bar_.tool(band, key::workOffline))
            tool->setChecked(connection_.offline());
}

void PageCommands::showSource(const platform::BrowserView& view)
{
    if (!view.locationUrl().isEmpty())
        tabs_.newTab(QStringLiteral("view-source:") + view.locationUrl(), true);
}
