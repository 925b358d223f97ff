#include "WebEngineBrowserView.h"
#include "DownloadManager.h"
#include "PageAgent.h"
#include "PageNotice.h"
#include "platform/Dialogs.h"

#include <QAction>
#include <QAuthenticator>
#include <QPrintDialog>
#include <QPrinter>
#include <QStackedLayout>
#include <QWebEngineFullScreenRequest>
#include <QWebEngineHistory>
#include <QWebEngineLoadingInfo>
#include <QWebEngineNewWindowRequest>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineSettings>
#include <QWebEngineView>

namespace platform {

class WebEnginePage : public QWebEnginePage
{
public:
    WebEnginePage(QWebEngineProfile* profile, QObject* parent, WebEngineBrowserView& owner)
        : QWebEnginePage(profile, parent), owner_(owner)
    {
    }
    bool silent = false;

protected:
    // Script dialogs and file choosers wait for the user in a nested loop.
    void javaScriptAlert(const QUrl& origin, const QString& message) override
    {
        if (silent)
            return;
        WebEngineBrowserView::Prompt prompt(owner_);
        QWebEnginePage::javaScriptAlert(origin, message);
    }
    bool javaScriptConfirm(const QUrl& origin, const QString& message) override
    {
        if (silent)
            return false;
        WebEngineBrowserView::Prompt prompt(owner_);
        return QWebEnginePage::javaScriptConfirm(origin, message);
    }
    bool javaScriptPrompt(const QUrl& origin, const QString& message, const QString& fallback,
                          QString* result) override
    {
        if (silent)
            return false;
        WebEngineBrowserView::Prompt prompt(owner_);
        return QWebEnginePage::javaScriptPrompt(origin, message, fallback, result);
    }
    QStringList chooseFiles(FileSelectionMode mode, const QStringList& oldFiles,
                            const QStringList& acceptedMimeTypes) override
    {
        WebEngineBrowserView::Prompt prompt(owner_);
        return QWebEnginePage::chooseFiles(mode, oldFiles, acceptedMimeTypes);
    }
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString&, int,
                                  const QString&) override
    {
        // Page scripts' console output is the page's business, not the program's log.
    }

private:
    WebEngineBrowserView& owner_;
};

namespace {

class EngineNewWindowRequest : public NewWindowRequest
{
public:
    explicit EngineNewWindowRequest(QWebEngineNewWindowRequest& request) : request_(request) {}
    QUrl url() const override { return request_.requestedUrl(); }
    bool userInitiated() const override { return request_.isUserInitiated(); }
    bool inBackground() const override
    {
        return request_.destination() == QWebEngineNewWindowRequest::InNewBackgroundTab;
    }
    void openIn(BrowserView& view) override
    {
        if (auto* engine = qobject_cast<WebEngineBrowserView*>(&view))
            request_.openIn(engine->engineView()->page());
    }

private:
    QWebEngineNewWindowRequest& request_;
};

} // namespace

