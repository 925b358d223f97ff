#pragma once
// What every view of the window shares on the engine: the persistent profile
// with its page agent, downloads and offline switch, the content policy, the
// page layout of printing, the home address, the navigation policy, and the
// dialogs and desktop its pages ask through.
#include "platform/browser/ViewPolicies.h"

#include <QPageLayout>
#include <QString>
#include <QTimer>
#include <vector>

class QWebEngineProfile;

namespace platform {

class Dialogs;
class Shell;
class DownloadManager;
class OfflineSwitch;

class EngineProfile : public PrivateData
{
public:
    EngineProfile(Dialogs& dialogs, Shell& shell);
    ~EngineProfile() override;
    EngineProfile(const EngineProfile&) = delete;
    EngineProfile& operator=(const EngineProfile&) = delete;

    QWebEngineProfile& profile() const { return *profile_; }
    DownloadManager& downloads() const { return *downloads_; }
    ConnectionState& connection() const;
    Dialogs& dialogs() const { return dialogs_; }
    Shell& shell() const { return shell_; }

    const QString& homeAddress() const { return homeAddress_; }
    void setHomeAddress(const QString& address) { homeAddress_ = address; }
    const QString& searchAddress() const { return searchAddress_; }
    void setSearchAddress(const QString& searchTemplate) { searchAddress_ = searchTemplate; }
    // Every policy is asked, in the order added; all must allow.
    bool allowsNavigation(BrowserView& view, const NavigationRequest& request) const;
    void addNavigationPolicy(NavigationPolicy& policy) { navigationPolicies_.push_back(&policy); }
    void removeNavigationPolicy(NavigationPolicy& policy)
    {
        std::erase(navigationPolicies_, &policy);
    }
    QPageLayout& pageLayout() { return pageLayout_; }
    // Views gave back memory: the heap's free pages go back to the system a
    // moment after the last of them, once for all.
    void returnFreeMemorySoon() { trim_.start(); }
    ContentPolicy* contentPolicy() const { return content_; }
    void setContentPolicy(ContentPolicy* policy) { content_ = policy; }
    void clear(int kinds) override;

private:
    Dialogs& dialogs_;
    Shell& shell_;
    QWebEngineProfile* profile_;
    DownloadManager* downloads_;
    OfflineSwitch* offline_;
    std::vector<NavigationPolicy*> navigationPolicies_;
    ContentPolicy* content_ = nullptr;
    QString homeAddress_ = QStringLiteral("about:blank");
    QString searchAddress_;
    QPageLayout pageLayout_;
    QTimer trim_;
};

} // namespace platform
