#include "TabStrip.h"
#include "commandbar/CommandBar.h"
#include "core/Keys.h"
#include "core/Switches.h"

#include <QWidget>
#include <limits>
#include <utility>

using platform::BrowserView;

namespace {

TabChange record(TabChange::Kind kind, BrowserView* view, int position)
{
    TabChange change;
    change.kind = kind;
    change.view = view;
    change.position = position;
    return change;
}

} // namespace

TabStrip::TabStrip(MainState& state, commandbar::CommandBar& bar,
                   platform::BrowserViewFactory& factory, platform::ViewStage& stage)
    : state_(state), bar_(bar), factory_(factory), stage_(stage), band_(bar),
      positions_(state, [this](int index) { return view(index); })
{
}

TabStrip::~TabStrip() = default;

Tab* TabStrip::tab(int index) const
{
    const auto it = tabs_.find(index);
    return it == tabs_.end() ? nullptr : it->second.get();
}

BrowserView* TabStrip::view(int index) const
{
    const Tab* found = tab(index);
    return found ? &found->view() : nullptr;
}

std::vector<BrowserView*> TabStrip::tabViews() const
{
    std::vector<BrowserView*> views;
    for (const int index : band_.viewIndices())
        if (BrowserView* v = view(index))
            views.push_back(v);
    return views;
}

void TabStrip::createCatchView()
{
    BrowserView& catchView = (tabs_[0] = std::make_unique<Tab>(factory_.create(0)))->view();
    stage_.park(catchView);
    catchView.widget()->hide();
    emit changed(record(TabChange::Kind::Inserted, &catchView, 0));
}

void TabStrip::openFirstTab()
{
    newTab({}, true);
    state_.previousTab = state_.currentTab;
}

int TabStrip::newTab(const QString& address, bool activate)
{
    if (state_.tabCount >= std::numeric_limits<qint16>::max())
        return 0;
    const int index = ++state_.tabCount;
    BrowserView* view = &(tabs_[index] = std::make_unique<Tab>(factory_.create(index)))->view();
    band_.add(index, QStringLiteral("New"), true);
    view->setSilent(switches::isOn(bar_, cmd::Command::Silent));
    const int position = positions_.append(*view);
    emit changed(record(TabChange::Kind::Inserted, view, position));

    if (!activate) {
        stage_.park(*view);
    } else {
        band_.setChecked(index, true);
        band_.setChecked(state_.currentTab, false);
        if (state_.currentTab != 0)
            if (BrowserView* old = this->view(state_.currentTab))
                stage_.park(*old);
        state_.previousTab = state_.currentTab;
        state_.currentTab = index;
        stage_.show(*view);
        TabChange activated = record(TabChange::Kind::Activated, view, position);
        activated.opened = true;
        emit changed(activated);
    }
    if (!address.isEmpty())
        view->navigate(address);
    return index;
}

int TabStrip::openWhenShown(const QString& address, const QString& title)
{
    const int index = newTab({}, false);
    if (BrowserView* opened = view(index))
        opened->navigateWhenShown(address, title);
    return index;
}

void TabStrip::openEntry(const QString& address)
{
    BrowserView* current = currentView();
    if (current && current->locationUrl().isEmpty())
        current->navigate(address);
    else
        newTab(address, true);
}

void TabStrip::activateTab(int index)
{
    if (index == 0)
        return;
    if (index == state_.currentTab) {
        if (state_.iconMoved)
            layOutAgain();
        return;
    }
    BrowserView* target = view(index);
    if (!target)
        return;
    band_.setChecked(index, true);
    band_.setChecked(state_.currentTab, false);
    BrowserView* old = state_.currentTab != 0 ? view(state_.currentTab) : nullptr;
    if (old)
        stage_.park(*old);
    state_.previousTab = state_.currentTab;
    state_.currentTab = index;
    showActive(old);
}

void TabStrip::layOutAgain()
{
    state_.iconMoved = false;
    band_.setChecked(state_.currentTab, true);
    bar_.recalcLayout();
    refreshActiveTab();
}

void TabStrip::openNewWindow(BrowserView& opener, platform::NewWindowRequest& request)
{
    if (state_.shuttingDown)
        return;
    switch (newWindowPolicy_->decide(opener, request)) {
    case platform::NewWindowPolicy::Verdict::OpenInNewTab:
        if (const int index = newTab({}, !request.inBackground()))
            request.openIn(*view(index));
        break;
    case platform::NewWindowPolicy::Verdict::Catch:
        request.openIn(*view(0));
        break;
    case platform::NewWindowPolicy::Verdict::Refuse:
        break;
    }
}

