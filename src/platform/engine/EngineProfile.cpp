#include "EngineProfile.h"
#include "DownloadManager.h"
#include "OfflineSwitch.h"
#include "PageAgent.h"
#include "platform/FreeMemory.h"

#include <QPageSize>
#include <QWebEngineCookieStore>
#include <QWebEngineProfile>
#include <QWebEngineSettings>

namespace platform {

EngineProfile::EngineProfile(Dialogs& dialogs, Shell& shell)
    : dialogs_(dialogs), shell_(shell),
      profile_(new QWebEngineProfile(QStringLiteral("QUB-BROWSER"))),
      pageLayout_(QPageSize(QPageSize::A4), QPageLayout::Portrait, QMarginsF(15, 15, 15, 15),
                  QPageLayout::Millimeter)
{
    profile_->settings()->setAttribute(QWebEngineSettings::JavascriptCanOpenWindows, true);
    profile_->settings()->setAttribute(QWebEngineSettings::FullScreenSupportEnabled, true);
    // A page opened from disk (saved, downloaded) reads no other file.
    profile_->settings()->setAttribute(QWebEngineSettings::LocalContentCanAccessFileUrls, false);
    // A page's peer connections name no address of this machine's own.
    profile_->settings()->setAttribute(QWebEngineSettings::WebRTCPublicInterfacesOnly, true);
    installPageAgent(*profile_);
    downloads_ = new DownloadManager(*profile_, dialogs_);
    offline_ = new OfflineSwitch;
    profile_->setUrlRequestInterceptor(offline_);
    trim_.setSingleShot(true);
    trim_.setInterval(1000);
    QObject::connect(&trim_, &QTimer::timeout, &trim_, [] { returnFreeMemory(); });
}

EngineProfile::~EngineProfile()
{
    delete downloads_;
    delete profile_;
    delete offline_;
}

ConnectionState& EngineProfile::connection() const
{
    return *offline_;
}

bool EngineProfile::allowsNavigation(BrowserView& view, const NavigationRequest& request) const
{
    bool allowed = true;
    for (NavigationPolicy* policy : navigationPolicies_)
        allowed = policy->allows(view, request) && allowed;
    return allowed;
}

void EngineProfile::clear(int kinds)
{
    if (kinds & Cookies)
        profile_->cookieStore()->deleteAllCookies();
    if (kinds & Cache)
        profile_->clearHttpCache();
    if (kinds & History)
        profile_->clearAllVisitedLinks();
}

} // namespace platform
