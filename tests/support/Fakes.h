#pragma once
// Test doubles of the platform: browser views that record what they are told,
// a stage that records where views are, scripted message boxes and a clock
// set by hand.
#include "platform/Clock.h"
#include "platform/Dialogs.h"
#include "platform/Shell.h"
#include "platform/browser/BrowserView.h"
#include "platform/browser/LoadWhenShown.h"
#include "platform/browser/ViewPolicies.h"
#include "proxy/ForwardingProxy.h"
#include "support/FakeFacets.h"
#include "tabs/ActiveTabDisplay.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QStringList>
#include <QWidget>
#include <deque>
#include <functional>
#include <memory>

class FakeBrowserView : public platform::BrowserView
{
    Q_OBJECT
public:
    explicit FakeBrowserView(int index)
        : BrowserView(index), widget_(new QWidget),
          waiting_(*widget_, [this](const QString& address) { navigate(address); })
    {
    }
    // The stage may have given the widget to a window that deleted it first.
    ~FakeBrowserView() override { delete widget_; }

    QWidget* widget() override { return widget_; }
    void navigate(const QString& address) override
    {
        waiting_.cancel();
        address_ = address;
        state_ = Complete;
        calls << QStringLiteral("navigate ") + address;
        emit loadStarted();
    }
    void navigateWhenShown(const QString& address, const QString& title) override
    {
        if (waiting_.wait(address, title))
            emit titleChanged(waiting_.title());
    }
    bool waitsToBeShown() const override { return waiting_.waiting(); }
    void stop() override { calls << QStringLiteral("stop"); }
    void refresh() override
    {
        calls << QStringLiteral("refresh");
        waiting_.loadNow();
    }
    void goBack() override { calls << QStringLiteral("back"); }
    void goForward() override { calls << QStringLiteral("forward"); }
    void goHome() override { calls << QStringLiteral("home"); }
    QString locationUrl() const override
    {
        return waiting_.waiting() ? waiting_.address() : address_;
    }
    QString title() const override { return waiting_.waiting() ? waiting_.title() : title_; }
    ReadyState readyState() const override { return state_; }
    void setSilent(bool silent) override { silent_ = silent; }
    bool silent() const override { return silent_; }
    void retire() override { blockSignals(true); }
    void clearDocument() override { calls << QStringLiteral("clear"); }
    void focusPage() override { ++focusCalls; }
    void exitFullScreen() override { calls << QStringLiteral("exit full screen"); }
    platform::ZoomFacet& zoom() override { return zoomFacet; }
    platform::EditingFacet& editing() override { return editingFacet; }
    platform::FindFacet& finder() override { return findFacet; }
    platform::PrintingFacet& printing() override { return printingFacet; }
    platform::DocumentFacet& document() override { return documentFacet; }
    platform::SecurityFacet& security() override { return securityFacet; }
    platform::LifecycleFacet& lifecycle() override { return lifecycleFacet; }

    void setTitle(const QString& title) { title_ = title; }
    void setReadyState(ReadyState state) { state_ = state; }

    QStringList calls;
    int focusCalls = 0;
    FakeZoom zoomFacet;
    FakeEditing editingFacet;
    FakeFind findFacet;
    FakePrinting printingFacet;
    FakeDocument documentFacet;
    FakeSecurity securityFacet;
    FakeLifecycle lifecycleFacet;

private:
    QPointer<QWidget> widget_;
    platform::LoadWhenShown waiting_;
    QString address_;
    QString title_;
    ReadyState state_ = Uninitialized;
    bool silent_ = false;
};

class FakeViewFactory : public platform::BrowserViewFactory
{
public:
    std::unique_ptr<platform::BrowserView> create(int index) override
    {
        auto view = std::make_unique<FakeBrowserView>(index);
        created.push_back(view.get());
        return view;
    }
    void setHomeAddress(const QString& address) override { home = address; }
    void setSearchAddress(const QString&) override {}
    void addNavigationPolicy(platform::NavigationPolicy& policy) override
    {
        navigations.push_back(&policy);
    }
    void removeNavigationPolicy(platform::NavigationPolicy& policy) override
    {
        std::erase(navigations, &policy);
    }
    void setContentPolicy(platform::ContentPolicy* policy) override { content = policy; }
    // As the engine asks: every policy, all must allow.
    bool allows(platform::BrowserView& view, const platform::NavigationRequest& request) const
    {
        bool allowed = true;
        for (platform::NavigationPolicy* policy : navigations)
            allowed = policy->allows(view, request) && allowed;
        return allowed;
    }
    platform::ConnectionState& connection() override { return connectionState; }
    platform::PrivateData& privateData() override { return privacy; }
    proxy::ForwardingProxy& forwardingProxy() override { return proxy; }
    std::vector<FakeBrowserView*> created;
    std::vector<platform::NavigationPolicy*> navigations;
    platform::ContentPolicy* content = nullptr;
    QString home;
    FakeConnection connectionState;
    FakePrivateData privacy;
    proxy::ForwardingProxy proxy;
};

