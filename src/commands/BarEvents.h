#pragma once
// The command bar's events other than tool clicks: a menu about to drop down
// and a band reported shown. Keeps the View menu's band switches in step with
// the bands, and swaps the bar's customise menu for the tab menu while the
// pointer is over a tab.
#include "app/MainState.h"

#include <QObject>

namespace platform {
class Band;
class CommandBar;
} // namespace platform

class BarEvents : public QObject
{
    Q_OBJECT
public:
    BarEvents(MainState& state, platform::CommandBar& bar);

    void dropDown(platform::Band* band);
    void bandShown(platform::Band* band);

private:
    MainState& state_;
    platform::CommandBar& bar_;
};
