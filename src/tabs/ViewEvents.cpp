#include "ViewEvents.h"
#include "ActiveTabDisplay.h"
#include "Ellipsis.h"
#include "LoadingPictures.h"
#include "TabStrip.h"
#include "app/Keys.h"
#include "platform/Clock.h"
#include "platform/commandbar/CommandBar.h"

#include <cmath>

using platform::BrowserView;

namespace {

int positionOf(const BrowserView& view, const MainState& state)
{
    const int position = view.tag().toInt();
    return position >= 1 && size_t(position) < state.tabView.size() ? position : 0;
}

QString shownAddress(const BrowserView& view)
{
    return view.locationUrl().replace(QLatin1String("%20"), QLatin1String(" "));
}

} // namespace

ViewEvents::ViewEvents(MainState& state, platform::CommandBar& bar, TabStrip& tabs,
                       ActiveTabDisplay& display, const platform::Clock& clock)
    : state_(state), bar_(bar), tabs_(tabs), display_(display), clock_(clock)
{
}

int ViewEvents::loadingPercent(int progress, int maximum)
{
    if (progress < maximum && maximum >= 1)
        return int(std::nearbyint(progress * 100.0 / maximum));
    return progress != 0 ? 100 : 0;
}

void ViewEvents::watch(BrowserView* view)
{
    const int index = view->index();
    if (index == 0)
        return; // the catch view is never a tab
    connect(view, &BrowserView::statusTextChanged, this,
            [this, index](const QString& text) { statusTextChange(index, text); });
    connect(view, &BrowserView::progressChanged, this,
            [this, index](int progress, int maximum) { progressChange(index, progress, maximum); });
    connect(view, &BrowserView::commandStateChanged, this, [this, index](int command, bool enable) {
        commandStateChange(index, command, enable);
    });
    connect(view, &BrowserView::titleChanged, this,
            [this, index](const QString& title) { titleChange(index, title); });
    connect(view, &BrowserView::pageClicked, this, &ViewEvents::documentClick);
    connect(view, &QObject::destroyed, this, [this, index] { percent_.erase(index); });
}

bool ViewEvents::fullScreen() const
{
    const platform::Tool* tool = bar_.tool(key::viewMenu, key::fullScreen);
    return tool && tool->checked();
}

void ViewEvents::statusTextChange(int index, const QString& text)
{
    if (index != state_.currentTab)
        return;
    display_.setStatusText(text);
    // A page that changes while it loads is hooked again.
    BrowserView* view = tabs_.view(index);
    if (view && !view->locationUrl().isEmpty() && view->readyState() != BrowserView::Uninitialized)
        hookDocument(view);
}

void ViewEvents::progressChange(int index, int progress, int maximum)
{
    const int percent = loadingPercent(progress, maximum);
    percent_[index] = percent;
    if (index == state_.currentTab)
        display_.setProgress(percent);
    const BrowserView* view = tabs_.view(index);
    const int position = view ? positionOf(*view, state_) : 0;
    const int band = loadingBand(percent);
    if (position == 0 || band == 0)
        return;
    const QString toolKey = key::tabPrefix + QString::number(state_.tabView[size_t(position)]);
    if (platform::Tool* tool = bar_.tool(key::tabsBar, toolKey))
        tool->setPicture(loadingPicture(band, bar_.pagePicture()));
}

void ViewEvents::commandStateChange(int index, int command, bool enable)
{
    const BrowserView* view = tabs_.view(index);
    const int position = view ? positionOf(*view, state_) : 0;
    if (position == 0)
        return;
    if (command == BrowserView::CommandForward)
        state_.canGoForward[size_t(position)] = enable;
    else if (command == BrowserView::CommandBack)
        state_.canGoBack[size_t(position)] = enable;
    refreshNavButtons();
}

void ViewEvents::refreshNavButtons()
{
    if (state_.shuttingDown)
        return;
    const BrowserView* view = tabs_.currentView();
    const int position = view ? positionOf(*view, state_) : 0;
    if (position == 0)
        return;
    if (platform::Tool* forward = bar_.tool(key::mainBar, key::forward))
        forward->setEnabled(state_.canGoForward[size_t(position)]);
    if (platform::Tool* back = bar_.tool(key::mainBar, key::back))
        back->setEnabled(state_.canGoBack[size_t(position)]);
}

void ViewEvents::setTabCaption(int index, const QString& title)
{
    const QString caption = ellipsis(title, tabCaptionWidth);
    platform::Tool* tool = bar_.tool(key::tabsBar, key::tabPrefix + QString::number(index));
    if (tool && tool->caption() != caption) {
        tool->setCaption(caption);
        bar_.recalcLayout();
    }
}

void ViewEvents::titleChange(int index, const QString& text)
{
    if (text.isEmpty())
        return;
    setTabCaption(index, text);
    BrowserView* view = tabs_.view(index);
    if (!view)
        return;
    if (index == state_.currentTab) {
        if (!fullScreen())
            display_.setCaption(text + QStringLiteral(" - ") + state_.baseTitle);
        if (const QString address = shownAddress(*view); display_.addressText() != address)
            display_.setAddressText(address);
        view->focusPage();
    }
    hookDocument(view);
}

void ViewEvents::documentClick(const platform::PageClick& click)
{
    if (!click.trusted)
        return;
    state_.lastClickTime = int(std::nearbyint(clock_.secondsSinceMidnight()));
}

void ViewEvents::hookDocument(BrowserView* view)
{
    if (!view || view->locationUrl().isEmpty() || !view->hasDocument())
        return;
    emit documentHooked(view);
}

void ViewEvents::activeTabRefreshed(BrowserView* view)
{
    hookDocument(view);
    const QString address = view->locationUrl();
    const QString title = view->title();
    if (!title.isEmpty() && !address.isEmpty()) {
        if (!fullScreen())
            display_.setCaption(title + (address.startsWith(QLatin1String("http"))
                                             ? QStringLiteral(" - QUB-BROWSER")
                                             : QStringLiteral(" - ") + state_.baseTitle));
        setTabCaption(view->index(), title);
    } else if (!fullScreen()) {
        display_.setCaption(state_.baseTitle);
    }
    if (const QString shown = shownAddress(*view); display_.addressText() != shown)
        display_.setAddressText(shown);
    display_.setProgress(percentOf(view->index()));
    refreshNavButtons();
}

void ViewEvents::newTabActivated(BrowserView*)
{
    display_.setCaption(state_.baseTitle);
    display_.setAddressText(QString());
    display_.clearInfo();
    display_.setStatusText(QString());
    display_.setProgress(0);
    refreshNavButtons();
    display_.focusAddress();
}

// The document of the tab being left is dropped, then hooked once more: the
// tab strip reports the tab before it changes the current tab, on purpose.
void ViewEvents::tabLeft(BrowserView* view)
{
    emit documentDropped();
    hookDocument(view);
}

int ViewEvents::percentOf(int index) const
{
    const auto it = percent_.find(index);
    return it == percent_.end() ? 0 : it->second;
}
