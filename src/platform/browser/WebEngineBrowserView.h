#pragma once
// BrowserView on Qt WebEngine: a QWebEngineView with a page of its own on the
// program's shared profile.
#include "BrowserView.h"

#include <QPointer>
#include <QUrl>

class QWebEngineProfile;
class QWebEngineView;

namespace platform {

class WebEnginePage;

class WebEngineBrowserView : public BrowserView
{
    Q_OBJECT
public:
    WebEngineBrowserView(int index, QWebEngineProfile& profile, QString homeAddress);
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

private:
    QPointer<QWebEngineView> view_;
    WebEnginePage* page_ = nullptr;
    QString homeAddress_;
    ReadyState readyState_ = Uninitialized;
    QString requestedAddress_;
};

// Owns the program's persistent profile and makes its views.
class WebEngineViewFactory : public BrowserViewFactory
{
public:
    WebEngineViewFactory();
    ~WebEngineViewFactory() override;
    BrowserView* create(int index) override;
    void setHomeAddress(const QString& address) { homeAddress_ = address; }

private:
    QWebEngineProfile* profile_;
    QString homeAddress_ = QStringLiteral("about:blank");
};

} // namespace platform
