#pragma once
// One page's gate for its requests: each request to the network, with what
// it fetches and the page it is for, goes to the window's content policy
// before it is sent, and is refused when the policy blocks it. Per page, so
// the policy knows which tab asked.
#include <QWebEngineUrlRequestInterceptor>

namespace platform {

class BrowserView;
class EngineProfile;

class PageRequestGate : public QWebEngineUrlRequestInterceptor
{
public:
    PageRequestGate(const EngineProfile& engine, BrowserView& view, QObject* parent);
    void interceptRequest(QWebEngineUrlRequestInfo& info) override;

private:
    const EngineProfile& engine_;
    BrowserView& view_;
};

} // namespace platform
