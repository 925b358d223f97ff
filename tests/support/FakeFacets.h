#pragma once
// Test doubles of the browser-view facets. The editing facet records what it
// is told, and its answers wait in a queue until the test gives them, as the
// engine's answers arrive only later.
#include "platform/browser/ViewFacets.h"

#include <QMap>
#include <QStringList>
#include <algorithm>
#include <deque>
#include <functional>

class FakeZoom : public platform::ZoomFacet
{
public:
    int level() const override { return level_; }
    void setLevel(int level) override { level_ = level; }

private:
    int level_ = 2;
};

class FakeEditing : public platform::EditingFacet
{
public:
    void run(platform::EditCommand command) override { ran << platform::editCommandName(command); }
    void queryEnabled(platform::EditCommand command, std::function<void(bool)> answer) override
    {
        // The page answers for the moment it was asked.
        const bool now = enabled.value(platform::editCommandName(command));
        pending_.push_back([now, answer] { answer(now); });
    }
    void answerAll()
    {
        while (!pending_.empty()) {
            auto next = std::move(pending_.front());
            pending_.pop_front();
            next();
        }
    }
    QStringList ran;
    QMap<QString, bool> enabled;

private:
    std::deque<std::function<void()>> pending_;
};

class FakeFind : public platform::FindFacet
{
public:
    void find(const QString&, Options, std::function<void(int)> answer) override { answer(0); }
    void clear() override {}
};

class FakePrinting : public platform::PrintingFacet
{
public:
    void print() override { calls << QStringLiteral("print"); }
    void printPreview() override { calls << QStringLiteral("print preview"); }
    void pageSetup() override { calls << QStringLiteral("page setup"); }
    void saveAs(const QString& path, SaveFormat) override
    {
        calls << QStringLiteral("save as ") + path;
    }
    QStringList calls;
};

// Records what it is asked. A question is answered from answers, in order;
// with none left the answer never comes, as from a page that is still
// loading. The links are those the test gave.
class FakeDocument : public platform::DocumentFacet
{
public:
    void ask(const QString& script, std::function<void(const QVariant&)> answer) override
    {
        calls << QStringLiteral("ask ") + script;
        if (answers.empty())
            return;
        const QVariant value = answers.front();
        answers.pop_front();
        answer(value);
    }
    void collectLinks(std::function<void(const platform::PageLinks&)> answer) override
    {
        calls << QStringLiteral("links");
        answer(links);
    }
    void write(const QString& html) override { calls << QStringLiteral("write ") + html; }
    void removeContent(bool pictures, bool flash) override
    {
        calls << QStringLiteral("remove pictures %1 flash %2").arg(int(pictures)).arg(int(flash));
    }
    QStringList calls;
    std::deque<QVariant> answers;
    platform::PageLinks links;
};

class FakeSecurity : public platform::SecurityFacet
{
public:
    int lockLevel() const override { return level; }
    int level = 0;
};

// Rests as deep as told, down to the deepest its page allows.
class FakeLifecycle : public platform::LifecycleFacet
{
public:
    State state() const override { return current; }
    void rest(State deepest) override { current = std::max(current, std::min(deepest, allows)); }
    State current = State::Active;
    State allows = State::Discarded;
};

class FakePrivateData : public platform::PrivateData
{
public:
    void clear(int kinds) override { cleared << kinds; }
    QList<int> cleared;
};

class FakeConnection : public platform::ConnectionState
{
public:
    bool offline() const override { return offline_; }
    void setOffline(bool offline) override { offline_ = offline; }

private:
    bool offline_ = false;
};
