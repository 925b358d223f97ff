#pragma once
// One browser view: the page of one tab, or the hidden catch view 0. The rest
// of the program sees only this interface; WebEngineBrowserView implements it
// on the real engine and tests use a fake of the same shape.
#include "PageClick.h"
#include "ViewFacets.h"

#include <QObject>
#include <QString>
#include <QUrl>
#include <memory>

class QWidget;

namespace proxy {
class ForwardingProxy;
} // namespace proxy

namespace platform {

class BrowserView;
class NavigationPolicy;
class ContentPolicy;

// A page asks for a new window. Handled inside the signal's slot: either
// openIn() a view, or leave it, which refuses the window.
class NewWindowRequest
{
public:
    virtual ~NewWindowRequest() = default;
    virtual QUrl url() const = 0;
    // The engine's own verdict that a user gesture led to the request.
    virtual bool userInitiated() const = 0;
    // The user chose "open link in a new tab" (or window) from the page's menu.
    virtual bool chosenFromPageMenu() const = 0;
    // The page (a middle click, say) asked for a tab in the background.
    virtual bool inBackground() const = 0;
    virtual void openIn(BrowserView& view) = 0;
};

// A view is about to go somewhere: a link, a form, a script, a typed address.
struct NavigationRequest
{
    enum class Kind { Link, Typed, Form, BackForward, Reload, Redirect, Other };
    QUrl url;
    Kind kind = Kind::Other;
    bool mainFrame = true;
};

class BrowserView : public QObject
{
    Q_OBJECT
public:
    enum ReadyState { Uninitialized = 0, Loading = 1, Loaded = 2, Interactive = 3, Complete = 4 };
    enum Command { CommandForward = 1, CommandBack = 2 };

    explicit BrowserView(int index) : index_(index) {}

    // Index in the view array; never changes and is never reused.
    int index() const { return index_; }
    // The tab's position in the strip, as decimal text.
    const QString& tag() const { return tag_; }
    void setTag(const QString& tag) { tag_ = tag; }

    virtual QWidget* widget() = 0;
    virtual void navigate(const QString& address) = 0;
    // Stands for the page at address, titled title, and loads it the first
    // time the view is shown (at once when it is shown now): a restored tab.
    virtual void navigateWhenShown(const QString& address, const QString& title) = 0;
    // Whether such a page still waits; refresh() loads it at once.
    virtual bool waitsToBeShown() const = 0;
    virtual void stop() = 0;
    virtual void refresh() = 0;
    virtual void goBack() = 0;
    virtual void goForward() = 0;
    virtual void goHome() = 0;
    // Empty until the view was first asked to navigate.
    virtual QString locationUrl() const = 0;
    virtual QString title() const = 0;
    virtual ReadyState readyState() const = 0;
    bool hasDocument() const { return readyState() != Uninitialized; }
    // A silent view shows no script dialogs of its pages.
    virtual void setSilent(bool silent) = 0;
    virtual bool silent() const = 0;
    // From its tab's close on, the view reports nothing and every answer of
    // its page still on its way is dropped: the engine may deliver one until
    // the page itself is gone.
    virtual void retire() = 0;
    // Empties the page of a retired view.
    virtual void clearDocument() = 0;
    virtual void focusPage() = 0;
    // Takes the page's element out of full screen, if it is in it.
    virtual void exitFullScreen() = 0;

    virtual ZoomFacet& zoom() = 0;
    virtual EditingFacet& editing() = 0;
    virtual FindFacet& finder() = 0;
    virtual PrintingFacet& printing() = 0;
    virtual DocumentFacet& document() = 0;
    virtual SecurityFacet& security() = 0;
    virtual LifecycleFacet& lifecycle() = 0;

