#include "WebEnginePage.h"
#include "EngineProfile.h"

#include <QWebEngineProfile>

namespace platform {

namespace {

NavigationRequest::Kind kindOf(QWebEnginePage::NavigationType type)
{
    switch (type) {
    case QWebEnginePage::NavigationTypeLinkClicked:
        return NavigationRequest::Kind::Link;
    case QWebEnginePage::NavigationTypeTyped:
        return NavigationRequest::Kind::Typed;
    case QWebEnginePage::NavigationTypeFormSubmitted:
        return NavigationRequest::Kind::Form;
    case QWebEnginePage::NavigationTypeBackForward:
        return NavigationRequest::Kind::BackForward;
    case QWebEnginePage::NavigationTypeReload:
        return NavigationRequest::Kind::Reload;
    case QWebEnginePage::NavigationTypeRedirect:
        return NavigationRequest::Kind::Redirect;
    case QWebEnginePage::NavigationTypeOther:
        break;
    }
    return NavigationRequest::Kind::Other;
}

} // namespace

WebEnginePage::WebEnginePage(EngineProfile& profile, BrowserView& owner, QObject* parent)
    : QWebEnginePage(&profile.profile(), parent), engine_(profile), owner_(owner)
{
}

bool WebEnginePage::acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame)
{
    return engine_.navigationPolicy().allows(owner_, {url, kindOf(type), isMainFrame});
}

void WebEnginePage::javaScriptAlert(const QUrl& origin, const QString& message)
{
    if (silent)
        return;
    BrowserView::Prompt prompt(owner_);
    QWebEnginePage::javaScriptAlert(origin, message);
}

bool WebEnginePage::javaScriptConfirm(const QUrl& origin, const QString& message)
{
    if (silent)
        return false;
    BrowserView::Prompt prompt(owner_);
    return QWebEnginePage::javaScriptConfirm(origin, message);
}

bool WebEnginePage::javaScriptPrompt(const QUrl& origin, const QString& message,
                                     const QString& fallback, QString* result)
{
    if (silent)
        return false;
    BrowserView::Prompt prompt(owner_);
    return QWebEnginePage::javaScriptPrompt(origin, message, fallback, result);
}

QStringList WebEnginePage::chooseFiles(FileSelectionMode mode, const QStringList& oldFiles,
                                       const QStringList& acceptedMimeTypes)
{
    BrowserView::Prompt prompt(owner_);
    return QWebEnginePage::chooseFiles(mode, oldFiles, acceptedMimeTypes);
}

} // namespace platform