class FakeStage : public platform::ViewStage
{
public:
    void show(platform::BrowserView& view) override { shown = view.index(); }
    void park(platform::BrowserView& view) override
    {
        if (shown == view.index())
            shown = -1;
    }
    int shown = -1;
};

class RecordingShell : public platform::Shell
{
public:
    bool open(const QString& address) override
    {
        opened << address;
        return handled;
    }
    bool openAddressBook() override
    {
        opened << QStringLiteral("address book");
        return handled;
    }
    bool start(const QString& program, const QStringList& arguments,
               const QHash<QString, QString>& added) override
    {
        opened << (QStringList{program} + arguments).join(' ');
        startedWith = added;
        return handled;
    }
    bool showProperties(const QString& path) override
    {
        opened << QStringLiteral("properties ") + path;
        return handled;
    }
    void playSound(const QString& path) override { played << path; }
    QIcon fileIcon(const QString& path) override
    {
        iconsAsked << path;
        return {};
    }
    QString handlerName(const QString& scheme) override { return handlers.value(scheme); }
    QHash<QString, QString> handlers;
    QStringList iconsAsked;
    QStringList opened;
    // What the last program started had added to its environment.
    QHash<QString, QString> startedWith;
    QStringList played;
    bool handled = true;
};

class ScriptedDialogs : public platform::Dialogs
{
public:
    Answer message(const QString& text, Buttons, Icon, const QString& = {}) override
    {
        asked << text;
        if (answers.empty())
            return Answer::Ok;
        const Answer answer = answers.front();
        answers.pop_front();
        return answer;
    }
    QString saveFileName(const QString&, const QString& suggested,
                         const QString& filter = {}) override
    {
        asked << (filter.isEmpty() ? suggested : suggested + ' ' + filter);
        return savePaths.empty() ? QString() : takeFront(savePaths);
    }
    bool credentials(const QString& prompt, QString& user, QString& password) override
    {
        asked << prompt;
        if (whileAsking)
            std::exchange(whileAsking, nullptr)();
        if (logins.empty())
            return false;
        std::tie(user, password) = takeFront(logins);
        return true;
    }
    bool editText(const QString& prompt, QString& text, const QString& = {}) override
    {
        asked << prompt + " [" + text + "]";
        if (inputs.empty())
            return false;
        text = takeFront(inputs);
        return true;
    }
    QString openFileName(const QString& filter, const QString& title = {},
                         const QString& folder = {}) override
    {
        asked << (title.isEmpty() ? filter : title + ' ' + filter) +
                     (folder.isEmpty() ? QString() : " in " + folder);
        return openPaths.empty() ? QString() : takeFront(openPaths);
    }
    // Flips the items named in flips, one list a call; cancels with none left.
    bool chooseSome(const QString& title, const QString& prompt, const QStringList& items,
                    QList<bool>& chosen) override
    {
        asked << title << prompt;
        offered = items;
        if (flips.empty())
            return false;
        for (const int i : takeFront(flips))
            chosen[i] = !chosen[i];
        return true;
    }
    int chooseItem(const QString& prompt, const QStringList& items) override
    {
        asked << prompt;
        offered = items;
        return choices.empty() ? -1 : takeFront(choices);
    }
    void showDetails(const QString& title, const Rows& rows) override
    {
        asked << title;
        details = rows;
    }
    QStringList asked;
    std::deque<Answer> answers;
    std::deque<QString> savePaths;
    std::deque<QString> openPaths;
    std::deque<QString> inputs;
    std::deque<int> choices;
    std::deque<std::vector<int>> flips;
    QStringList offered;
    Rows details;
    std::deque<std::pair<QString, QString>> logins;
    // Runs once inside the next sign-in prompt, as if the user acted meanwhile.
    std::function<void()> whileAsking;

private:
    template <typename T> static T takeFront(std::deque<T>& queue)
    {
        T front = queue.front();
        queue.pop_front();
        return front;
    }
};

// Stands still unless told to run; set by hand either way, so a test can
// let a user pause for seconds without waiting them.
class SettableClock : public platform::Clock
{
public:
    double secondsSinceMidnight() const override
    {
        return now + (running_.isValid() ? running_.elapsed() / 1000.0 : 0);
    }
    void run() { running_.start(); }
    double now = 36000;

private:
    QElapsedTimer running_;
};

class FakeDisplay : public ActiveTabDisplay
{
public:
    void setCaption(const QString& text) override { caption = text; }
    QString addressText() const override { return address; }
    void setAddressText(const QString& text) override
    {
        address = text;
        ++addressWrites;
    }
    void focusAddress() override {}
    void setStatusText(const QString& text) override { status = text; }
    void setProgress(int value) override { percent = value; }
    void clearInfo() override { infoCleared = true; }

    QString caption, address, status;
    int addressWrites = 0;
    int percent = -1;
    bool infoCleared = false;
};
