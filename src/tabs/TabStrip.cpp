#include "TabStrip.h"
#include "Ellipsis.h"
#include "app/Keys.h"
#include "platform/commandbar/AddBandTool.h"
#include "platform/commandbar/CommandBar.h"

#include <QWidget>
#include <limits>
#include <utility>

using platform::BrowserView;

namespace {
constexpr int tabToolBaseId = 50000;
constexpr int tooltipWidth = 50;
constexpr int blockedListWidth = 50;
} // namespace

TabStrip::TabStrip(MainState& state, platform::CommandBar& bar,
                   platform::BrowserViewFactory& factory, platform::ViewStage& stage)
    : state_(state), bar_(bar), factory_(factory), stage_(stage)
{
}

TabStrip::~TabStrip()
{
    for (auto& [index, view] : views_)
        delete view;
}

std::optional<platform::SkinError> TabStrip::skinProblem(const platform::CommandBar& bar)
{
    const platform::Band* tabs = bar.band(key::tabsBar);
    if (!tabs)
        return platform::SkinError{0, QStringLiteral("band \"%1\" is missing").arg(key::tabsBar)};
    if (tabs->kind() != platform::BandKind::Toolbar)
        return platform::SkinError{
            tabs->sourceLine(), QStringLiteral("band \"%1\" must be a toolbar").arg(key::tabsBar)};
    if (tabs->count() > 0)
        return platform::SkinError{
            tabs->sourceLine(),
            QStringLiteral("band \"%1\" must declare no tools: the tabs are its tools")
                .arg(key::tabsBar)};
    return std::nullopt;
}

platform::Band& TabStrip::band() const
{
    return *bar_.band(key::tabsBar);
}

platform::Tool* TabStrip::tabTool(int index) const
{
    return band().tool(key::tabPrefix + QString::number(index));
}

void TabStrip::setTabChecked(int index, bool checked)
{
    if (platform::Tool* tool = tabTool(index))
        tool->setChecked(checked);
}

BrowserView* TabStrip::view(int index) const
{
    const auto it = views_.find(index);
    return it == views_.end() ? nullptr : it->second;
}

void TabStrip::createCatchView()
{
    BrowserView* catchView = factory_.create(0);
    views_[0] = catchView;
    stage_.park(*catchView);
    catchView->widget()->hide();
    emit viewCreated(catchView);
}

void TabStrip::openFirstTab()
{
    newTab({}, true);
    state_.previousTab = state_.currentTab;
}

void TabStrip::addTabTool(const QString& caption, int index, bool withIcon)
{
    platform::Tool* tool =
        platform::AddBandTool(bar_, key::tabsBar, key::tabPrefix + QString::number(index),
                              tabToolBaseId + index, QStringLiteral("0"), caption, withIcon);
    tool->setDisplayStyle(3);
    tool->setCheckable(true);
    bar_.recalcLayout();
}

int TabStrip::newTab(const QString& address, bool activate)
{
    if (state_.tabCount >= std::numeric_limits<qint16>::max())
        return 0;
    const int index = ++state_.tabCount;
    BrowserView* view = factory_.create(index);
    views_[index] = view;
    emit viewCreated(view);
    addTabTool(QStringLiteral("New"), index, true);

    const platform::Tool* silent = bar_.tool(key::toolsMenu, key::silent);
    view->setSilent(silent && silent->checked());
    const int position = band().count();
    view->setTag(QString::number(position));
    state_.tabView.resize(size_t(position) + 1, 0);
    state_.canGoForward.resize(size_t(position) + 1, false);
    state_.canGoBack.resize(size_t(position) + 1, false);
    state_.tabView[size_t(position)] = index;

    if (!activate) {
        stage_.park(*view);
    } else {
        setTabChecked(index, true);
        setTabChecked(state_.currentTab, false);
        if (state_.currentTab != 0)
            if (BrowserView* old = this->view(state_.currentTab))
                stage_.park(*old);
        state_.previousTab = state_.currentTab;
        state_.currentTab = index;
        stage_.show(*view);
        emit newTabActivated(view);
    }
    if (!address.isEmpty())
        view->navigate(address);
    return index;
}

void TabStrip::activateTab(int index)
{
    if (index == 0 || index == state_.currentTab)
        return;
    BrowserView* target = view(index);
    if (!target)
        return;
    setTabChecked(index, true);
    setTabChecked(state_.currentTab, false);
    if (BrowserView* old = view(state_.currentTab)) {
        stage_.park(*old);
        emit tabLeft(old);
    }
    state_.previousTab = state_.currentTab;
    state_.currentTab = index;
    refreshActiveTab();
}

void TabStrip::openNewWindow(platform::NewWindowRequest& request)
{
    if (state_.shuttingDown)
        return;
    if (const int index = newTab({}, !request.inBackground()))
        request.openIn(*view(index));
}

