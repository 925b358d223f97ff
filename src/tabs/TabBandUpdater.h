#pragma once
// What each tab's own tool and state show of its view, for every tab alike:
// the caption from the title, the loading picture from the progress, and
// whether the tab can go back and forward.
#include "core/MainState.h"

#include <QObject>

namespace platform {
class BrowserView;
} // namespace platform
namespace commandbar {
class CommandBar;
} // namespace commandbar
class EveryTabSignals;
class TabStrip;

class TabBandUpdater : public QObject
{
    Q_OBJECT
public:
    TabBandUpdater(commandbar::CommandBar& bar, TabStrip& tabs);

    static constexpr int tabCaptionWidth = 14;
    // Percent of progress against maximum, halves rounded to even; when
    // loading has ended (progress not below maximum) 100, or 0 for 0.
    static int loadingPercent(int progress, int maximum);

    // Follows every tab's events; call before anything that shows the
    // active tab follows them, so the tab's own state is up to date by then.
    void follow(const EveryTabSignals& every);

    int percentOf(int index) const;
    void setCaption(int index, const QString& title);

signals:
    // Whether the tab can go back or forward changed.
    void navigationChanged();

private:
    void progressChange(platform::BrowserView* view, int progress, int maximum);
    void commandStateChange(platform::BrowserView* view, int command, bool enable);

    commandbar::CommandBar& bar_;
    TabStrip& tabs_;
};
