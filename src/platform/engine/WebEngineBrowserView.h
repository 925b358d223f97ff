#pragma once
// BrowserView on Qt WebEngine: a QWebEngineView with a page of its own on the
// program's shared profile, plus what the old browser control did by itself:
// status texts, sign-in prompts, a notice in place of a crashed page or of a
// page whose certificate is not trusted, and printing for window.print().
#include "platform/browser/BrowserView.h"

#include <QPointer>
#include <QUrl>
#include <QWebEngineCertificateError>
#include <memory>
#include <optional>

class QAuthenticator;
class QPrinter;
class QStackedLayout;
class QWebEngineLoadingInfo;
class QWebEngineProfile;
class QWebEngineView;

namespace platform {

class Dialogs;
class DownloadManager;
class PageNotice;
class WebEnginePage;

class WebEngineBrowserView : public BrowserView
{
    Q_OBJECT
public:
    WebEngineBrowserView(int index, QWebEngineProfile& profile, const QString& homeAddress,
                         Dialogs& dialogs);
    ~WebEngineBrowserView() override;

    QWidget* widget() override;
    void navigate(const QString& address) override;
    void stop() override;
    void refresh() override;
    void goBack() override;
    void goForward() override;
    void goHome() override;
    QString locationUrl() const override;
    QString title() const override;
    ReadyState readyState() const override { return readyState_; }
    void setSilent(bool silent) override;
    bool silent() const override;
    void clearDocument() override;
    void focusPage() override;

    bool busy() const override { return prompts_ > 0; }

    QWebEngineView* engineView() const { return view_; }
    // The notice shown in place of the page, or nullptr while the page shows.
    PageNotice* notice() const;

private:
    friend class WebEnginePage;
    // Marks the view busy while a prompt of its page is open.
    class Prompt
    {
    public:
        explicit Prompt(WebEngineBrowserView& view) : view_(view) { ++view_.prompts_; }
        ~Prompt()
        {
            if (--view_.prompts_ == 0)
                view_.promptsEnded();
        }
        Prompt(const Prompt&) = delete;
        Prompt& operator=(const Prompt&) = delete;

    private:
        WebEngineBrowserView& view_;
    };

    void loadingChanged(const QWebEngineLoadingInfo& info);
    void setStatus(const QString& text);
    enum class NoticeKind { Crash, Certificate };
    void showPage();
    void showNotice(NoticeKind kind);
    void rendererEnded(int status);
    void certificateError(const QWebEngineCertificateError& error);
    // Going anywhere else while the certificate notice waits refuses it.
    void leaveUnansweredNotice();
    void askCredentials(const QUrl& url, QAuthenticator* authenticator, const QString& host);
    void print();

    QPointer<QWidget> container_;
    QStackedLayout* stack_ = nullptr;
    QWebEngineView* view_ = nullptr;
    PageNotice* notice_ = nullptr;
    WebEnginePage* page_ = nullptr;
    const QString& homeAddress_;
    Dialogs& dialogs_;
    ReadyState readyState_ = Uninitialized;
    QString requestedAddress_;
    // What the status shows when the pointer is over no link.
    QString idleStatus_;
    NoticeKind noticeKind_ = NoticeKind::Crash;
    std::optional<QWebEngineCertificateError> pendingCertificate_;
    std::unique_ptr<QPrinter> printer_;
    int prompts_ = 0;
    bool backAfterRefusal_ = false;
};

// Owns the program's persistent profile, its page agent and its downloads,
// and makes its views.
class WebEngineViewFactory : public BrowserViewFactory
{
public:
    explicit WebEngineViewFactory(Dialogs& dialogs);
    ~WebEngineViewFactory() override;
    BrowserView* create(int index) override;
    void setHomeAddress(const QString& address) override { homeAddress_ = address; }
    QWebEngineProfile& profile() const { return *profile_; }
    DownloadManager& downloads() const { return *downloads_; }

private:
    Dialogs& dialogs_;
    QWebEngineProfile* profile_;
    DownloadManager* downloads_;
    QString homeAddress_ = QStringLiteral("about:blank");
};

} // namespace platform