WebEngineBrowserView::WebEngineBrowserView(int index, QWebEngineProfile& profile,
                                           const QString& homeAddress, Dialogs& dialogs)
    : BrowserView(index), container_(new QWidget), homeAddress_(homeAddress), dialogs_(dialogs)
{
    stack_ = new QStackedLayout(container_);
    view_ = new QWebEngineView(container_);
    notice_ = new PageNotice(container_);
    stack_->addWidget(view_);
    stack_->addWidget(notice_);
    container_->setFocusProxy(view_);
    page_ = new WebEnginePage(&profile, view_, *this);
    view_->setPage(page_);

    auto* agent = new PageAgentBridge(*page_);
    connect(agent, &PageAgentBridge::pageMouseDown, this, &BrowserView::pageMouseDown);
    connect(agent, &PageAgentBridge::pageClicked, this, &BrowserView::pageClicked);

    connect(page_, &QWebEnginePage::titleChanged, this, &BrowserView::titleChanged);
    connect(page_, &QWebEnginePage::linkHovered, this, [this](const QString& url) {
        emit statusTextChanged(url.isEmpty() ? idleStatus_ : url);
    });
    connect(page_, &QWebEnginePage::loadStarted, this, [this] {
        // Any new load (back, forward, a link) replaces a notice.
        if (!pendingCertificate_)
            showPage();
        readyState_ = Loading;
        emit progressChanged(0, 100);
    });
    connect(page_, &QWebEnginePage::loadProgress, this,
            [this](int percent) { emit progressChanged(percent, 100); });
    connect(page_, &QWebEnginePage::loadFinished, this, [this](bool ok) {
        readyState_ = Complete;
        // As the old control did: loading has ended, nothing is left to count.
        emit progressChanged(-1, -1);
        // The refused page ends in the engine's error page, left for the page before.
        if (std::exchange(backAfterRefusal_, false) && !ok && page_->history()->canGoBack())
            goBack();
    });
    connect(page_, &QWebEnginePage::loadingChanged, this, &WebEngineBrowserView::loadingChanged);
    connect(page_, &QWebEnginePage::windowCloseRequested, this,
            [this] { emit windowClosing(false); });
    connect(page_, &QWebEnginePage::fullScreenRequested, this,
            [this](QWebEngineFullScreenRequest request) {
                // The window has no full-screen mode for pages yet: a page may
                // always leave full screen but is not let into it.
                if (request.toggleOn())
                    request.reject();
                else
                    request.accept();
                emit fullScreenRequested(request.toggleOn());
            });
    connect(page_, &QWebEnginePage::newWindowRequested, this,
            [this](QWebEngineNewWindowRequest& request) {
                EngineNewWindowRequest wrapped(request);
                emit newWindowRequested(wrapped);
            });
    connect(page_, &QWebEnginePage::renderProcessTerminated, this,
            [this](QWebEnginePage::RenderProcessTerminationStatus status, int) {
                rendererEnded(status);
            });
    connect(page_, &QWebEnginePage::certificateError, this,
            &WebEngineBrowserView::certificateError);
    connect(page_, &QWebEnginePage::authenticationRequired, this,
            [this](const QUrl& url, QAuthenticator* authenticator) {
                askCredentials(url, authenticator, {});
            });
    connect(page_, &QWebEnginePage::proxyAuthenticationRequired, this,
            &WebEngineBrowserView::askCredentials);
    connect(view_, &QWebEngineView::printRequested, this, &WebEngineBrowserView::print);
    connect(view_, &QWebEngineView::printFinished, this, [this] { printer_.reset(); });

    QAction* back = page_->action(QWebEnginePage::Back);
    QAction* forward = page_->action(QWebEnginePage::Forward);
    connect(back, &QAction::changed, this,
            [this, back] { emit commandStateChanged(CommandBack, back->isEnabled()); });
    connect(forward, &QAction::changed, this,
            [this, forward] { emit commandStateChanged(CommandForward, forward->isEnabled()); });

    connect(notice_, &PageNotice::primaryClicked, this, [this] {
        if (noticeKind_ == NoticeKind::Crash) {
            refresh();
            return;
        }
        showPage();
        if (pendingCertificate_) {
            backAfterRefusal_ = true;
            std::exchange(pendingCertificate_, std::nullopt)->rejectCertificate();
        } else if (page_->history()->canGoBack()) {
            goBack();
        }
    });
    connect(notice_, &PageNotice::secondaryClicked, this, [this] {
        if (pendingCertificate_) {
            std::exchange(pendingCertificate_, std::nullopt)->acceptCertificate();
            showPage();
        }
    });
}

WebEngineBrowserView::~WebEngineBrowserView()
{
    if (pendingCertificate_)
        pendingCertificate_->rejectCertificate();
    delete container_;
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

void WebEngineBrowserView::loadingChanged(const QWebEngineLoadingInfo& info)
{
    switch (info.status()) {
    case QWebEngineLoadingInfo::LoadStartedStatus:
        setStatus(QStringLiteral("Opening %1 ...").arg(info.url().toDisplayString()));
        break;
    case QWebEngineLoadingInfo::LoadSucceededStatus:
        setStatus(QStringLiteral("Done"));
        break;
    case QWebEngineLoadingInfo::LoadStoppedStatus:
        setStatus(QStringLiteral("Stopped"));
        break;
    case QWebEngineLoadingInfo::LoadFailedStatus:
        // -3 is a navigation the program or the user called off, and an HTTP
        // error status still brings the server's own page: neither is an error here.
        setStatus(info.errorCode() == -3 ||
                          info.errorDomain() == QWebEngineLoadingInfo::HttpStatusCodeDomain
                      ? QStringLiteral("Done")
                      : QStringLiteral("Cannot open %1: %2")
                            .arg(info.url().toDisplayString(), info.errorString()));
        break;
    }
}

void WebEngineBrowserView::showPage()
{
    stack_->setCurrentWidget(view_);
}

void WebEngineBrowserView::showNotice(NoticeKind kind)
{
    noticeKind_ = kind;
    stack_->setCurrentWidget(notice_);
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
    showNotice(NoticeKind::Crash);
    setStatus(QStringLiteral("This page stopped working"));
}

void WebEngineBrowserView::certificateError(const QWebEngineCertificateError& error)
{
    const QString host = error.url().host().toHtmlEscaped();
    const QString why = error.description().toHtmlEscaped();
    if (!error.isOverridable()) {
        notice_->set(QStringLiteral("This site cannot be trusted"),
                     QStringLiteral("The certificate of %1 is not valid: %2").arg(host, why),
                     QStringLiteral("Go back"));
        showNotice(NoticeKind::Certificate);
        return; // refused when this returns
    }
    if (pendingCertificate_)
        pendingCertificate_->rejectCertificate();
    pendingCertificate_ = error;
    pendingCertificate_->defer();
    notice_->set(QStringLiteral("This connection is not private"),
                 QStringLiteral("The certificate of %1 is not trusted: %2<br>Someone may be "
                                "trying to read or change what you send to this site.")
                     .arg(host, why),
                 QStringLiteral("Go back"), QStringLiteral("Proceed anyway"));
    showNotice(NoticeKind::Certificate);
    setStatus(QStringLiteral("Certificate not trusted"));
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
        answered = dialogs_.credentials(prompt, user, password);
    }
    if (answered) {
        authenticator->setUser(user);
        authenticator->setPassword(password);
    } else {
        // A null authenticator tells the engine the user declined.
        *authenticator = QAuthenticator();
    }
}

