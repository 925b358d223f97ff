#include "OfflineSwitch.h"

namespace platform {

void OfflineSwitch::interceptRequest(QWebEngineUrlRequestInfo& info)
{
    if (!offline_)
        return;
    static const QStringList network = {QStringLiteral("http"), QStringLiteral("https"),
                                        QStringLiteral("ws"), QStringLiteral("wss"),
                                        QStringLiteral("ftp")};
    if (network.contains(info.requestUrl().scheme()))
        info.block(true);
}

} // namespace platform
