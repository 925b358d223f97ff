#pragma once
// Makes the engine views of one window on the profile they share, with the
// engine started so that nothing of a page goes around the program's proxy.
#include "EngineProfile.h"
#include "platform/browser/BrowserView.h"

namespace platform {

class WebEngineViewFactory : public BrowserViewFactory
{
public:
    // Sets the program's proxy up before the engine makes its profile.
    WebEngineViewFactory(Dialogs& dialogs, Shell& shell);
    std::unique_ptr<BrowserView> create(int index) override;
    void setHomeAddress(const QString& address) override { engine_.setHomeAddress(address); }
    void setSearchAddress(const QString& searchTemplate) override
    {
        engine_.setSearchAddress(searchTemplate);
    }
    void addNavigationPolicy(NavigationPolicy& policy) override
    {
        engine_.addNavigationPolicy(policy);
    }
    void removeNavigationPolicy(NavigationPolicy& policy) override
    {
        engine_.removeNavigationPolicy(policy);
    }
    void setContentPolicy(ContentPolicy* policy) override { engine_.setContentPolicy(policy); }
    ConnectionState& connection() override { return engine_.connection(); }
    PrivateData& privateData() override { return engine_; }
    proxy::ForwardingProxy& forwardingProxy() override { return proxy_; }
    EngineProfile& engine() { return engine_; }
    DownloadManager& downloads() const { return engine_.downloads(); }

private:
    // Before the profile: the proxy is in place before the engine starts.
    proxy::ForwardingProxy& proxy_;
    EngineProfile engine_;
};

} // namespace platform
