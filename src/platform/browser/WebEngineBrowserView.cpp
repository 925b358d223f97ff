#include "WebEngineBrowserView.h"

#include <QAction>
#include <QStandardPaths>
#include <QWebEngineFullScreenRequest>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineSettings>
#include <QWebEngineView>

namespace platform {

class WebEnginePage : public QWebEnginePage
{
public:
    using QWebEnginePage::QWebEnginePage;
    bool silent = false;

protected:
    void javaScriptAlert(const QUrl& origin, const QString& message) override
    {
        if (!silent)
            QWebEnginePage::javaScriptAlert(origin, message);
    }
    bool javaScriptConfirm(const QUrl& origin, const QString& message) override
    {
        return !silent && QWebEnginePage::javaScriptConfirm(origin, message);
    }
    bool javaScriptPrompt(const QUrl& origin, const QString& message, const QString& fallback,
                          QString* result) override
    {
        return !silent && QWebEnginePage::javaScriptPrompt(origin, message, fallback, result);
    }
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString&, int,
                                  const QString&) override
    {
        // Page scripts' console output is the page's business, not the program's log.
    }
};

WebEngineBrowserView::WebEngineBrowserView(int index, QWebEngineProfile& profile,
                                           QString homeAddress)
    : BrowserView(index), view_(new QWebEngineView), homeAddress_(std::move(homeAddress))
{
    page_ = new WebEnginePage(&profile, view_);
    view_->setPage(page_);
    connect(page_, &QWebEnginePage::titleChanged, this, &BrowserView::titleChanged);
    connect(page_, &QWebEnginePage::linkHovered, this, &BrowserView::statusTextChanged);
    connect(page_, &QWebEnginePage::loadStarted, this, [this] {
        readyState_ = Loading;
        emit progressChanged(0, 100);
    });
    connect(page_, &QWebEnginePage::loadProgress, this,
            [this](int percent) { emit progressChanged(percent, 100); });
    connect(page_, &QWebEnginePage::loadFinished, this, [this] {
        readyState_ = Complete;
        emit progressChanged(-1, 100);
    });
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
    QAction* back = page_->action(QWebEnginePage::Back);
    QAction* forward = page_->action(QWebEnginePage::Forward);
    connect(back, &QAction::changed, this,
            [this, back] { emit commandStateChanged(CommandBack, back->isEnabled()); });
    connect(forward, &QAction::changed, this,
            [this, forward] { emit commandStateChanged(CommandForward, forward->isEnabled()); });
}

WebEngineBrowserView::~WebEngineBrowserView()
{
    delete view_;
}

QWidget* WebEngineBrowserView::widget()
{
    return view_;
}

void WebEngineBrowserView::navigate(const QString& address)
{
    requestedAddress_ = address;
    readyState_ = Loading;
    view_->setUrl(QUrl::fromUserInput(address));
}

void WebEngineBrowserView::stop()
{
    page_->triggerAction(QWebEnginePage::Stop);
}

void WebEngineBrowserView::refresh()
{
    page_->triggerAction(QWebEnginePage::Reload);
}

void WebEngineBrowserView::goBack()
{
    page_->triggerAction(QWebEnginePage::Back);
}

void WebEngineBrowserView::goForward()
{
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

WebEngineViewFactory::WebEngineViewFactory()
    : profile_(new QWebEngineProfile(QStringLiteral("QUB-BROWSER")))
{
    profile_->settings()->setAttribute(QWebEngineSettings::JavascriptCanOpenWindows, true);
    profile_->settings()->setAttribute(QWebEngineSettings::FullScreenSupportEnabled, true);
}

WebEngineViewFactory::~WebEngineViewFactory()
{
    delete profile_;
}

BrowserView* WebEngineViewFactory::create(int index)
{
    return new WebEngineBrowserView(index, *profile_, homeAddress_);
}

} // namespace platform