void WebEngineBrowserView::print()
{
    if (printer_)
        return; // one print job at a time
    // The printer must outlive the engine's asynchronous printing; the dialog
    // is not modal to the page's code, so the view may close meanwhile.
    printer_ = std::make_unique<QPrinter>(QPrinter::HighResolution);
    auto* dialog = new QPrintDialog(printer_.get(), view_);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this] { view_->print(printer_.get()); });
    connect(dialog, &QDialog::rejected, this, [this] { printer_.reset(); });
    dialog->open();
}

void WebEngineBrowserView::navigate(const QString& address)
{
    if (address.isEmpty())
        return;
    requestedAddress_ = address;
    readyState_ = Loading;
    leaveUnansweredNotice();
    showPage();
    view_->setUrl(QUrl::fromUserInput(address));
}

void WebEngineBrowserView::leaveUnansweredNotice()
{
    backAfterRefusal_ = false;
    if (pendingCertificate_) {
        std::exchange(pendingCertificate_, std::nullopt)->rejectCertificate();
        showPage();
    }
}

void WebEngineBrowserView::stop()
{
    leaveUnansweredNotice();
    page_->triggerAction(QWebEnginePage::Stop);
}

void WebEngineBrowserView::refresh()
{
    leaveUnansweredNotice();
    showPage();
    page_->triggerAction(QWebEnginePage::Reload);
}

void WebEngineBrowserView::goBack()
{
    leaveUnansweredNotice();
    page_->triggerAction(QWebEnginePage::Back);
}

void WebEngineBrowserView::goForward()
{
    leaveUnansweredNotice();
    page_->triggerAction(QWebEnginePage::Forward);
}

void WebEngineBrowserView::goHome()
{
    navigate(homeAddress_);
}

QString WebEngineBrowserView::locationUrl() const
{
    const QUrl url = page_->url();
    if (url.isEmpty())
        return requestedAddress_;
    return url.toString();
}

QString WebEngineBrowserView::title() const
{
    return page_->title();
}

void WebEngineBrowserView::setSilent(bool silent)
{
    page_->silent = silent;
}

bool WebEngineBrowserView::silent() const
{
    return page_->silent;
}

void WebEngineBrowserView::clearDocument()
{
    blockSignals(true);
    page_->setHtml(QString());
}

void WebEngineBrowserView::focusPage()
{
    view_->setFocus();
}

WebEngineViewFactory::WebEngineViewFactory(Dialogs& dialogs)
    : dialogs_(dialogs), profile_(new QWebEngineProfile(QStringLiteral("QUB-BROWSER")))
{
    profile_->settings()->setAttribute(QWebEngineSettings::JavascriptCanOpenWindows, true);
    profile_->settings()->setAttribute(QWebEngineSettings::FullScreenSupportEnabled, true);
    installPageAgent(*profile_);
    downloads_ = new DownloadManager(*profile_, dialogs_);
}

WebEngineViewFactory::~WebEngineViewFactory()
{
    delete downloads_;
    delete profile_;
}

BrowserView* WebEngineViewFactory::create(int index)
{
    return new WebEngineBrowserView(index, *profile_, homeAddress_, dialogs_);
}

} // namespace platform
