#include "ContentFilters.h"
#include "commandbar/CommandBar.h"
#include "commandbar/Tool.h"
#include "core/CommandDispatcher.h"
#include "core/Keys.h"
#include "core/MainState.h"
#include "core/Switches.h"
#include "platform/Dialogs.h"
#include "platform/FilterListPlaces.h"
#include "protect/filters/FilterCache.h"
#include "protect/filters/FilterRequest.h"
#include "tabs/EveryTabSignals.h"
#include "tabs/TabStrip.h"

#include <QDir>

namespace {

using Kind = platform::PageRequest::Kind;
using filters::RequestType;

RequestType typeOf(Kind kind)
{
    switch (kind) {
    case Kind::Document:
        return RequestType::Document;
    case Kind::Subdocument:
        return RequestType::Subdocument;
    case Kind::Script:
        return RequestType::Script;
    case Kind::Image:
        return RequestType::Image;
    case Kind::Stylesheet:
        return RequestType::Stylesheet;
    case Kind::Font:
        return RequestType::Font;
    case Kind::Media:
        return RequestType::Media;
    case Kind::Object:
        return RequestType::Object;
    case Kind::XmlHttpRequest:
        return RequestType::XmlHttpRequest;
    case Kind::Ping:
        return RequestType::Ping;
    case Kind::WebSocket:
        return RequestType::WebSocket;
    case Kind::Other:
        break;
    }
    return RequestType::Other;
}

std::string encoded(const QUrl& url)
{
    return url.toEncoded().toStdString();
}

// What the lists blocked on a tab's page since it started loading.
struct Filtered
{
    int count = 0;
};

} // namespace

ContentFilters::ContentFilters(const MainState& state, commandbar::CommandBar& bar, TabStrip& tabs,
                               const EveryTabSignals& every, platform::BrowserViewFactory& views,
                               platform::Dialogs& dialogs, Captions captions,
                               CommandDispatcher& commands)
    : state_(state), bar_(bar), tabs_(tabs), views_(views), captions_(std::move(captions)),
      lists_(state.folder), allowedSites_(state.folder, QStringLiteral("AllowedSites.txt"))
{
    views.setContentPolicy(this);
    QObject::connect(&every, &EveryTabSignals::loadStarted, &context_,
                     [this](platform::BrowserView* view) {
                         if (Tab* tab = tabs_.tab(view->index()))
                             tab->data<Filtered>() = {};
                         if (view->index() == state_.currentTab)
                             showCurrent();
                     });
    // Once loaded, the tab in front shows its new site's switch.
    QObject::connect(&every, &EveryTabSignals::documentComplete, &context_,
                     [this](platform::BrowserView* view) {
                         if (view->index() == state_.currentTab)
                             showCurrent();
                     });
    QObject::connect(&tabs, &TabStrip::changed, &context_, [this](const TabChange& change) {
        if (change.kind == TabChange::Kind::Activated)
            showCurrent();
    });
    commands.on(cmd::Command::FilterLists,
                [this, &dialogs](const CommandContext&) { chooseLists(dialogs); });
    commands.on(cmd::Command::AllowOnSite, [this](const CommandContext& c) {
        const QUrl page(c.view->locationUrl());
        if (page.host().isEmpty())
            return;
        // The site alone is kept: a page's path and query are none of the file's business.
        const QString site =
            page.adjusted(QUrl::RemoveUserInfo | QUrl::RemovePort | QUrl::RemovePath |
                          QUrl::RemoveQuery | QUrl::RemoveFragment)
                .toString();
        if (allowed(page) ? allowedSites_.remove(page) : allowedSites_.add(site))
            c.view->refresh();
        showCurrent();
    });
}

ContentFilters::~ContentFilters()
{
    views_.setContentPolicy(nullptr);
}

void ContentFilters::readLists()
{
    read_ = true;
    reading_ = std::async(std::launch::async,
                          [lists = lists_.on(), cache = platform::filterCacheFile()]() mutable {
                              return std::make_shared<const filters::FilterEngine>(
                                  filters::FilterCache(std::move(cache)).engineFor(lists));
                          });
}

void ContentFilters::startReading()
{
    if (!read_)
        readLists();
}

const filters::FilterEngine& ContentFilters::engine()
{
    startReading();
    if (reading_.valid())
        engine_ = reading_.get();
    return *engine_;
}

const filters::FilterEngine* ContentFilters::engineIfRead()
{
    startReading();
    if (reading_.valid() && reading_.wait_for(std::chrono::seconds(0)) == std::future_status::ready)
        engine_ = reading_.get();
    return reading_.valid() ? nullptr : engine_.get();
}

bool ContentFilters::allowed(const QUrl& page) const
{
    return allowedSites_.lists(page);
}

bool ContentFilters::blocks(platform::BrowserView& view, const platform::PageRequest& request)
{
    const QUrl& page = request.page.isEmpty() ? QUrl(view.locationUrl()) : request.page;
    if (allowed(page))
        return false;
    const auto filterRequest =
        filters::FilterRequest::make(encoded(request.url), encoded(page), typeOf(request.kind));
    if (!filterRequest || !engine().decide(*filterRequest).block)
        return false;
    if (Tab* tab = tabs_.tab(view.index())) {
        ++tab->data<Filtered>().count;
        if (view.index() == state_.currentTab)
            showCurrent();
    }
    return true;
}

QString ContentFilters::styleFor(platform::BrowserView&, const QUrl& page)
{
    if (allowed(page) || page.host().isEmpty())
        return {};
    const filters::FilterEngine* read = engineIfRead();
    return read ? QString::fromStdString(read->hiding().styleFor(page.host().toStdString()))
                : QString();
}

bool ContentFilters::blocksWindow(const QUrl& url, const QUrl& opener)
{
    if (allowed(opener))
        return false;
    const auto request =
        filters::FilterRequest::make(encoded(url), encoded(opener), filters::RequestType::Popup);
    const filters::FilterEngine* read = engineIfRead();
    return request && read && read->decide(*request).block;
}

void ContentFilters::showCurrent()
{
    platform::BrowserView* view = tabs_.currentView();
    Tab* tab = view ? tabs_.tab(view->index()) : nullptr;
    if (commandbar::Tool* counter =
            bar_.tool(QLatin1String(key::statusBar), QLatin1String(key::filteredCountTool))) {
        const QString label = counter->caption().left(counter->caption().indexOf(u':') + 1);
        const int count = tab ? tab->data<Filtered>().count : 0;
        counter->setCaption(count > 0 ? label + QString::number(count) : label);
    }
    switches::set(bar_, cmd::Command::AllowOnSite, view && allowed(QUrl(view->locationUrl())));
}

// The lists the user switches off are read no more, from the next request on.
void ContentFilters::chooseLists(platform::Dialogs& dialogs)
{
    const QStringList lists = lists_.all();
    QList<bool> on = lists_.onOf(lists);
    const commandbar::Tool* tool =
        bar_.tool(QLatin1String(key::contentBlockMenu), cmd::keyOf(cmd::Command::FilterLists));
    QString title = tool ? tool->caption() : QString();
    title.remove(u'&').remove(QStringLiteral("..."));
    const QString prompt =
        captions_(QStringLiteral("flt_Prompt"),
                  QStringLiteral("Filter lists keep ads and trackers out of pages. Lists of your "
                                 "own are read from %1."))
            .arg(QDir::toNativeSeparators(lists_.ownFolder()));
    if (!dialogs.chooseSome(title, prompt, lists, on) || !lists_.choose(lists, on))
        return;
    if (reading_.valid())
        reading_.wait();
    readLists();
}
