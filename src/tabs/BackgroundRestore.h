#pragma once
// For users who want every restored tab ready before they show it: the tabs
// that wait to be shown load one at a time, in strip order, each once the
// one before has loaded and never while the tab in front still loads.
#include <QObject>
#include <QPointer>

class EveryTabSignals;
class TabStrip;
namespace platform {
class BrowserView;
}

class BackgroundRestore : public QObject
{
public:
    BackgroundRestore(TabStrip& tabs, const EveryTabSignals& every);
    // From now on, and whenever a waiting tab is opened later.
    void start();

private:
    void loadNext();

    TabStrip& tabs_;
    const EveryTabSignals& every_;
    bool started_ = false;
    QPointer<platform::BrowserView> loading_;
};
