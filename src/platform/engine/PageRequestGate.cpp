#include "PageRequestGate.h"
#include "EngineProfile.h"
#include "OfflineSwitch.h"
#include "platform/browser/ViewPolicies.h"

namespace platform {

namespace {

PageRequest::Kind kindOf(QWebEngineUrlRequestInfo::ResourceType type)
{
    using Info = QWebEngineUrlRequestInfo;
    using Kind = PageRequest::Kind;
    switch (type) {
    case Info::ResourceTypeMainFrame:
    case Info::ResourceTypeNavigationPreloadMainFrame:
        return Kind::Document;
    case Info::ResourceTypeSubFrame:
    case Info::ResourceTypeNavigationPreloadSubFrame:
        return Kind::Subdocument;
    case Info::ResourceTypeStylesheet:
        return Kind::Stylesheet;
    case Info::ResourceTypeScript:
    case Info::ResourceTypeWorker:
    case Info::ResourceTypeSharedWorker:
    case Info::ResourceTypeServiceWorker:
        return Kind::Script;
    case Info::ResourceTypeImage:
    case Info::ResourceTypeFavicon:
        return Kind::Image;
    case Info::ResourceTypeFontResource:
        return Kind::Font;
    case Info::ResourceTypeObject:
    case Info::ResourceTypePluginResource:
        return Kind::Object;
    case Info::ResourceTypeMedia:
        return Kind::Media;
    case Info::ResourceTypeXhr:
        return Kind::XmlHttpRequest;
    case Info::ResourceTypePing:
        return Kind::Ping;
    case Info::ResourceTypeWebSocket:
        return Kind::WebSocket;
    default:
        return Kind::Other;
    }
}

} // namespace

PageRequestGate::PageRequestGate(const EngineProfile& engine, BrowserView& view, QObject* parent)
    : QWebEngineUrlRequestInterceptor(parent), engine_(engine), view_(view)
{
}

// The page's own address is the user's to go to; what it then fetches is
// the policy's to refuse.
void PageRequestGate::interceptRequest(QWebEngineUrlRequestInfo& info)
{
    ContentPolicy* policy = engine_.contentPolicy();
    const PageRequest::Kind kind = kindOf(info.resourceType());
    if (!policy || kind == PageRequest::Kind::Document || !isNetworkAddress(info.requestUrl()))
        return;
    if (policy->blocks(view_, {info.requestUrl(), info.firstPartyUrl(), kind}))
        info.block(true);
}

} // namespace platform
