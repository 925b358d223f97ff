#pragma once
// What the window shows of the active tab: caption, address box, status text,
// progress, back and forward buttons, and the tab switches that change it.
// hookDocument() is the one place later subsystems attach their document
// handlers: they listen to documentHooked.
#include "core/MainState.h"
// Whole, not declared: the signals carry it, and moc registers their types.
#include "platform/browser/BrowserView.h"

#include <QObject>

namespace platform {
class Clock;
} // namespace platform
namespace commandbar {
class CommandBar;
} // namespace commandbar
class ActiveTabDisplay;
class ActiveTabSignals;
class EveryTabSignals;
class TabBandUpdater;
class TabStrip;
struct TabChange;

class ActiveTabPresenter : public QObject
{
    Q_OBJECT
public:
    ActiveTabPresenter(MainState& state, commandbar::CommandBar& bar, TabStrip& tabs,
                       TabBandUpdater& band, ActiveTabDisplay& display,
                       const platform::Clock& clock, ActiveTabSignals& active);

    // Follows every tab's events for the clicks in pages and the documents to
    // hook; call after the tab band's updater follows them.
    void follow(const EveryTabSignals& every);

    void refreshNavButtons();
    // A click the user made (not a script) in the view's page.
    void documentClick(const platform::PageClick& click);
    void hookDocument(platform::BrowserView* view);

    // A tab came to the front (TabChange::Kind::Activated).
    void tabActivated(const TabChange& change);
    // Shows the active tab anew, as when it came to the front.
    void activeTabRefreshed(platform::BrowserView* view);

signals:
    // The view's document is ready for the program's handlers.
    void documentHooked(platform::BrowserView* view);
    // The active tab's page went into full screen or out of it.
    void pageFullScreen(bool on);

private:
    void activeStatusText(platform::BrowserView* view, const QString& text);
    void activeTitle(platform::BrowserView* view, const QString& text);
    bool fullScreen() const;
    void newTabActivated();

    MainState& state_;
    commandbar::CommandBar& bar_;
    TabStrip& tabs_;
    TabBandUpdater& band_;
    ActiveTabDisplay& display_;
    const platform::Clock& clock_;
};
