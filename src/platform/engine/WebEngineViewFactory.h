#pragma once
// Makes the engine views of one window on the profile they share.
#include "EngineProfile.h"
#include "platform/browser/BrowserView.h"

namespace platform {

class WebEngineViewFactory : public BrowserViewFactory
{
public:
    explicit WebEngineViewFactory(Dialogs& dialogs) : engine_(dialogs) {}
    BrowserView* create(int index) override;
    void setHomeAddress(const QString& address) override { engine_.setHomeAddress(address); }
    void setSearchAddress(const QString& searchTemplate) override
    {
        engine_.setSearchAddress(searchTemplate);
    }
    void setNavigationPolicy(NavigationPolicy& policy) override
    {
        engine_.setNavigationPolicy(policy);
    }
    ConnectionState& connection() override { return engine_.connection(); }
    PrivateData& privateData() override { return engine_; }
    EngineProfile& engine() { return engine_; }
    DownloadManager& downloads() const { return engine_.downloads(); }

private:
    EngineProfile engine_;
};

} // namespace platform