    // Held while the view waits for the user to answer a prompt of its page
    // (sign-in, script dialog, file choice, print preview). A busy view must
    // not be deleted: the prompt runs inside its own code.
    class Prompt
    {
    public:
        explicit Prompt(BrowserView& view) : view_(view) { ++view_.prompts_; }
        ~Prompt()
        {
            if (--view_.prompts_ == 0 && view_.deleteWhenIdle_)
                view_.deleteLater();
        }
        Prompt(const Prompt&) = delete;
        Prompt& operator=(const Prompt&) = delete;

    private:
        BrowserView& view_;
    };
    bool busy() const { return prompts_ > 0; }
    // Deletes the view now, or when its last open prompt has been answered.
    void deleteWhenIdle()
    {
        if (busy())
            deleteWhenIdle_ = true;
        else
            deleteLater();
    }

signals:
    void titleChanged(const QString& title);
    // A new document is on its way: the page shown so far goes.
    void loadStarted();
    // The document and its frames have loaded.
    void documentComplete();
    void statusTextChanged(const QString& text);
    void progressChanged(int progress, int maximum);
    void commandStateChanged(int command, bool enabled);
    // The page asked to close its own window.
    void windowClosing(bool isChildWindow);
    void fullScreenRequested(bool fullScreen);
    void newWindowRequested(platform::NewWindowRequest& request);
    // From the page agent: every mouse-down and click in the page's frames.
    void pageMouseDown(const platform::PageClick& click);
    void pageClicked(const platform::PageClick& click);
    // A drag that began in the page ended outside it, carrying address (a
    // picture's own address, or the dragged text).
    void draggedOut(const QString& address);
    // The page's encryption level changed (see SecurityFacet).
    void lockLevelChanged(int level);

private:
    const int index_;
    QString tag_;
    int prompts_ = 0;
    bool deleteWhenIdle_ = false;
};

// Makes the views of one window; index 0 is the catch view.
class BrowserViewFactory
{
public:
    virtual ~BrowserViewFactory() = default;
    virtual std::unique_ptr<BrowserView> create(int index) = 0;
    // Where GoHome goes, for every view made before or after.
    virtual void setHomeAddress(const QString& address) = 0;
    // Where typed words that are no address go, for every view: an address
    // with "{query}" for the words, or empty for a page of the program's own
    // that names them.
    virtual void setSearchAddress(const QString& searchTemplate) = 0;
    // Asked before every navigation of every view, made before or after,
    // with every policy added before it; all must allow. A policy is removed
    // before it goes: the factory may outlive the window that added it.
    virtual void addNavigationPolicy(NavigationPolicy& policy) = 0;
    virtual void removeNavigationPolicy(NavigationPolicy& policy) = 0;
    // Asked for every request and every new page of every view but the catch
    // view; null asks nobody. Cleared before the policy goes.
    virtual void setContentPolicy(ContentPolicy* policy) = 0;
    virtual ConnectionState& connection() = 0;
    virtual PrivateData& privateData() = 0;
    // The program's proxy that every view's requests go through.
    virtual proxy::ForwardingProxy& forwardingProxy() = 0;
};

// A navigation policy asked for as long as this lives; declared after the
// policy, so it is no longer asked once the policy is gone.
class ScopedNavigationPolicy
{
public:
    ScopedNavigationPolicy(BrowserViewFactory& views, NavigationPolicy& policy)
        : views_(views), policy_(policy)
    {
        views_.addNavigationPolicy(policy_);
    }
    ~ScopedNavigationPolicy() { views_.removeNavigationPolicy(policy_); }
    ScopedNavigationPolicy(const ScopedNavigationPolicy&) = delete;
    ScopedNavigationPolicy& operator=(const ScopedNavigationPolicy&) = delete;

private:
    BrowserViewFactory& views_;
    NavigationPolicy& policy_;
};

// Where views live on screen: the one active view fills the client area, every
// other view is parked out of sight but stays alive.
class ViewStage
{
public:
    virtual ~ViewStage() = default;
    // Shows view in the client area, in front, and parks whatever was there.
    virtual void show(BrowserView& view) = 0;
    virtual void park(BrowserView& view) = 0;
};

} // namespace platform
