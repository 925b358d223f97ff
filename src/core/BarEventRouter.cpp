#include "BarEventRouter.h"
#include "commandbar/CommandBar.h"

BarEventRouter::BarEventRouter(commandbar::CommandBar& bar)
{
    connect(&bar, &commandbar::CommandBar::bandDropDown, this, &BarEventRouter::dropDown);
    connect(&bar, &commandbar::CommandBar::bandShown, this, &BarEventRouter::bandShown);
    connect(&bar, &commandbar::CommandBar::toolSecondaryAction, this,
            &BarEventRouter::secondaryAction);
}

template <typename Handler>
void BarEventRouter::add(QHash<QString, Handler>& table, const QString& key, Handler handler)
{
    if (table.contains(key)) {
        qWarning("bar event of %s registered twice", qPrintable(key));
        return;
    }
    table.insert(key, std::move(handler));
}

void BarEventRouter::onDropDown(const QString& bandKey, BandHandler handler)
{
    add(dropDowns_, bandKey, std::move(handler));
}

void BarEventRouter::onBandShown(const QString& bandKey, BandHandler handler)
{
    add(shown_, bandKey, std::move(handler));
}

void BarEventRouter::onSecondaryAction(const QString& toolKey, ToolHandler handler)
{
    add(secondary_, toolKey, std::move(handler));
}

void BarEventRouter::onSecondaryAction(cmd::Route route, ToolHandler handler)
{
    add(secondaryRoutes_, QLatin1String(cmd::routeTable[size_t(route)].prefix), std::move(handler));
}

void BarEventRouter::dropDown(commandbar::Band* band)
{
    if (band)
        if (const auto it = dropDowns_.constFind(band->key()); it != dropDowns_.cend())
            (*it)(*band);
}

void BarEventRouter::bandShown(commandbar::Band* band)
{
    if (band)
        if (const auto it = shown_.constFind(band->key()); it != shown_.cend())
            (*it)(*band);
}

void BarEventRouter::secondaryAction(commandbar::Tool* tool)
{
    if (!tool)
        return;
    if (const auto it = secondary_.constFind(tool->key()); it != secondary_.cend()) {
        (*it)(*tool);
        return;
    }
    // The handler may delete the tool (closing a tab drops its tool), and no
    // generated key matches two prefixes: the first match is the only one.
    for (const cmd::RouteInfo& route : cmd::routeTable)
        if (cmd::onRoute(tool->key(), route.id)) {
            if (const auto it = secondaryRoutes_.constFind(QLatin1String(route.prefix));
                it != secondaryRoutes_.cend())
                (*it)(*tool);
            return;
        }
}
