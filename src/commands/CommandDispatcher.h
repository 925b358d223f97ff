#pragma once
// The one entry for every tool click of the command bar: finds the command a
// tool key names and carries it out. Fixed keys are compared first, then the
// prefixes of generated tools. A key that names nothing does nothing.
#include "app/MainState.h"

#include <QObject>

#include <vector>

namespace platform {
class BrowserView;
class CommandBar;
class Tool;
} // namespace platform
class ActiveTabDisplay;
class AddressBar;
class TabStrip;

class CommandDispatcher : public QObject
{
    Q_OBJECT
public:
    CommandDispatcher(MainState& state, platform::CommandBar& bar, TabStrip& tabs,
                      ActiveTabDisplay& display, AddressBar& addressBar);

    void dispatch(platform::Tool* tool);
    // Double or middle click on a tool.
    void secondaryAction(platform::Tool* tool);

signals:
    void quitRequested();

private:
    int targetTab(const platform::Tool* tool) const;
    void toggle(platform::Tool* tool);
    void toggleBand(platform::Tool* tool, const char* bandKey);
    // The view of every tab, in strip order.
    std::vector<platform::BrowserView*> tabViews() const;

    MainState& state_;
    platform::CommandBar& bar_;
    TabStrip& tabs_;
    ActiveTabDisplay& display_;
    AddressBar& addressBar_;
};
