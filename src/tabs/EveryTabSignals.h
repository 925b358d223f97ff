#pragma once
// Re-emits the events of every view the tab strip makes, each with the view
// that sent it: the one place that follows each new view, so no other part of
// the program connects to views one by one. The catch view 0 is followed too
// (windows its pages ask for must reach the strip's policy); listeners that
// want tabs alone skip index 0. The counterpart of ActiveTabSignals, which
// passes on the active tab's events alone.
#include "platform/browser/BrowserView.h"

#include <QObject>

class TabStrip;

class EveryTabSignals : public QObject
{
    Q_OBJECT
public:
    explicit EveryTabSignals(TabStrip& tabs);

signals:
    // Each carries the view that sent it, alive for the call; its index()
    // names the tab for good.
    void titleChanged(platform::BrowserView* view, const QString& title);
    void loadStarted(platform::BrowserView* view);
    void documentComplete(platform::BrowserView* view);
    void statusTextChanged(platform::BrowserView* view, const QString& text);
    void progressChanged(platform::BrowserView* view, int progress, int maximum);
    void commandStateChanged(platform::BrowserView* view, int command, bool enabled);
    void windowClosing(platform::BrowserView* view, bool isChildWindow);
    void fullScreenRequested(platform::BrowserView* view, bool fullScreen);
    // Answered within the call, as the view's own request is.
    void newWindowRequested(platform::BrowserView* view, platform::NewWindowRequest& request);
    void pageMouseDown(platform::BrowserView* view, const platform::PageClick& click);
    void pageClicked(platform::BrowserView* view, const platform::PageClick& click);
    void draggedOut(platform::BrowserView* view, const QString& address);
    void lockLevelChanged(platform::BrowserView* view, int level);

private:
    void follow(platform::BrowserView* view);
};
