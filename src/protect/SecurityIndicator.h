#pragma once
// The status tool b_security: the lock state of the current tab's page as a
// caption cut from the tool's label list. Shown afresh when another tab
// becomes the current one, so the indicator never vouches for a page that is
// not shown.
#include <QObject>

class EveryTabSignals;
class TabStrip;
struct MainState;

namespace platform {
class BrowserView;
} // namespace platform
namespace commandbar {
class CommandBar;
} // namespace commandbar

class SecurityIndicator
{
public:
    SecurityIndicator(const MainState& state, commandbar::CommandBar& bar, TabStrip& tabs,
                      const EveryTabSignals& every);

    // After the labels changed: the current tab's state in the new labels.
    void showCurrent();

private:
    void show(int level);

    commandbar::CommandBar& bar_;
    TabStrip& tabs_;
    // Ends every connection to the views when the indicator goes.
    QObject context_;
};