void TabStrip::retire(int index, int position, TabChange::Cause cause)
{
    if (Tab* closing = tab(index)) {
        TabChange removed = record(TabChange::Kind::Removed, &closing->view(), position);
        removed.cause = cause;
        emit changed(removed);
    }
    // What the program's parts kept of the tab goes with it here; the view
    // may outlive it.
    const auto node = tabs_.extract(index);
    if (node.empty())
        return;
    std::unique_ptr<BrowserView> owned = node.mapped()->releaseView();
    BrowserView& v = *owned;
    v.retire();
    stage_.park(v);
    v.setSilent(true);
    if (!v.locationUrl().isEmpty())
        v.stop();
    // Destroying a view ends its page; only a view that a prompt keeps alive
    // has its page emptied first (emptying a hundred pages made Close All
    // take seconds).
    if (v.busy() && v.hasDocument())
        v.clearDocument();
    v.widget()->hide();
    // The view may be the sender of the signal that led here, or be waiting
    // for the user inside a prompt of its page.
    owned.release()->deleteWhenIdle();
}

void TabStrip::drop(int index, int position, TabChange::Cause cause)
{
    retire(index, position, cause);
    band_.remove(index);
}

void TabStrip::closeTab(int index)
{
    if (index == 0)
        index = state_.currentTab;
    BrowserView* closing = view(index);
    if (!closing || index == 0)
        return;
    const int position = closing->tag().toInt();
    if (band_.count() <= 1) {
        closeEvery(TabChange::Cause::CloseTab);
        return;
    }
    positions_.removeAt(position);
    band_.remove(index);

    const BrowserView* previous = view(state_.previousTab);
    const int shown = positionShownAfterClose(position, previous ? previous->tag().toInt() : 0,
                                              positions_.last());
    const int next = positions_.viewAt(shown);
    band_.setChecked(next, true);
    if (state_.currentTab != index && state_.currentTab != next)
        band_.setChecked(state_.currentTab, false);

    // The view that now stands at the closed position; none when the last
    // tab was closed.
    state_.previousTab =
        state_.currentTab == index ? positions_.viewAt(position) : state_.currentTab;
    state_.currentTab = next;
    retire(index, position, TabChange::Cause::CloseTab);
    refreshActiveTab();
}

// The bulk closes hold shuttingDown while they run and then give back the
// value they found: the program's own shut-down closes its last tab this way.
void TabStrip::closeAllTabs()
{
    closeEvery(TabChange::Cause::Bulk);
}

void TabStrip::closeEvery(TabChange::Cause cause)
{
    const bool wasShuttingDown = std::exchange(state_.shuttingDown, true);
    for (int position = 1; position <= positions_.last(); ++position)
        drop(positions_.viewAt(position), position, cause);
    positions_.clear();
    state_.currentTab = 0;
    state_.previousTab = 0;
    newTab({}, true);
    state_.shuttingDown = wasShuttingDown;
}

void TabStrip::closeOtherTabs(int index)
{
    const int keep = index == 0 ? state_.currentTab : index;
    BrowserView* kept = view(keep);
    if (!kept)
        return;
    const bool wasShuttingDown = std::exchange(state_.shuttingDown, true);
    state_.currentTab = keep;
    state_.previousTab = keep;
    for (int position = positions_.last(); position >= 1; --position)
        if (const int other = positions_.viewAt(position); other != keep)
            drop(other, position, TabChange::Cause::Bulk);
    positions_.keepOnly(*kept);
    band_.setChecked(keep, true);
    state_.shuttingDown = wasShuttingDown;
    refreshActiveTab();
}

void TabStrip::pageClosing(int index, bool isChildWindow)
{
    if (isChildWindow || state_.shuttingDown)
        return;
    if (index == state_.currentTab) {
        closeTab(index);
        return;
    }
    BrowserView* closing = view(index);
    if (!closing || index == 0)
        return;
    closing->stop();
    const int position = closing->tag().toInt();
    positions_.removeAt(position);
    drop(index, position, TabChange::Cause::PageInBackground);
}

void TabStrip::refreshActiveTab()
{
    showActive(nullptr);
}

void TabStrip::showActive(BrowserView* left)
{
    if (state_.shuttingDown)
        return;
    BrowserView* active = currentView();
    if (!active || state_.currentTab == 0)
        return;
    stage_.show(*active);
    active->focusPage();
    TabChange activated =
        record(TabChange::Kind::Activated, active, positions_.positionOf(*active));
    activated.left = left;
    emit changed(activated);
}
