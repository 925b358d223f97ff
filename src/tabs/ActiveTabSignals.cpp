#include "ActiveTabSignals.h"
#include "EveryTabSignals.h"
#include "platform/browser/BrowserView.h"

using platform::BrowserView;

bool ActiveTabSignals::active(const BrowserView* view) const
{
    return view->index() != 0 && view->index() == state_.currentTab;
}

void ActiveTabSignals::follow(const EveryTabSignals& every)
{
    connect(&every, &EveryTabSignals::statusTextChanged, this,
            [this](BrowserView* view, const QString& text) {
                if (active(view))
                    emit statusTextChanged(view, text);
            });
    connect(&every, &EveryTabSignals::progressChanged, this, [this](BrowserView* view) {
        if (active(view))
            emit progressChanged(view);
    });
    connect(&every, &EveryTabSignals::titleChanged, this,
            [this](BrowserView* view, const QString& title) {
                if (active(view))
                    emit titleChanged(view, title);
            });
    connect(&every, &EveryTabSignals::loadStarted, this, [this](BrowserView* view) {
        if (active(view))
            emit loadStarted(view);
    });
    connect(&every, &EveryTabSignals::documentComplete, this, [this](BrowserView* view) {
        if (active(view))
            emit documentComplete(view);
    });
    connect(&every, &EveryTabSignals::fullScreenRequested, this,
            [this](BrowserView* view, bool on) {
                if (active(view))
                    emit fullScreenRequested(view, on);
            });
}
