#include "EveryTabSignals.h"
#include "TabStrip.h"

using platform::BrowserView;

EveryTabSignals::EveryTabSignals(TabStrip& tabs)
{
    connect(&tabs, &TabStrip::changed, this, [this](const TabChange& change) {
        if (change.kind == TabChange::Kind::Inserted)
            follow(change.view);
    });
}

void EveryTabSignals::follow(BrowserView* view)
{
    connect(view, &BrowserView::titleChanged, this,
            [this, view](const QString& title) { emit titleChanged(view, title); });
    connect(view, &BrowserView::loadStarted, this, [this, view] { emit loadStarted(view); });
    connect(view, &BrowserView::documentComplete, this,
            [this, view] { emit documentComplete(view); });
    connect(view, &BrowserView::statusTextChanged, this,
            [this, view](const QString& text) { emit statusTextChanged(view, text); });
    connect(view, &BrowserView::progressChanged, this, [this, view](int progress, int maximum) {
        emit progressChanged(view, progress, maximum);
    });
    connect(view, &BrowserView::commandStateChanged, this, [this, view](int command, bool enabled) {
        emit commandStateChanged(view, command, enabled);
    });
    connect(view, &BrowserView::windowClosing, this,
            [this, view](bool isChildWindow) { emit windowClosing(view, isChildWindow); });
    connect(view, &BrowserView::fullScreenRequested, this,
            [this, view](bool on) { emit fullScreenRequested(view, on); });
    connect(view, &BrowserView::newWindowRequested, this,
            [this, view](platform::NewWindowRequest& request) {
                emit newWindowRequested(view, request);
            });
    connect(view, &BrowserView::pageMouseDown, this,
            [this, view](const platform::PageClick& click) { emit pageMouseDown(view, click); });
    connect(view, &BrowserView::pageClicked, this,
            [this, view](const platform::PageClick& click) { emit pageClicked(view, click); });
    connect(view, &BrowserView::draggedOut, this,
            [this, view](const QString& address) { emit draggedOut(view, address); });
    connect(view, &BrowserView::lockLevelChanged, this,
            [this, view](int level) { emit lockLevelChanged(view, level); });
}
