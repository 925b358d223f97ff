#include "WebEngineBrowserView.h"
#include "DownloadManager.h"
#include "DragOutWatch.h"
#include "EngineProfile.h"
#include "OfflineSwitch.h"
#include "PageAgent.h"
#include "PageMenu.h"
#include "PageNotice.h"
#include "PageRequestGate.h"
#include "WebEnginePage.h"
#include "platform/Dialogs.h"
#include "platform/browser/AddressUrl.h"
#include "platform/browser/StatusText.h"

#include <QAction>
#include <QAuthenticator>
#include <QStackedLayout>
#include <QWebEngineFullScreenRequest>
#include <QWebEngineHistory>
#include <QWebEngineLoadingInfo>
#include <QWebEngineNewWindowRequest>
#include <QWebEngineSettings>
#include <QWebEngineView>

namespace platform {

namespace {

class EngineNewWindowRequest : public NewWindowRequest
{
public:
    EngineNewWindowRequest(QWebEngineNewWindowRequest& request, bool fromMenu)
        : request_(request), fromMenu_(fromMenu)
    {
    }
    QUrl url() const override { return request_.requestedUrl(); }
    bool userInitiated() const override { return request_.isUserInitiated(); }
    bool chosenFromPageMenu() const override { return fromMenu_; }
    bool inBackground() const override
    {
        return request_.destination() == QWebEngineNewWindowRequest::InNewBackgroundTab;
    }
    void openIn(BrowserView& view) override
    {
        auto* engine = qobject_cast<WebEngineBrowserView*>(&view);
        if (!engine)
            return;
        QWebEnginePage* page = engine->engineView()->page();
        request_.openIn(page);
        // A refused window caught in the hidden view: what its opener wrote
        // into it before the catch stops there, timers and all. The engine
        // takes the freeze only once the window is the view's.
        if (view.index() == 0)
            QMetaObject::invokeMethod(
                page, [page] { page->setLifecycleState(QWebEnginePage::LifecycleState::Frozen); },
                Qt::QueuedConnection);
    }

private:
    QWebEngineNewWindowRequest& request_;
    bool fromMenu_;
};

LoadReport reportOf(const QWebEngineLoadingInfo& info)
{
    LoadReport report;
    switch (info.status()) {
    case QWebEngineLoadingInfo::LoadStartedStatus:
        report.phase = LoadReport::Phase::Started;
        break;
    case QWebEngineLoadingInfo::LoadSucceededStatus:
        report.phase = LoadReport::Phase::Succeeded;
        break;
    case QWebEngineLoadingInfo::LoadStoppedStatus:
        report.phase = LoadReport::Phase::Stopped;
        break;
    case QWebEngineLoadingInfo::LoadFailedStatus:
        report.phase = LoadReport::Phase::Failed;
        break;
    }
    report.url = info.url();
    report.errorCode = info.errorCode();
    report.httpStatus = info.errorDomain() == QWebEngineLoadingInfo::HttpStatusCodeDomain;
    report.errorText = info.errorString();
    return report;
}

} // namespace

WebEngineBrowserView::WebEngineBrowserView(int index, EngineProfile& profile)
    : BrowserView(index), engine_(profile), container_(new QWidget)
{
    stack_ = new QStackedLayout(container_);
    notice_ = new PageNotice(container_);
    stack_->addWidget(notice_);
    // The page outlives the views that draw it; it goes right after the last.
    page_ = new WebEnginePage(profile, *this, nullptr);

    gate_ = new CertificateGate(*page_, *notice_);
    zoom_ = std::make_unique<EngineZoom>(*page_);
    editing_ = std::make_unique<EngineEditing>(*page_, alive_);
    find_ = std::make_unique<EngineFind>(*page_, alive_);
    agent_ = new PageAgentBridge(*page_);
    document_ = std::make_unique<EngineDocument>(*page_, *agent_, alive_);
    printing_ = new EnginePrinting(profile.pageLayout(), *this, profile.dialogs());
    security_ = new EngineSecurity(*page_, *gate_, *this);
    lifecycle_ =
        std::make_unique<EngineLifecycle>(*page_, *agent_, profile.downloads(), *printing_);
    makeView();
    showPage();
    waiting_ = std::make_unique<LoadWhenShown>(
        *container_, [this](const QString& address) { navigate(address); });
    wirePage();
    // The catch view adopts the windows a page was refused, so that its
    // script gets a window object: one that runs nothing, plays nothing and
    // asks nothing, whatever the opener writes into it.
    if (index != 0)
        page_->setUrlRequestInterceptor(new PageRequestGate(profile, *this, page_));
    if (index == 0) {
        page_->settings()->setAttribute(QWebEngineSettings::JavascriptEnabled, false);
        page_->setAudioMuted(true);
        page_->silent = true;
    }
}

void WebEngineBrowserView::makeView()
{
    auto* view = new QWebEngineView(container_);
    view->setPage(page_);
    stack_->insertWidget(0, view);
    container_->setFocusProxy(view);
    connect(new DragOutWatch(*view, *agent_), &DragOutWatch::draggedOut, this,
            &BrowserView::draggedOut);
    menu_ = new PageMenu(*view);
    printing_->attach(*view);
    view_ = view;
}

// A view once shown keeps what it drew with (some megabytes in this process)
// as long as it lives, whatever becomes of its page; a new view on the
// discarded page holds nothing until it is shown and the page loads again.
void WebEngineBrowserView::renewView()
{
    if (!container_ || page_->lifecycleState() != QWebEnginePage::LifecycleState::Discarded ||
        view_->isVisible())
        return;
    const bool noticeShown = notice();
    QWebEngineView* old = view_;
    makeView();
    delete old;
    // The old view's drawing buffers belong to the window's graphics and go
    // back to the system only when the window next draws a frame.
    if (QWidget* window = container_->window(); window->isVisible())
        window->update(0, 0, 1, 1);
    if (!noticeShown)
        showPage();
    engine_.returnFreeMemorySoon();
}

void WebEngineBrowserView::wirePage()
{
    connect(agent_, &PageAgentBridge::pageMouseDown, this, &BrowserView::pageMouseDown);
    connect(agent_, &PageAgentBridge::pageClicked, this, &BrowserView::pageClicked);
    // Queued: the engine is still about its discarding when it tells.
    connect(page_, &QWebEnginePage::lifecycleStateChanged, this, &WebEngineBrowserView::renewView,
            Qt::QueuedConnection);

    connect(page_, &QWebEnginePage::titleChanged, this, &BrowserView::titleChanged);
    connect(page_, &QWebEnginePage::linkHovered, this, [this](const QString& url) {
        emit statusTextChanged(url.isEmpty() ? idleStatus_ : url);
    });
    connect(page_, &QWebEnginePage::loadStarted, this, [this] {
        // Any new load (back, forward, a link) replaces a notice.
        if (!gate_->waiting())
            showPage();
        readyState_ = Loading;
        emit loadStarted();
        emit progressChanged(0, 100);
    });
    connect(page_, &QWebEnginePage::loadProgress, this,
            [this](int percent) { emit progressChanged(percent, 100); });
    connect(page_, &QWebEnginePage::loadFinished, this, [this] {
        readyState_ = Complete;
        // As the old control did: loading has ended, nothing is left to count.
        emit progressChanged(-1, -1);
        emit documentComplete();
    });
    connect(page_, &QWebEnginePage::loadingChanged, this,
            [this](const QWebEngineLoadingInfo& info) {
                setStatus(statusText(reportOf(info)));
                if (info.status() == QWebEngineLoadingInfo::LoadFailedStatus &&
                    engine_.connection().offline() && isNetworkAddress(info.url()))
                    showOfflineNotice(info.url());
            });
    connect(page_, &QWebEnginePage::windowCloseRequested, this,
            [this] { emit windowClosing(false); });
    connect(page_, &QWebEnginePage::fullScreenRequested, this,
            [this](QWebEngineFullScreenRequest request) {
                // Only the tab in view may take the screen; the window
                // follows it.
                if (request.toggleOn() && !view_->isVisible()) {
                    request.reject();
                    return;
                }
                request.accept();
                emit fullScreenRequested(request.toggleOn());
            });
    connect(page_, &QWebEnginePage::newWindowRequested, this,
            [this](QWebEngineNewWindowRequest& request) {
                EngineNewWindowRequest wrapped(request, menu_->takeChosen(request.requestedUrl()));
                emit newWindowRequested(wrapped);
            });
    connect(page_, &QWebEnginePage::renderProcessTerminated, this,
            [this](QWebEnginePage::RenderProcessTerminationStatus status, int) {
                rendererEnded(status);
            });
    connect(page_, &QWebEnginePage::authenticationRequired, this,
            [this](const QUrl& url, QAuthenticator* authenticator) {
                if (!page_->askSignIn(url, [&] { askCredentials(url, authenticator, {}); }))
                    *authenticator = QAuthenticator(); // declined
            });
    connect(page_, &QWebEnginePage::proxyAuthenticationRequired, this,
            &WebEngineBrowserView::askCredentials);

    QAction* back = page_->action(QWebEnginePage::Back);
    QAction* forward = page_->action(QWebEnginePage::Forward);
    connect(back, &QAction::changed, this,
            [this, back] { emit commandStateChanged(CommandBack, back->isEnabled()); });
    connect(forward, &QAction::changed, this,
            [this, forward] { emit commandStateChanged(CommandForward, forward->isEnabled()); });

    connect(gate_, &CertificateGate::noticeShown, this, [this](const QString& status) {
        showNotice(false);
        if (!status.isEmpty())
            setStatus(status);
    });
    connect(gate_, &CertificateGate::pageShown, this, &WebEngineBrowserView::showPage);
    connect(notice_, &PageNotice::primaryClicked, this, [this] {
        if (reloadNotice_)
            refresh();
        else
            gate_->goBack();
    });
    connect(notice_, &PageNotice::secondaryClicked, gate_, &CertificateGate::proceed);
}

WebEngineBrowserView::~WebEngineBrowserView()
{
    *alive_ = false;
    delete container_;
    delete page_;
}

QWidget* WebEngineBrowserView::widget()
{
    return container_;
}

PageNotice* WebEngineBrowserView::notice() const
{
    return stack_->currentWidget() == notice_ ? notice_ : nullptr;
}

void WebEngineBrowserView::setStatus(const QString& text)
{
    idleStatus_ = text;
    emit statusTextChanged(text);
}

void WebEngineBrowserView::showPage()
{
    stack_->setCurrentWidget(view_);
}

void WebEngineBrowserView::showNotice(bool reloads)
{
    reloadNotice_ = reloads;
    stack_->setCurrentWidget(notice_);
}

void WebEngineBrowserView::showOfflineNotice(const QUrl& url)
{
    notice_->set(QStringLiteral("Working offline"),
                 QStringLiteral("QUB-BROWSER is working offline, so %1 was not opened. Choose "
                                "Work Offline in the File menu to go online, then try again.")
                     .arg(url.toDisplayString().toHtmlEscaped()),
                 QStringLiteral("Try again"));
    showNotice(true);
}

void WebEngineBrowserView::showWordsNotice(const QString& words)
{
    gate_->leave();
    notice_->set(QStringLiteral("Not an address"),
                 QStringLiteral("\"%1\" is not an address, and no search service is set to look "
                                "it up. Type an address, or set one with SEARCHURL in "
                                "Browser.ini, an address with {query} where the words go.")
                     .arg(words.toHtmlEscaped()),
                 {});
    showNotice(false);
}

void WebEngineBrowserView::rendererEnded(int status)
{
    if (status == QWebEnginePage::NormalTerminationStatus)
        return;
    const QString how = status == QWebEnginePage::KilledTerminationStatus
                            ? QStringLiteral("was stopped from outside")
                        : status == QWebEnginePage::CrashedTerminationStatus
                            ? QStringLiteral("crashed")
                            : QStringLiteral("ended unexpectedly");
    readyState_ = Complete;
    notice_->set(QStringLiteral("This page stopped working"),
                 QStringLiteral("The process that showed %1 %2. The other tabs are not "
                                "affected. Reload the page to try again.")
                     .arg(locationUrl().toHtmlEscaped(), how),
                 QStringLiteral("Reload"));
    showNotice(true);
    setStatus(QStringLiteral("This page stopped working"));
}

void WebEngineBrowserView::askCredentials(const QUrl& url, QAuthenticator* authenticator,
                                          const QString& proxyHost)
{
    const QString who = proxyHost.isEmpty() ? QStringLiteral("The site %1").arg(url.host())
                                            : QStringLiteral("The proxy %1").arg(proxyHost);
    QString prompt = who + QStringLiteral(" asks for a user name and password.");
    if (!authenticator->realm().isEmpty())
        prompt += QStringLiteral("\nIt says: ") + authenticator->realm();
    QString user = authenticator->user();
    QString password;
    bool answered = false;
    {
        Prompt waiting(*this);
        answered = engine_.dialogs().credentials(prompt, user, password);
    }
    if (answered) {
        authenticator->setUser(user);
        authenticator->setPassword(password);
    } else {
        // A null authenticator tells the engine the user declined.
        *authenticator = QAuthenticator();
    }
}

void WebEngineBrowserView::navigate(const QString& address)
{
    if (address.isEmpty())
        return;
    waiting_->cancel();
    const bool words = !isAddress(address);
    if (words && engine_.searchAddress().isEmpty()) {
        showWordsNotice(address);
        return;
    }
    requestedAddress_ = address;
    readyState_ = Loading;
    gate_->leave();
    showPage();
    const QUrl url = words ? searchUrl(engine_.searchAddress(), address) : urlFromAddress(address);
    page_->prepareFor(url);
    view_->setUrl(url);
}

void WebEngineBrowserView::navigateWhenShown(const QString& address, const QString& title)
{
    if (!address.isEmpty() && waiting_->wait(address, title))
        emit titleChanged(waiting_->title());
}

void WebEngineBrowserView::stop()
{
    gate_->leave();
    page_->triggerAction(QWebEnginePage::Stop);
}

void WebEngineBrowserView::refresh()
{
    if (waiting_->waiting())
        return waiting_->loadNow();
    gate_->leave();
    showPage();
    page_->prepareFor(page_->url());
    page_->triggerAction(QWebEnginePage::Reload);
}

void WebEngineBrowserView::goBack()
{
    gate_->leave();
    if (page_->history()->canGoBack())
        page_->prepareFor(page_->history()->backItem().url());
    page_->triggerAction(QWebEnginePage::Back);
}

void WebEngineBrowserView::goForward()
{
    gate_->leave();
    if (page_->history()->canGoForward())
        page_->prepareFor(page_->history()->forwardItem().url());
    page_->triggerAction(QWebEnginePage::Forward);
}

void WebEngineBrowserView::goHome()
{
    navigate(engine_.homeAddress());
}

QString WebEngineBrowserView::locationUrl() const
{
    const QUrl url = page_->url();
    if (url.isEmpty())
        return waiting_->waiting() ? waiting_->address() : requestedAddress_;
    if (document_->showsWritten())
        return QStringLiteral("about:blank");
    return url.toString();
}

QString WebEngineBrowserView::title() const
{
    return waiting_->waiting() ? waiting_->title() : page_->title();
}

void WebEngineBrowserView::setSilent(bool silent)
{
    page_->silent = silent || index() == 0;
}

bool WebEngineBrowserView::silent() const
{
    return page_->silent;
}

void WebEngineBrowserView::retire()
{
    *alive_ = false;
    blockSignals(true);
}

void WebEngineBrowserView::clearDocument()
{
    page_->setHtml(QString());
}

void WebEngineBrowserView::exitFullScreen()
{
    page_->triggerAction(QWebEnginePage::ExitFullScreen);
}

void WebEngineBrowserView::focusPage()
{
    view_->setFocus();
}

} // namespace platform
