#pragma once
// BrowserView on Qt WebEngine: a QWebEngineView with a page of its own on the
// window's shared profile, plus what the old browser control did by itself:
// status texts, sign-in prompts, and a notice in place of a crashed page or
// of a page whose certificate is not trusted.
#include "CertificateGate.h"
#include "EngineDocument.h"
#include "EngineEditing.h"
#include "EngineFind.h"
#include "EngineLifecycle.h"
#include "EnginePrinting.h"
#include "EngineSecurity.h"
#include "EngineZoom.h"
#include "platform/browser/BrowserView.h"
#include "platform/browser/LoadWhenShown.h"

#include <QPointer>
#include <memory>

class QAuthenticator;
class QStackedLayout;
class QWebEngineLoadingInfo;
class QWebEngineView;

namespace platform {

class EngineProfile;
class PageMenu;
class PageNotice;
class WebEnginePage;

class WebEngineBrowserView : public BrowserView
{
    Q_OBJECT
public:
    WebEngineBrowserView(int index, EngineProfile& profile);
    ~WebEngineBrowserView() override;

    QWidget* widget() override;
    void navigate(const QString& address) override;
    void navigateWhenShown(const QString& address, const QString& title) override;
    bool waitsToBeShown() const override { return waiting_->waiting(); }
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
    void retire() override;
    void clearDocument() override;
    void focusPage() override;
    void exitFullScreen() override;

    ZoomFacet& zoom() override { return *zoom_; }
    EditingFacet& editing() override { return *editing_; }
    FindFacet& finder() override { return *find_; }
    PrintingFacet& printing() override { return *printing_; }
    DocumentFacet& document() override { return *document_; }
    SecurityFacet& security() override { return *security_; }
    LifecycleFacet& lifecycle() override { return *lifecycle_; }

    QWebEngineView* engineView() const { return view_; }
    // The notice shown in place of the page, or nullptr while the page shows.
    PageNotice* notice() const;

private:
    // A view draws the page; a discarded page gets a new one (see renewView).
    void makeView();
    void renewView();
    void wirePage();
    void setStatus(const QString& text);
    void showPage();
    // reloads: the notice's button loads the page again.
    void showNotice(bool reloads);
    void showOfflineNotice(const QUrl& url);
    void showWordsNotice(const QString& words);
    void rendererEnded(int status);
    void askCredentials(const QUrl& url, QAuthenticator* authenticator, const QString& host);

    EngineProfile& engine_;
    std::shared_ptr<bool> alive_ = std::make_shared<bool>(true);
    QPointer<QWidget> container_;
    QStackedLayout* stack_ = nullptr;
    QWebEngineView* view_ = nullptr;
    PageNotice* notice_ = nullptr;
    PageMenu* menu_ = nullptr;
    WebEnginePage* page_ = nullptr;
    CertificateGate* gate_ = nullptr;
    PageAgentBridge* agent_ = nullptr;
    std::unique_ptr<EngineZoom> zoom_;
    std::unique_ptr<EngineEditing> editing_;
    std::unique_ptr<EngineFind> find_;
    std::unique_ptr<EngineDocument> document_;
    EnginePrinting* printing_ = nullptr;
    EngineSecurity* security_ = nullptr;
    std::unique_ptr<EngineLifecycle> lifecycle_;
    ReadyState readyState_ = Uninitialized;
    QString requestedAddress_;
    std::unique_ptr<LoadWhenShown> waiting_;
    // What the status shows when the pointer is over no link.
    QString idleStatus_;
    bool reloadNotice_ = false;
};

} // namespace platform
