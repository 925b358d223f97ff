#pragma once
// The engine page of one view: keeps the view busy while a prompt of the page
// waits for the user, keeps a silent view's pages quiet and a page's dialog
// and sign-in storm short, asks the window's navigation policy before every navigation,
// and the user before an address another program would open.
#include "HidingStyle.h"
#include "platform/browser/ScriptDialogLimit.h"

#include <QElapsedTimer>
#include <QWebEnginePage>
#include <functional>

namespace platform {

class BrowserView;
class EngineProfile;

class WebEnginePage : public QWebEnginePage
{
public:
    WebEnginePage(EngineProfile& profile, BrowserView& owner, QObject* parent);

    bool silent = false;

    // Makes the page's documents at url hide what the content policy says.
    // Before the engine is told to go there: it may make the new document's
    // frame, with the scripts it has then, before asking to navigate.
    void prepareFor(const QUrl& url);

    // Calls ask for a sign-in the site at url wants, only when it is the
    // page's own site (a picture or frame of another site asks nothing) and
    // within the page's dialog limit; false when ask was not called.
    bool askSignIn(const QUrl& url, const std::function<void()>& ask);
    // Called when the engine reports that the page asked for content over an
    // unencrypted connection.
    std::function<void()> mixedContent;

protected:
    bool acceptNavigationRequest(const QUrl& url, NavigationType type, bool isMainFrame) override;
    // Script dialogs and file choosers wait for the user in a nested loop.
    void javaScriptAlert(const QUrl& origin, const QString& message) override;
    bool javaScriptConfirm(const QUrl& origin, const QString& message) override;
    bool javaScriptPrompt(const QUrl& origin, const QString& message, const QString& fallback,
                          QString* result) override;
    QStringList chooseFiles(FileSelectionMode mode, const QStringList& oldFiles,
                            const QStringList& acceptedMimeTypes) override;
    // Page scripts' console output is the page's business, not the program's
    // log; the engine's own mixed-content warning is the program's.
    void javaScriptConsoleMessage(JavaScriptConsoleMessageLevel, const QString& message, int,
                                  const QString&) override;

private:
    // Shows one script dialog through ask, unless the view is silent or the
    // page has had its fill.
    template <typename Ask> void showDialog(Ask ask);
    static QString dialogTitle(const QUrl& origin);

    EngineProfile& engine_;
    BrowserView& owner_;
    ScriptDialogLimit dialogLimit_;
    HidingStyle hiding_{*this};
    // Where the main frame was last allowed to go, redirects included: the
    // page's own site while it loads.
    QUrl navigatingTo_;
    QElapsedTimer clock_;
};

} // namespace platform
