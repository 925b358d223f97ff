#pragma once
// The session: the open pages written as they change, and, at a start after
// the program did not end cleanly, the page that offers them back.
#include "RestorePage.h"
#include "SessionRecorder.h"
#include "platform/browser/BrowserView.h"

class SessionSubsystem
{
public:
    SessionSubsystem(const QString& folder, TabStrip& tabs, EveryTabSignals& every,
                     platform::BrowserViewFactory& views, RestorePage::Text text);

    // Once the first tab is open: offers the last session back when it did
    // not end cleanly, else starts recording.
    void start();
    // At a clean exit, before the tabs close.
    void finish() { recorder_.finish(); }

    const SessionFiles& files() const { return files_; }
    const RestorePage& restorePage() const { return restorePage_; }

private:
    SessionFiles files_;
    SessionRecorder recorder_;
    RestorePage restorePage_;
    platform::ScopedNavigationPolicy restorePageAsked_;
};
