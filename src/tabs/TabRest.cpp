#include "TabRest.h"
#include "TabStrip.h"

#include <algorithm>
#include <utility>

using State = platform::LifecycleFacet::State;
using std::chrono::milliseconds;

namespace {

// How often a tab that would not rest is asked again (it played sound, it
// loaded): late by at most a tenth of the shorter time.
milliseconds retryInterval(const TabRest::Times& times)
{
    milliseconds shortest{10000};
    for (milliseconds time : {times.freeze, times.discard})
        if (time.count() > 0)
            shortest = std::min(shortest, time / 10);
    return std::max(shortest, milliseconds{10});
}

// How often the system's memory is looked at while a tab could give some back.
constexpr qint64 memoryInterval = 10000;

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
    timer_.setSingleShot(true);
    connect(&timer_, &QTimer::timeout, this, &TabRest::sweep);
}

void TabRest::start(Times times)
{
    times_ = times;
    if (std::exchange(started_, true))
        return;
    connect(&tabs_, &TabStrip::changed, this, &TabRest::changed);
    sweep();
}

void TabRest::changed(const TabChange& change)
{
    if (change.kind == TabChange::Kind::Activated && change.left)
        hiddenSince_.insert(change.left, now_());
    else if (change.kind == TabChange::Kind::Removed)
        hiddenSince_.remove(change.view);
    // A tab left the front or came: its time starts now.
    lookIn(0);
}

void TabRest::lookIn(qint64 ms)
{
    const qint64 at = now_() + ms;
    if (nextLook_ >= 0 && nextLook_ <= at)
        return;
    nextLook_ = at;
    timer_.start(int(ms));
}

void TabRest::sweep()
{
    const qint64 now = now_();
    const bool low = memoryLow_();
    const platform::BrowserView* front = tabs_.currentView();
    const qint64 retry = retryInterval(times_).count();
    qint64 next = -1;
    const auto dueAt = [&next](qint64 at) { next = next < 0 ? at : std::min(next, at); };
    QHash<const platform::BrowserView*, qint64> stillHidden;
    for (platform::BrowserView* view : tabs_.tabViews()) {
        if (view == front)
            continue;
        // A tab waiting to be shown has no page yet; it may get one any time.
        if (view->waitsToBeShown()) {
            dueAt(now + memoryInterval);
            continue;
        }
        const qint64 since = hiddenSince_.value(view, now);
        stillHidden.insert(view, since);
        const milliseconds hidden{now - since};
        const bool freezes = times_.freeze.count() > 0;
        const bool discards = times_.discard.count() > 0;
        State deepest = State::Active;
        if (freezes && hidden >= times_.freeze)
            deepest = State::Frozen;
        if (low || (discards && hidden >= times_.discard))
            deepest = State::Discarded;
        platform::LifecycleFacet& lifecycle = view->lifecycle();
        if (lifecycle.state() < deepest)
            lifecycle.rest(deepest);
        const State state = lifecycle.state();
        if (state == State::Discarded)
            continue;
        dueAt(now + memoryInterval);
        if (state < deepest)
            dueAt(now + retry);
        else if (freezes && hidden < times_.freeze)
            dueAt(since + times_.freeze.count());
        else if (discards && hidden < times_.discard)
            dueAt(since + times_.discard.count());
    }
    hiddenSince_.swap(stillHidden);
    nextLook_ = -1;
    timer_.stop();
    if (next >= 0)
        lookIn(std::max<qint64>(next - now, 0));
}
