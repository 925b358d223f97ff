#include "RestorePage.h"
#include "platform/browser/BrowserView.h"
#include "tabs/TabChange.h"
#include "tabs/TabStrip.h"

#include <QTimer>

namespace {

// Where the page's links and form lead, with a query: a name that never
// resolves, for requests that go no further than this policy. (The engine
// does not ask about a navigation to "about:blank".)
constexpr QLatin1String ownAddress{"http://restore.invalid/"};

constexpr QLatin1String head{
    "<!DOCTYPE html><html><head><meta charset=\"utf-8\">"
    "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
    "style-src 'unsafe-inline'; base-uri 'none'\">"
    "<style>body{font:15px sans-serif;margin:2em 3em;color:#222}h1{font-size:1.6em}"
    "ul{list-style:none;padding:0}li{margin:.4em 0}li span{color:#666;margin-left:.6em}"
    "button{font-size:1em;margin-right:1em;padding:.3em 1.2em}nav a{margin-right:1em}"
    "nav b{margin-right:1em}</style>"};

QString escaped(const QString& text)
{
    return text.toHtmlEscaped()
        .replace(u'\'', QLatin1String("&#39;"))
        .replace(QChar(0), QChar(0xFFFD));
}

bool ownRequest(const QUrl& url)
{
    return url.adjusted(QUrl::RemoveQuery) == QUrl(ownAddress) && url.hasQuery();
}

} // namespace

QString restorePageMarkup(const RestorePage::Versions& versions, int shown,
                          const RestorePage::Text& text)
{
    const QString title = text(QStringLiteral("rst_Title"), QStringLiteral("Restore Session"));
    QString html = head + QStringLiteral("<title>") + escaped(title) +
                   QStringLiteral("</title></head><body><h1>") + escaped(title) +
                   QStringLiteral("</h1><p>") +
                   escaped(text(QStringLiteral("rst_Text"),
                                QStringLiteral("QUB-BROWSER did not end properly. These pages "
                                               "were open; choose those to open again."))) +
                   QStringLiteral("</p><nav>");
    for (int version = 0; version < int(versions.size()); ++version) {
        if (!versions[size_t(version)] || versions[size_t(version)]->pages().isEmpty())
            continue;
        const QString name =
            version == 0
                ? text(QStringLiteral("rst_Latest"), QStringLiteral("Latest"))
                : text(QStringLiteral("rst_Backup"), QStringLiteral("Backup %1")).arg(version);
        html += version == shown ? QStringLiteral("<b>") + escaped(name) + QStringLiteral("</b>")
                                 : QStringLiteral("<a href=\"%1?show=%2\">%3</a>")
                                       .arg(ownAddress)
                                       .arg(version)
                                       .arg(escaped(name));
    }
    html += QStringLiteral("</nav><form action=\"%1\" method=\"get\"><input type=\"hidden\" "
                           "name=\"version\" value=\"%2\"><ul>")
                .arg(ownAddress)
                .arg(shown);
    const QList<SessionTab> pages =
        versions[size_t(shown)] ? versions[size_t(shown)]->pages() : QList<SessionTab>();
    for (int n = 0; n < pages.size(); ++n) {
        const SessionTab& page = pages[n];
        html += QStringLiteral("<li><label><input type=\"checkbox\" name=\"tab\" value=\"%1\" "
                               "checked> %2<span>%3</span></label></li>")
                    .arg(n)
                    .arg(escaped(page.title.isEmpty() ? page.address : page.title),
                         escaped(page.address));
    }
    return html +
           QStringLiteral("</ul><button name=\"do\" value=\"restore\">%1</button>"
                          "<button name=\"do\" value=\"new\">%2</button></form></body></html>")
               .arg(escaped(text(QStringLiteral("rst_Restore"), QStringLiteral("Restore"))),
                    escaped(text(QStringLiteral("rst_StartNew"), QStringLiteral("Start new"))));
}

RestorePage::RestorePage(TabStrip& tabs, Text text, std::function<void()> decided)
    : tabs_(tabs), text_(std::move(text)), decided_(std::move(decided))
{
    QObject::connect(&tabs, &TabStrip::changed, &tabs,
                     [this](const TabChange& change) { tabChanged(change); });
}

void RestorePage::offer(Versions versions)
{
    versions_ = std::move(versions);
    platform::BrowserView* first = tabs_.view(1);
    if (first && first->locationUrl().isEmpty() && tabs_.tabViews().size() == 1) {
        view_ = first;
    } else {
        view_ = tabs_.view(tabs_.newTab({}, true));
    }
    if (!view_) {
        decide();
        return;
    }
    int latest = 0;
    while (latest + 1 < int(versions_.size()) && !versions_[size_t(latest)])
        ++latest;
    show(latest);
}

void RestorePage::show(int version)
{
    if (version < 0 || version >= int(versions_.size()) || !versions_[size_t(version)])
        return;
    view_->document().write(restorePageMarkup(versions_, version, text_));
}

bool RestorePage::allows(platform::BrowserView& view, const platform::NavigationRequest& request)
{
    if (&view != view_.data())
        return true;
    // The written page itself arrives as a document of its own.
    if (!request.mainFrame || request.url.scheme() == QLatin1String("data"))
        return true;
    if (!ownRequest(request.url) || (request.kind != platform::NavigationRequest::Kind::Link &&
                                     request.kind != platform::NavigationRequest::Kind::Form)) {
        decide();
        return true;
    }
    const QUrlQuery query(request.url);
    const QString action = query.queryItemValue(QStringLiteral("do"));
    // Answered after the engine has heard the refusal.
    QTimer::singleShot(0, view_.data(), [this, query, action] {
        if (query.hasQueryItem(QStringLiteral("show")))
            show(query.queryItemValue(QStringLiteral("show")).toInt());
        else if (action == QLatin1String("restore"))
            restore(query.queryItemValue(QStringLiteral("version")).toInt(), query);
        else if (action == QLatin1String("new")) {
            platform::BrowserView* view = view_.data();
            decide();
            view->goHome();
        }
    });
    return false;
}

void RestorePage::restore(int version, const QUrlQuery& query)
{
    if (version < 0 || version >= int(versions_.size()) || !versions_[size_t(version)])
        return;
    const SessionState& state = *versions_[size_t(version)];
    const QList<SessionTab> pages = state.pages();
    const SessionTab shown = state.current >= 0 ? state.tabs[state.current] : SessionTab();
    QList<SessionTab> chosen;
    for (const QString& value : query.allQueryItemValues(QStringLiteral("tab"))) {
        bool number = false;
        const int n = value.toInt(&number);
        if (number && n >= 0 && n < pages.size() && !chosen.contains(pages[n]))
            chosen << pages[n];
    }
    platform::BrowserView* view = view_.data();
    decide();
    if (chosen.isEmpty()) {
        view->goHome();
        return;
    }
    // The restore page's tab takes the first page; the tab shown last time
    // is shown again when it was chosen. Only the tab in front loads now,
    // the others when they are first shown.
    int front = chosen.first() == shown ? view->index() : 0;
    for (int n = 1; n < chosen.size(); ++n) {
        const int index = tabs_.openWhenShown(chosen[n].address, chosen[n].title);
        if (chosen[n] == shown && !front)
            front = index;
    }
    if (front)
        tabs_.activateTab(front);
    view->navigateWhenShown(chosen.first().address, chosen.first().title);
}

void RestorePage::decide()
{
    if (view_.isNull())
        return;
    view_.clear();
    decided_();
}

void RestorePage::tabChanged(const TabChange& change)
{
    if (change.kind == TabChange::Kind::Removed && change.view == view_.data())
        decide();
}
