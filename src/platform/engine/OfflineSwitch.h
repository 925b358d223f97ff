#pragma once
// The profile's gate for every request. Work offline: while on, every
// request that would leave the machine is refused before it is sent; local
// files, the program's own pages and data addresses still load. And always: a
// page from outside gets nothing from this computer's or the local network's
// addresses (reachesInward) but by the user's own navigation.
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
