#pragma once
// Test doubles of the platform: browser views that record what they are told,
// a stage that records where views are, scripted message boxes and a clock
// set by hand.
#include "platform/Clock.h"
#include "platform/Dialogs.h"
#include "platform/browser/BrowserView.h"

#include <QStringList>
#include <QWidget>
#include <deque>
#include <memory>

class FakeBrowserView : public platform::BrowserView
{
    Q_OBJECT
public:
    explicit FakeBrowserView(int index) : BrowserView(index) {}

    QWidget* widget() override { return &widget_; }
    void navigate(const QString& address) override
    {
        address_ = address;
        state_ = Complete;
        calls << QStringLiteral("navigate ") + address;
    }
    void stop() override { calls << QStringLiteral("stop"); }
    void refresh() override { calls << QStringLiteral("refresh"); }
    void goBack() override { calls << QStringLiteral("back"); }
    void goForward() override { calls << QStringLiteral("forward"); }
    void goHome() override { calls << QStringLiteral("home"); }
    QString locationUrl() const override { return address_; }
    QString title() const override { return title_; }
    ReadyState readyState() const override { return state_; }
    void setSilent(bool silent) override { silent_ = silent; }
    bool silent() const override { return silent_; }
    void clearDocument() override { calls << QStringLiteral("clear"); }
    void focusPage() override {}

    void setTitle(const QString& title) { title_ = title; }

    QStringList calls;

private:
    QWidget widget_;
    QString address_;
    QString title_;
    ReadyState state_ = Uninitialized;
    bool silent_ = false;
};

class FakeViewFactory : public platform::BrowserViewFactory
{
public:
    platform::BrowserView* create(int index) override
    {
        auto* view = new FakeBrowserView(index);
        created.push_back(view);
        return view;
    }
    std::vector<FakeBrowserView*> created;
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
    QStringList asked;
    std::deque<Answer> answers;
};

class SettableClock : public platform::Clock
{
public:
    double secondsSinceMidnight() const override { return now; }
    double now = 36000;
};
