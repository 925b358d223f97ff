#pragma once
// The command bar's events other than tool clicks, routed by band or tool
// key to the one handler that registered for it: a menu about to drop down,
// a band reported shown, a tool's secondary action (double or middle click).
// Events nobody registered for do nothing.
#include "Commands.h"

#include <QHash>
#include <QObject>
#include <functional>

namespace commandbar {
class Band;
class CommandBar;
class Tool;
} // namespace commandbar

class BarEventRouter : public QObject
{
    Q_OBJECT
public:
    using BandHandler = std::function<void(commandbar::Band&)>;
    using ToolHandler = std::function<void(commandbar::Tool&)>;

    explicit BarEventRouter(commandbar::CommandBar& bar);

    void onDropDown(const QString& bandKey, BandHandler handler);
    void onBandShown(const QString& bandKey, BandHandler handler);
    void onSecondaryAction(const QString& toolKey, ToolHandler handler);
    void onSecondaryAction(cmd::Route route, ToolHandler handler);

    void dropDown(commandbar::Band* band);
    void bandShown(commandbar::Band* band);
    void secondaryAction(commandbar::Tool* tool);

private:
    template <typename Handler>
    static void add(QHash<QString, Handler>& table, const QString& key, Handler handler);

    QHash<QString, BandHandler> dropDowns_;
    QHash<QString, BandHandler> shown_;
    QHash<QString, ToolHandler> secondary_;
    QHash<QString, ToolHandler> secondaryRoutes_;
};
