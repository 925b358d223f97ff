#pragma once
// The events of every browser view, turned into the state of its tab and,
// for the active tab, into what the window shows: caption, address box, status
// text, progress, back and forward buttons. Background tabs change only their
// own state. hookDocument() is the one place later subsystems attach their
// document handlers: they listen to documentHooked.
#include "core/MainState.h"
#include "platform/browser/PageClick.h"

#include <QObject>
#include <map>

namespace platform {
class BrowserView;
class Clock;
} // namespace platform
namespace commandbar {
class CommandBar;
} // namespace commandbar
class ActiveTabDisplay;
class ActiveTabSignals;
class EveryTabSignals;
class TabStrip;

class ViewEvents : public QObject
{
    Q_OBJECT
public:
    ViewEvents(MainState& state, commandbar::CommandBar& bar, TabStrip& tabs,
               ActiveTabDisplay& display, const platform::Clock& clock, ActiveTabSignals& active);

    static constexpr int tabCaptionWidth = 14;
    // Percent of progress against maximum, halves rounded to even; when
    // loading has ended (progress not below maximum) 100, or 0 for 0.
    static int loadingPercent(int progress, int maximum);

    // Follows every tab's events; call before the active-tab signals follow
    // them, so the tab's own state is up to date when the window shows it.
    void follow(const EveryTabSignals& every);

    void refreshNavButtons();
    // A click the user made (not a script) in the view's page.
    void documentClick(const platform::PageClick& click);
    void hookDocument(platform::BrowserView* view);

    // From the tab strip.
    void activeTabRefreshed(platform::BrowserView* view);
    void newTabActivated(platform::BrowserView* view);
    void tabLeft(platform::BrowserView* view);

    int percentOf(int index) const;

signals:
    // The view's document is ready for the program's handlers.
    void documentHooked(platform::BrowserView* view);
    // The active tab's page went into full screen or out of it.
    void pageFullScreen(bool on);

private:
    void progressChange(platform::BrowserView* view, int progress, int maximum);
    void commandStateChange(platform::BrowserView* view, int command, bool enable);
    void titleChange(platform::BrowserView* view, const QString& text);
    void activeStatusText(platform::BrowserView* view, const QString& text);
    void activeTitle(platform::BrowserView* view, const QString& text);
    bool fullScreen() const;
    void setTabCaption(int index, const QString& title);

    MainState& state_;
    commandbar::CommandBar& bar_;
    TabStrip& tabs_;
    ActiveTabDisplay& display_;
    const platform::Clock& clock_;
    std::map<int, int> percent_;
};
