#include "EngineSecurity.h"
#include "CertificateGate.h"
#include "WebEnginePage.h"
#include "platform/browser/BrowserView.h"

#include <QWebEngineLoadingInfo>

namespace platform {

EngineSecurity::EngineSecurity(WebEnginePage& page, const CertificateGate& gate, BrowserView& view)
    : QObject(&page), gate_(gate), view_(view)
{
    connect(&page, &QWebEnginePage::loadingChanged, this, &EngineSecurity::loadingChanged);
    // Insecure content may come after the load has ended (a picture shown later).
    page.mixedContent = [this] {
        mixed_ = true;
        if (level_ == 2)
            setLevel(1);
    };
}

void EngineSecurity::loadingChanged(const QWebEngineLoadingInfo& info)
{
    if (info.status() == QWebEngineLoadingInfo::LoadStartedStatus)
        mixed_ = false;
    if (info.status() == QWebEngineLoadingInfo::LoadStartedStatus ||
        info.status() == QWebEngineLoadingInfo::LoadStoppedStatus)
        return;
    // The engine's own error page in place of a page that failed is not secure,
    // but a server's own page for an error status is the server's.
    const bool errorPage = info.status() == QWebEngineLoadingInfo::LoadFailedStatus &&
                           info.errorDomain() != QWebEngineLoadingInfo::HttpStatusCodeDomain;
    const QUrl url = info.url();
    setLevel(errorPage ? 0 : platform::lockLevel(url, gate_.overridden(url.host()) || mixed_));
}

void EngineSecurity::setLevel(int level)
{
    if (level == level_)
        return;
    level_ = level;
    emit view_.lockLevelChanged(level);
}

} // namespace platform
