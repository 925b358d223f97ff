#include "PopupBlocker.h"
#include "BlockedList.h"
#include "ContentFilters.h"
#include "KillList.h"
#include "commandbar/CommandBar.h"
#include "commandbar/Tool.h"
#include "core/Keys.h"
#include "core/MainState.h"
#include "core/Switches.h"
#include "platform/ClickHook.h"
#include "platform/Clock.h"
#include "platform/Shell.h"
#include "platform/browser/BrowserView.h"
#include "tabs/Ellipsis.h"
#include "tabs/EveryTabSignals.h"
#include "tabs/Tab.h"
#include "tabs/Tabs.h"

#include <algorithm>

namespace {

// The same press seen by the hook and by the page, allowing for rounding.
bool samePoint(QPoint a, QPoint b)
{
    return (a - b).manhattanLength() <= 2;
}

} // namespace

PopupBlocker::PopupBlocker(const MainState& state, const commandbar::CommandBar& bar, Tabs& tabs,
                           const EveryTabSignals& every, const platform::ClickHook& hook,
                           const platform::Clock& clock, platform::Shell& shell,
                           BlockedList& blocked, const KillList& killList, ContentFilters& filters)
    : state_(state), bar_(bar), tabs_(tabs), hook_(hook), filters_(filters), clock_(clock),
      shell_(shell), blocked_(blocked), killList_(killList)
{
    QObject::connect(&every, &EveryTabSignals::pageMouseDown, &context_,
                     [this](platform::BrowserView* view, const platform::PageClick& click) {
                         if (Tab* tab = tabs_.tab(view->index())) {
                             Records& r = tab->data<Records>();
                             r.lastPress = r.lastEvent = click;
                             r.pressed = r.any = true;
                         }
                     });
    QObject::connect(&every, &EveryTabSignals::pageClicked, &context_,
                     [this](platform::BrowserView* view, const platform::PageClick& click) {
                         if (Tab* tab = tabs_.tab(view->index())) {
                             Records& r = tab->data<Records>();
                             r.lastEvent = click;
                             r.any = true;
                         }
                     });
    // A new document has no focus or press of the old one.
    QObject::connect(&every, &EveryTabSignals::loadStarted, &context_,
                     [this](platform::BrowserView* view) {
                         if (Tab* tab = tabs_.tab(view->index()))
                             tab->data<Records>() = {};
                     });
}

PopupFacts PopupBlocker::factsFor(const platform::BrowserView& opener) const
{
    PopupFacts f;
    f.stopPopups = switches::isOn(bar_, cmd::Command::StopPopups);
    f.fromCurrentTab = opener.index() == state_.currentTab;
    f.hasAddress = !opener.locationUrl().isEmpty();
    f.now = clock_.secondsSinceMidnight();
    f.lastClickTime = state_.lastClickTime;
    // A page nobody touched has its body focused.
    f.activeTag = QStringLiteral("BODY");
    Tab* tab = tabs_.tab(opener.index());
    const Records r = tab ? tab->data<Records>() : Records{};
    if (r.any) {
        const platform::PageClick& e = r.lastEvent;
        if (e.inSubframe) {
            // The top document sees the frame's element focused.
            f.activeTag = QStringLiteral("IFRAME");
            f.frameHasActiveElement = !e.focusedTag.isEmpty();
        } else if (!e.focusedTag.isEmpty()) {
            f.activeTag = e.focusedTag;
            f.activeValue = e.focusedHref;
            if (e.focusedTag == e.tag)
                f.activeInputType = e.inputType;
        }
    }
    f.buttonWentDown =
        hook_.lastPressTime() >= 0 && f.now - hook_.lastPressTime() <= pressWindowSeconds;
    if (f.buttonWentDown && r.pressed &&
        samePoint(r.lastPress.screenPoint, hook_.lastPressPoint())) {
        f.elementAtPoint = !r.lastPress.tag.isEmpty();
        f.pointValue = r.lastPress.inSubframe ? QString() : r.lastPress.href;
    }
    return f;
}

PopupBlocker::Verdict PopupBlocker::decide(platform::BrowserView& opener,
                                           const platform::NewWindowRequest& request)
{
    // A popup the lists name is dropped even on a click: such windows come
    // with the page's own clicks.
    if (const QUrl url = request.url();
        url.isValid() && !url.isEmpty() && filters_.blocksWindow(url, QUrl(opener.locationUrl()))) {
        sound();
        record(url.toString());
        return Verdict::Refuse;
    }
    PopupFacts facts = factsFor(opener);
    facts.chosenFromPageMenu = request.chosenFromPageMenu();
    facts.userActivated = request.userInitiated();
    if (windowAllowed(facts) && (facts.stopPopups || facts.userActivated || withinBurst(opener)))
        return Verdict::OpenInNewTab;
    sound();
    // A window that names its address is listed now and never made: loading
    // it into the catch view would cost a page set-up per window, which a
    // storm of them turns into seconds. One that names none goes to the catch
    // view and is listed when it first navigates.
    // (The engine names a window opened without an address "about:blank#blocked".)
    const QUrl url = request.url();
    if (url.isValid() && !url.isEmpty() &&
        url.adjusted(QUrl::RemoveFragment) != QUrl(QStringLiteral("about:blank"))) {
        record(url.toString());
        return Verdict::Refuse;
    }
    return Verdict::Catch;
}

bool PopupBlocker::unasked(const platform::BrowserView& view,
                           const platform::NavigationRequest& request) const
{
    using Kind = platform::NavigationRequest::Kind;
    // Typed addresses, history moves, reloads and a server's redirects are
    // the user's or follow what was allowed; so is the first page of a tab.
    if (request.kind != Kind::Link && request.kind != Kind::Form && request.kind != Kind::Other)
        return false;
    if (view.locationUrl().isEmpty())
        return false;
    const double input = std::max(hook_.lastPressTime(), hook_.lastKeyTime());
    return input < 0 || clock_.secondsSinceMidnight() - input > pressWindowSeconds;
}

bool PopupBlocker::withinBurst(const platform::BrowserView& opener)
{
    Tab* tab = tabs_.tab(opener.index());
    if (!tab)
        return false;
    Burst& burst = tab->data<Burst>();
    const double now = clock_.secondsSinceMidnight();
    if (burst.start < 0 || now < burst.start || now - burst.start >= 1) {
        burst.start = now;
        burst.count = 0;
    }
    return ++burst.count <= unaskedPerSecond;
}

void PopupBlocker::sound()
{
    shell_.playSound(state_.folder.read(QStringLiteral("block.wav")));
}

void PopupBlocker::record(const QString& address)
{
    blocked_.record(ellipsis(address, 50), address);
}

bool PopupBlocker::allows(platform::BrowserView& view, const platform::NavigationRequest& request)
{
    const QString address = request.url.toString();
    if (view.index() == 0) {
        // The catch view never goes anywhere: its first address is what was blocked.
        record(address);
        return false;
    }
    if (!request.mainFrame || !switches::isOn(bar_, cmd::Command::KillPopups))
        return true;
    if (!killList_.lists(request.url) && !unasked(view, request))
        return true;
    blocked_.record(address, address);
    sound();
    // Closed once the engine is done asking, as when a page closes its window.
    QMetaObject::invokeMethod(
        &context_, [this, index = view.index()] { tabs_.pageClosing(index, false); },
        Qt::QueuedConnection);
    return false;
}
