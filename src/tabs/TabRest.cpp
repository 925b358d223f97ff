#include "TabRest.h"
#include "TabStrip.h"

#include <algorithm>

using State = platform::LifecycleFacet::State;
using std::chrono::milliseconds;

namespace {

// Often enough to be late by a tenth of the shorter time, rarely enough to
// cost nothing: a look at memory and at each tab's time.
milliseconds sweepInterval(const TabRest::Times& times)
{
    milliseconds shortest{30000};
    for (milliseconds time : {times.freeze, times.discard})
        if (time.count() > 0)
            shortest = std::min(shortest, time / 10);
    return std::max(shortest, milliseconds{10});
}

} // namespace

qint64 TabRest::steadyNow()
{
    return std::chrono::duration_cast<milliseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

TabRest::TabRest(TabStrip& tabs, MemoryLow memoryLow, Now now)
    : tabs_(tabs), memoryLow_(std::move(memoryLow)), now_(std::move(now))
{
    connect(&timer_, &QTimer::timeout, this, &TabRest::sweep);
}

void TabRest::start(Times times)
{
    times_ = times;
    if (timer_.isActive())
        return;
    connect(&tabs_, &TabStrip::changed, this, &TabRest::changed);
    timer_.start(sweepInterval(times_));
}

void TabRest::changed(const TabChange& change)
{
    if (change.kind == TabChange::Kind::Activated && change.left)
        hiddenSince_.insert(change.left, now_());
    else if (change.kind == TabChange::Kind::Removed)
        hiddenSince_.remove(change.view);
}

void TabRest::sweep()
{
    const qint64 now = now_();
    const bool low = memoryLow_();
    const platform::BrowserView* front = tabs_.currentView();
    QHash<const platform::BrowserView*, qint64> stillHidden;
    for (platform::BrowserView* view : tabs_.tabViews()) {
        // A tab waiting to be shown has no page yet.
        if (view == front || view->waitsToBeShown())
            continue;
        const qint64 since = hiddenSince_.value(view, now);
        stillHidden.insert(view, since);
        const milliseconds hidden{now - since};
        State deepest = State::Active;
        if (times_.freeze.count() > 0 && hidden >= times_.freeze)
            deepest = State::Frozen;
        if (low || (times_.discard.count() > 0 && hidden >= times_.discard))
            deepest = State::Discarded;
        if (view->lifecycle().state() < deepest)
            view->lifecycle().rest(deepest);
    }
    hiddenSince_.swap(stillHidden);
}
