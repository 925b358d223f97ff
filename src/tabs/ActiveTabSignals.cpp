#include "ActiveTabSignals.h"
#include "platform/browser/BrowserView.h"

using platform::BrowserView;

bool ActiveTabSignals::active(const BrowserView* view) const
{
    return view->index() != 0 && view->index() == state_.currentTab;
}

void ActiveTabSignals::watch(BrowserView* view)
{
    connect(view, &BrowserView::statusTextChanged, this, [this, view](const QString& text) {
        if (active(view))
            emit statusTextChanged(view, text);
    });
    connect(view, &BrowserView::progressChanged, this, [this, view] {
        if (active(view))
            emit progressChanged(view);
    });
    connect(view, &BrowserView::titleChanged, this, [this, view](const QString& title) {
        if (active(view))
            emit titleChanged(view, title);
    });
    connect(view, &BrowserView::loadStarted, this, [this, view] {
        if (active(view))
            emit loadStarted(view);
    });
    connect(view, &BrowserView::documentComplete, this, [this, view] {
        if (active(view))
            emit documentComplete(view);
    });
    connect(view, &BrowserView::fullScreenRequested, this, [this, view](bool on) {
        if (active(view))
            emit fullScreenRequested(view, on);
    });
}
