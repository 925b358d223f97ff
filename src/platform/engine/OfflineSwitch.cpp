#include "OfflineSwitch.h"
#include "proxy/InwardRequest.h"

namespace platform {

bool isNetworkAddress(const QUrl& url)
{
    static const QStringList network = {QStringLiteral("http"), QStringLiteral("https"),
                                        QStringLiteral("ws"), QStringLiteral("wss"),
                                        QStringLiteral("ftp")};
    return network.contains(url.scheme());
}

void OfflineSwitch::interceptRequest(QWebEngineUrlRequestInfo& info)
{
    const bool leaves = offline_ && isNetworkAddress(info.requestUrl());
    const bool inward = info.resourceType() != QWebEngineUrlRequestInfo::ResourceTypeMainFrame &&
                        proxy::reachesInward(info.initiator(), info.requestUrl());
    if (leaves || inward)
        info.block(true);
}

} // namespace platform
