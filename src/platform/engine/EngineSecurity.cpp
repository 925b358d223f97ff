#include "EngineSecurity.h"
#include "CertificateGate.h"
#include "platform/browser/BrowserView.h"

#include <QWebEngineLoadingInfo>
#include <QWebEnginePage>

namespace platform {

EngineSecurity::EngineSecurity(QWebEnginePage& page, const CertificateGate& gate, BrowserView& view)
    : QObject(&page), gate_(gate), view_(view)
{
    connect(&page, &QWebEnginePage::loadingChanged, this, &EngineSecurity::loadingChanged);
}

void EngineSecurity::loadingChanged(const QWebEngineLoadingInfo& info)
{
    if (info.status() == QWebEngineLoadingInfo::LoadStartedStatus ||
        info.status() == QWebEngineLoadingInfo::LoadStoppedStatus)
        return;
    // The engine's own error page in place of a page that failed is not secure,
    // but a server's own page for an error status is the server's.
    const bool errorPage = info.status() == QWebEngineLoadingInfo::LoadFailedStatus &&
                           info.errorDomain() != QWebEngineLoadingInfo::HttpStatusCodeDomain;
    const QUrl url = info.url();
    const int level = errorPage ? 0 : platform::lockLevel(url, gate_.overridden(url.host()));
    if (level == level_)
        return;
    level_ = level;
    emit view_.lockLevelChanged(level);
}

} // namespace platform
