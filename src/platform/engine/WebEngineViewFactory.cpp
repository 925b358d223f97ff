#include "WebEngineViewFactory.h"
#include "WebEngineBrowserView.h"
#include "proxy/ForwardingProxy.h"

#include <QCoreApplication>
#include <QNetworkProxy>

namespace platform {

namespace {

proxy::ForwardingProxy* programProxy = nullptr;

// The engine takes a change of the application proxy one request late, so
// the program's proxy is set once, before the first page, and stays for the
// whole run; choosing a proxy changes only where it forwards.
// A peer connection's UDP goes to its peers straight, never through a proxy,
// so it is kept off; the engine reads its flags once, when it starts.
void keepPeerConnectionsOnTheProxy()
{
    const QByteArray flag = "--force-webrtc-ip-handling-policy=disable_non_proxied_udp";
    QByteArray flags = qgetenv("QTWEBENGINE_CHROMIUM_FLAGS");
    if (flags.contains("--force-webrtc-ip-handling-policy"))
        return;
    qputenv("QTWEBENGINE_CHROMIUM_FLAGS", flags.isEmpty() ? flag : flags + ' ' + flag);
}

proxy::ForwardingProxy& sharedProxy()
{
    if (!programProxy) {
        keepPeerConnectionsOnTheProxy();
        programProxy = new proxy::ForwardingProxy;
        programProxy->setHostRules(proxy::HostRules::fromArguments(
            QCoreApplication::arguments() +
            proxy::HostRules::splitFlags(qEnvironmentVariable("QTWEBENGINE_CHROMIUM_FLAGS"))));
        QNetworkProxy::setApplicationProxy(QNetworkProxy(
            QNetworkProxy::HttpProxy, QStringLiteral("127.0.0.1"), programProxy->port(),
            proxy::ForwardingProxy::user(), programProxy->secret()));
        qAddPostRoutine([] { delete std::exchange(programProxy, nullptr); });
    }
    return *programProxy;
}

} // namespace

WebEngineViewFactory::WebEngineViewFactory(Dialogs& dialogs, Shell& shell)
    : proxy_(sharedProxy()), engine_(dialogs, shell)
{
}

std::unique_ptr<BrowserView> WebEngineViewFactory::create(int index)
{
    return std::make_unique<WebEngineBrowserView>(index, engine_);
}

} // namespace platform
