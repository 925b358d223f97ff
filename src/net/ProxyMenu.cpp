#include "ProxyMenu.h"
#include "commandbar/AddBandTool.h"
#include "commandbar/Band.h"
#include "commandbar/CommandBar.h"
#include "commandbar/Tool.h"
#include "core/Keys.h"
#include "core/ToolKeys.h"
#include "platform/ConnectionHelper.h"

ProxyMenu::ProxyMenu(commandbar::CommandBar& bar, platform::ConnectionHelper& connection)
    : bar_(bar), connection_(connection)
{
}

void ProxyMenu::start(const QString& stored)
{
    connection_.setProxy(stored);
    build(stored);
}

void ProxyMenu::rebuild()
{
    const commandbar::Tool* checked = checkedTool();
    build(checked ? checked->caption() : QString());
}

commandbar::Tool* ProxyMenu::checkedTool() const
{
    const commandbar::Band* menu = bar_.band(key::proxyMenu);
    for (int i = 0; menu && i < menu->count(); ++i)
        if (menu->at(i)->checked())
            return menu->at(i);
    return nullptr;
}

QString ProxyMenu::checkedEntry() const
{
    const commandbar::Tool* checked = checkedTool();
    if (!checked || checked->caption() == QLatin1String(emptyCaption))
        return {};
    return checked->caption();
}

void ProxyMenu::build(const QString& current)
{
    commandbar::Band* menu = bar_.band(key::proxyMenu);
    if (!menu)
        return;
    while (menu->count() > 0)
        bar_.removeTool(*menu, menu->count() - 1);
    bool anyChecked = false;
    auto add = [&](int entry, const QString& caption, const QString& problem) {
        commandbar::Tool* tool = commandbar::AddBandTool(
            bar_, key::proxyMenu, keys::proxyKey(entry), keys::proxyId(entry), QStringLiteral("0"),
            problem.isEmpty() ? caption
                              : QStringLiteral("%1 (not usable: %2)").arg(caption, problem),
            false);
        if (!tool)
            return;
        if (!problem.isEmpty()) {
            tool->setEnabled(false);
            return;
        }
        tool->setCheckable(true);
        const bool checked = !anyChecked && caption == current;
        tool->setChecked(checked);
        anyChecked = anyChecked || checked;
    };
    add(1, QLatin1String(emptyCaption), {});
    commandbar::AddBandTool(bar_, key::proxyMenu, keys::proxySeparatorKey(),
                            keys::proxySeparatorId(), QStringLiteral("5"), {}, false);
    const QStringList entries = connection_.proxies();
    for (int i = 1; i <= entries.size(); ++i)
        add(i + 1, entries[i - 1], platform::ConnectionHelper::problemWith(entries[i - 1]));
    if (!anyChecked) {
        connection_.setProxy({});
        menu->at(0)->setChecked(true);
    }
    bar_.recalcLayout();
}

void ProxyMenu::select(commandbar::Tool& tool)
{
    if (!tool.enabled())
        return;
    if (commandbar::Tool* checked = checkedTool())
        checked->setChecked(false);
    tool.setChecked(true);
    connection_.setProxy(tool.caption() == QLatin1String(emptyCaption) ? QString()
                                                                       : tool.caption());
}
