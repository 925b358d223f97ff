#include "BackgroundRestore.h"
#include "EveryTabSignals.h"
#include "TabStrip.h"

#include <QTimer>

BackgroundRestore::BackgroundRestore(TabStrip& tabs, const EveryTabSignals& every)
    : tabs_(tabs), every_(every)
{
}

// Off (the default), it hears nothing: no cost per tab or per page.
void BackgroundRestore::start()
{
    if (started_)
        return;
    started_ = true;
    connect(&every_, &EveryTabSignals::documentComplete, this, [this](platform::BrowserView* view) {
        if (view == loading_ || view == tabs_.currentView())
            loadNext();
    });
    // A restored tab is opened first and told its page after: it is looked
    // for once the opening is over. A closed tab that was loading lets the
    // next go.
    connect(&tabs_, &TabStrip::changed, this, [this](const TabChange& change) {
        if (change.kind == TabChange::Kind::Removed && change.view == loading_)
            loading_.clear();
        if (change.kind == TabChange::Kind::Inserted || change.kind == TabChange::Kind::Removed)
            QTimer::singleShot(0, this, &BackgroundRestore::loadNext);
    });
    loadNext();
}

void BackgroundRestore::loadNext()
{
    if (loading_ && loading_->readyState() != platform::BrowserView::Complete)
        return;
    loading_.clear();
    const platform::BrowserView* front = tabs_.currentView();
    if (front && front->readyState() != platform::BrowserView::Complete && front->hasDocument())
        return;
    for (platform::BrowserView* view : tabs_.tabViews())
        if (view->waitsToBeShown()) {
            loading_ = view;
            view->refresh();
            return;
        }
}
