#pragma once
// Work offline for the whole profile: while on, every request that would
// leave the machine is refused before it is sent; local files, the program's
// own pages and data addresses still load.
#include "platform/browser/ViewFacets.h"

#include <QWebEngineUrlRequestInterceptor>
#include <atomic>

namespace platform {

// An address whose request would leave the machine.
bool isNetworkAddress(const QUrl& url);

class OfflineSwitch : public QWebEngineUrlRequestInterceptor, public ConnectionState
{
public:
    bool offline() const override { return offline_; }
    void setOffline(bool offline) override { offline_ = offline; }
    void interceptRequest(QWebEngineUrlRequestInfo& info) override;

private:
    // Read by the engine for each request, possibly off the UI thread.
    std::atomic<bool> offline_ = false;
};

} // namespace platform
