#pragma once
// Re-emits the events of whichever view is the active tab, so that what the
// window shows follows the active tab without every listener comparing view
// indices: the one place that tells the active tab's events from the rest.
#include "core/TabState.h"

#include <QObject>

namespace platform {
class BrowserView;
} // namespace platform
class EveryTabSignals;

class ActiveTabSignals : public QObject
{
    Q_OBJECT
public:
    explicit ActiveTabSignals(const TabState& state) : state_(state) {}

    // Passes on the active tab's part of every tab's events; view 0 is never
    // a tab.
    void follow(const EveryTabSignals& every);

signals:
    void statusTextChanged(platform::BrowserView* view, const QString& text);
    void progressChanged(platform::BrowserView* view);
    void titleChanged(platform::BrowserView* view, const QString& title);
    void loadStarted(platform::BrowserView* view);
    void documentComplete(platform::BrowserView* view);
    void fullScreenRequested(platform::BrowserView* view, bool fullScreen);

private:
    bool active(const platform::BrowserView* view) const;

    const TabState& state_;
};
