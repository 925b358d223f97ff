#include "WebEnginePage.h"
#include "EngineProfile.h"
#include "ExternalSchemes.h"
#include "HidingStyle.h"
#include "platform/Dialogs.h"

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
    clock_.start();
    // The policy may know more of the page than when it was asked on the way
    // (the first page of a run, while the filter lists were read).
    connect(this, &QWebEnginePage::loadFinished, this, [this] {
        prepareFor(url());
        hiding_.mend();
    });
}

template <typename Ask> void WebEnginePage::showDialog(Ask ask)
{
    if (silent || !dialogLimit_.allows())
        return;
    const qint64 shown = clock_.elapsed();
    {
        BrowserView::Prompt prompt(owner_);
        ask();
    }
    dialogLimit_.answered(shown, clock_.elapsed());
}

bool WebEnginePage::askSignIn(const QUrl& url, const std::function<void()>& ask)
{
    const auto sameSite = [&url](const QUrl& page) {
        return page.scheme() == url.scheme() && page.host() == url.host() &&
               page.port() == url.port();
    };
    if (!sameSite(this->url()) && !sameSite(navigatingTo_))
        return false;
    bool asked = false;
    showDialog([&] {
        ask();
        asked = true;
    });
    return asked;
}

QString WebEnginePage::dialogTitle(const QUrl& origin)
{
    return QStringLiteral("The page at %1 says")
        .arg(origin.host().isEmpty() ? origin.toDisplayString() : origin.host());
}

bool WebEnginePage::acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame)
{
    // The engine asks about another program's address only on the user's
    // click, and starts the program itself on a yes; it is always told no,
    // and the program starts from here once the user has agreed.
    if (!isPageScheme(url)) {
        if (!silent) {
            BrowserView::Prompt prompt(owner_);
            openExternally(url, engine_.shell(), engine_.dialogs());
        }
        return false;
    }
    const bool allowed = engine_.allowsNavigation(owner_, {url, kindOf(type), isMainFrame});
    // Here, not at loadStarted: that signal can arrive after the new
    // document's first script has already asked.
    if (allowed && isMainFrame) {
        dialogLimit_.reset();
        navigatingTo_ = url;
        prepareFor(url);
    }
    return allowed;
}

void WebEnginePage::prepareFor(const QUrl& url)
{
    if (ContentPolicy* policy = engine_.contentPolicy(); policy && owner_.index() != 0)
        hiding_.set(policy->styleFor(owner_, url));
}

void WebEnginePage::javaScriptAlert(const QUrl& origin, const QString& message)
{
    showDialog([&] {
        engine_.dialogs().message(message, Dialogs::Buttons::Ok, Dialogs::Icon::Information,
                                  dialogTitle(origin));
    });
}

bool WebEnginePage::javaScriptConfirm(const QUrl& origin, const QString& message)
{
    bool ok = false;
    showDialog([&] {
        ok = engine_.dialogs().message(message, Dialogs::Buttons::OkCancel, Dialogs::Icon::Question,
                                       dialogTitle(origin)) == Dialogs::Answer::Ok;
    });
    return ok;
}

bool WebEnginePage::javaScriptPrompt(const QUrl& origin, const QString& message,
                                     const QString& fallback, QString* result)
{
    bool ok = false;
    showDialog([&] {
        QString text = fallback;
        ok = engine_.dialogs().editText(message, text, dialogTitle(origin));
        if (ok)
            *result = text;
    });
    return ok;
}

QStringList WebEnginePage::chooseFiles(FileSelectionMode mode, const QStringList& oldFiles,
                                       const QStringList& acceptedMimeTypes)
{
    BrowserView::Prompt prompt(owner_);
    return QWebEnginePage::chooseFiles(mode, oldFiles, acceptedMimeTypes);
}

void WebEnginePage::javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString& message,
                                             int, const QString&)
{
    if (mixedContent && message.startsWith(QLatin1String("Mixed Content")))
        mixedContent();
}

} // namespace platform
