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
    if (offline_ && isNetworkAddress(info.requestUrl()))
        info.block(true);
    else if (info.resourceType() != QWebEngineUrlRequestInfo::ResourceTypeMainFrame &&
             proxy::reachesInward(info.initiator(), info.requestUrl()))
        info.block(true);
}

} // namespace platform