void TabStrip::shiftLeftFrom(int position)
{
    const int last = lastPosition();
    for (int q = position; q <= last; ++q) {
        if (BrowserView* v = view(state_.tabView[size_t(q)]))
            v->setTag(QString::number(v->tag().toInt() - 1));
        if (q < last) {
            state_.tabView[size_t(q)] = state_.tabView[size_t(q) + 1];
            state_.canGoForward[size_t(q)] = state_.canGoForward[size_t(q) + 1];
            state_.canGoBack[size_t(q)] = state_.canGoBack[size_t(q) + 1];
        }
    }
    if (last >= 1) {
        state_.tabView.pop_back();
        state_.canGoForward.pop_back();
        state_.canGoBack.pop_back();
    }
}

// Tab keys are never used again, so the bar's collection lets them go too.
void TabStrip::removeTabTool(int index)
{
    platform::Band& tabs = band();
    bar_.removeTool(tabs, tabs.indexOf(tabTool(index)));
    bar_.removeCollectionTool(key::tabPrefix + QString::number(index));
}

void TabStrip::retire(int index)
{
    const auto it = views_.find(index);
    if (it == views_.end())
        return;
    BrowserView* v = it->second;
    views_.erase(it);
    stage_.park(*v);
    v->setSilent(true);
    if (!v->locationUrl().isEmpty())
        v->stop();
    if (v->hasDocument())
        v->clearDocument();
    v->widget()->hide();
    // The view may be the sender of the signal that led here, or be waiting
    // for the user inside a prompt of its page.
    v->deleteWhenIdle();
}

void TabStrip::closeTab(int index)
{
    if (index == 0)
        index = state_.currentTab;
    BrowserView* closing = view(index);
    if (!closing || index == 0)
        return;
    const int position = closing->tag().toInt();
    if (const QString address = closing->locationUrl(); !address.isEmpty())
        emit pageClosed(ellipsis(closing->title(), blockedListWidth), address);
    if (band().count() <= 1) {
        closeAllTabs();
        return;
    }
    shiftLeftFrom(position);
    removeTabTool(index);

    const int last = lastPosition();
    const int fallback = position > 1 ? position - 1 : 1;
    const BrowserView* previous = view(state_.previousTab);
    int shown = previous ? previous->tag().toInt() : 0;
    if (shown == 0)
        shown = fallback;
    shown = std::clamp(shown, 1, last);
    const int next = state_.tabView[size_t(shown)];
    setTabChecked(next, true);
    if (state_.currentTab != index && state_.currentTab != next)
        setTabChecked(state_.currentTab, false);

    if (state_.currentTab == index)
        state_.previousTab = position <= last ? state_.tabView[size_t(position)] : next;
    else
        state_.previousTab = state_.currentTab;
    state_.currentTab = next;
    retire(index);
    refreshActiveTab();
}

// The bulk closes hold shuttingDown while they run and then give back the
// value they found: the program's own shut-down closes its last tab this way.
void TabStrip::closeAllTabs()
{
    const bool wasShuttingDown = std::exchange(state_.shuttingDown, true);
    for (int position = 1; position <= lastPosition(); ++position) {
        const int index = state_.tabView[size_t(position)];
        retire(index);
        removeTabTool(index);
    }
    state_.tabView.assign(1, 0);
    state_.canGoForward.assign(1, false);
    state_.canGoBack.assign(1, false);
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
    const int keptPosition = kept->tag().toInt();
    const bool forward = state_.canGoForward[size_t(keptPosition)];
    const bool back = state_.canGoBack[size_t(keptPosition)];
    const bool wasShuttingDown = std::exchange(state_.shuttingDown, true);
    state_.currentTab = keep;
    state_.previousTab = keep;
    for (int position = lastPosition(); position >= 1; --position) {
        const int other = state_.tabView[size_t(position)];
        if (other == keep)
            continue;
        retire(other);
        removeTabTool(other);
    }
    state_.tabView = {0, keep};
    state_.canGoForward = {false, forward};
    state_.canGoBack = {false, back};
    kept->setTag(QStringLiteral("1"));
    setTabChecked(keep, true);
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
    shiftLeftFrom(closing->tag().toInt());
    removeTabTool(index);
    retire(index);
}

void TabStrip::reportTool(platform::Tool* tool)
{
    const QString name = tool ? tool->key() : QString();
    if (name.left(5) != QLatin1String(key::tabPrefix)) {
        state_.tabMenuArmed = false;
        if (state_.tabMenuPending)
            state_.targetTab = 0;
        return;
    }
    state_.tabMenuArmed = true;
    const int index = name.right(name.size() - 5).toInt();
    QString address;
    if (const BrowserView* v = view(index))
        address = v->locationUrl().replace(QLatin1String("%20"), QLatin1String(" "));
    const QString shortAddress = ellipsis(address, tooltipWidth);
    tool->setTooltip(shortAddress.isEmpty() ? QStringLiteral("Blank Page") : shortAddress);
    state_.targetTab = index;
}

void TabStrip::refreshActiveTab()
{
    if (state_.shuttingDown)
        return;
    BrowserView* active = currentView();
    if (!active || state_.currentTab == 0)
        return;
    stage_.show(*active);
    active->focusPage();
    emit activeTabRefreshed(active);
}
