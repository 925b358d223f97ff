#include "ActiveTabPresenter.h"
#include "ActiveTabDisplay.h"
#include "ActiveTabSignals.h"
#include "EveryTabSignals.h"
#include "TabBandUpdater.h"
#include "TabChange.h"
#include "TabStrip.h"
#include "commandbar/CommandBar.h"
#include "core/Keys.h"
#include "platform/Clock.h"

#include <QRegularExpression>
#include <cmath>

using platform::BrowserView;

namespace {

// Spaces show only after the host, and user-info never: an address cannot
// push its real host out of sight behind a name of its choosing.
QString shownAddress(const BrowserView& view)
{
    QString address = view.locationUrl();
    const qsizetype schemeEnd = address.indexOf(QLatin1String("://"));
    const qsizetype hostStart = schemeEnd < 0 ? 0 : schemeEnd + 3;
    static const QRegularExpression pathStart(QStringLiteral("[/?#]"));
    qsizetype hostEnd = schemeEnd < 0 ? 0 : address.indexOf(pathStart, hostStart);
    if (hostEnd < 0)
        hostEnd = address.size();
    if (const qsizetype at = address.lastIndexOf(u'@', hostEnd - 1);
        schemeEnd >= 0 && at >= hostStart) {
        address.remove(hostStart, at + 1 - hostStart);
        hostEnd -= at + 1 - hostStart;
    }
    return address.left(hostEnd) +
           address.mid(hostEnd).replace(QLatin1String("%20"), QLatin1String(" "));
}

} // namespace

ActiveTabPresenter::ActiveTabPresenter(MainState& state, commandbar::CommandBar& bar,
                                       TabStrip& tabs, TabBandUpdater& band,
                                       ActiveTabDisplay& display, const platform::Clock& clock,
                                       ActiveTabSignals& active)
    : state_(state), bar_(bar), tabs_(tabs), band_(band), display_(display), clock_(clock)
{
    connect(&band, &TabBandUpdater::navigationChanged, this,
            &ActiveTabPresenter::refreshNavButtons);
    connect(&active, &ActiveTabSignals::statusTextChanged, this,
            &ActiveTabPresenter::activeStatusText);
    connect(&active, &ActiveTabSignals::progressChanged, this,
            [this](BrowserView* view) { display_.setProgress(band_.percentOf(view->index())); });
    connect(&active, &ActiveTabSignals::titleChanged, this, &ActiveTabPresenter::activeTitle);
    // A page without a title (a blank one) never sends one: the box shows
    // its address once it has loaded all the same.
    connect(&active, &ActiveTabSignals::documentComplete, this, [this](BrowserView* view) {
        if (const QString address = shownAddress(*view); display_.addressText() != address)
            display_.setAddressText(address);
    });
    connect(&active, &ActiveTabSignals::fullScreenRequested, this,
            [this](BrowserView*, bool on) { emit pageFullScreen(on); });
}

void ActiveTabPresenter::follow(const EveryTabSignals& every)
{
    // The catch view 0 is never a tab.
    connect(&every, &EveryTabSignals::titleChanged, this,
            [this](BrowserView* view, const QString& title) {
                if (view->index() != 0 && !title.isEmpty())
                    hookDocument(view);
            });
    connect(&every, &EveryTabSignals::pageClicked, this,
            [this](BrowserView* view, const platform::PageClick& click) {
                if (view->index() != 0)
                    documentClick(click);
            });
}

bool ActiveTabPresenter::fullScreen() const
{
    return bar_.isChecked(key::viewMenu, key::fullScreen);
}

void ActiveTabPresenter::activeStatusText(BrowserView* view, const QString& text)
{
    display_.setStatusText(text);
    // A page that changes while it loads is hooked again.
    if (!view->locationUrl().isEmpty() && view->readyState() != BrowserView::Uninitialized)
        hookDocument(view);
}

void ActiveTabPresenter::refreshNavButtons()
{
    if (state_.shuttingDown)
        return;
    const BrowserView* view = tabs_.currentView();
    const int position = view ? tabs_.positions().positionOf(*view) : 0;
    if (position == 0)
        return;
    if (commandbar::Tool* forward = bar_.tool(key::mainBar, key::forward))
        forward->setEnabled(state_.canGoForward[size_t(position)]);
    if (commandbar::Tool* back = bar_.tool(key::mainBar, key::back))
        back->setEnabled(state_.canGoBack[size_t(position)]);
}

void ActiveTabPresenter::activeTitle(BrowserView* view, const QString& text)
{
    if (text.isEmpty())
        return;
    if (!fullScreen())
        display_.setCaption(text + QStringLiteral(" - ") + state_.baseTitle);
    if (const QString address = shownAddress(*view); display_.addressText() != address)
        display_.setAddressText(address);
    view->focusPage();
}

void ActiveTabPresenter::documentClick(const platform::PageClick& click)
{
    if (!click.trusted)
        return;
    state_.lastClickTime = int(std::nearbyint(clock_.secondsSinceMidnight()));
}

void ActiveTabPresenter::hookDocument(BrowserView* view)
{
    if (!view || view->locationUrl().isEmpty() || !view->hasDocument())
        return;
    emit documentHooked(view);
}

void ActiveTabPresenter::activeTabRefreshed(BrowserView* view)
{
    hookDocument(view);
    const QString address = view->locationUrl();
    const QString title = view->title();
    if (!title.isEmpty() && !address.isEmpty()) {
        // One caption whichever way the tab came to the front: a title
        // change and a tab switch both name the program with its version.
        if (!fullScreen())
            display_.setCaption(title + QStringLiteral(" - ") + state_.baseTitle);
        band_.setCaption(view->index(), title);
    } else if (!fullScreen()) {
        display_.setCaption(state_.baseTitle);
    }
    if (const QString shown = shownAddress(*view); display_.addressText() != shown)
        display_.setAddressText(shown);
    display_.setProgress(band_.percentOf(view->index()));
    refreshNavButtons();
}

// The document of a tab being left is hooked once more, as it is left. Its
// handlers live in the page, so there is nothing of the program's to drop.
void ActiveTabPresenter::tabActivated(const TabChange& change)
{
    if (change.left)
        hookDocument(change.left);
    if (change.opened)
        newTabActivated();
    else
        activeTabRefreshed(change.view);
}

void ActiveTabPresenter::newTabActivated()
{
    display_.setCaption(state_.baseTitle);
    display_.setAddressText(QString());
    display_.clearInfo();
    display_.setStatusText(QString());
    display_.setProgress(0);
    refreshNavButtons();
    display_.focusAddress();
}
