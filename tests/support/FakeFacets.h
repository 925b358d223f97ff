#pragma once
// Test doubles of the browser-view facets. They record what they are told;
// questions to the page wait in a queue until the test answers them, as the
// engine's answers arrive only later.
#include "platform/browser/ViewFacets.h"

#include <QMap>
#include <QStringList>
#include <deque>
#include <functional>

// Answers the page has not given yet, delivered when the test says.
class AnswerQueue
{
public:
    void push(std::function<void()> answer) { pending_.push_back(std::move(answer)); }
    bool empty() const { return pending_.empty(); }
    void answerAll()
    {
        while (!pending_.empty()) {
            auto next = std::move(pending_.front());
            pending_.pop_front();
            next();
        }
    }

private:
    std::deque<std::function<void()>> pending_;
};

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
        pending.push([now, answer] { answer(now); });
    }
    QStringList ran;
    QMap<QString, bool> enabled;
    AnswerQueue pending;
};

class FakeFind : public platform::FindFacet
{
public:
    void find(const QString& text, Options options, std::function<void(int)> answer) override
    {
        searched << (options.backward ? QStringLiteral("back ") : QString()) + text;
        answer(matches);
    }
    void clear() override { searched << QString(); }
    QStringList searched;
    int matches = 0;
};

class FakePrinting : public platform::PrintingFacet
{
public:
    void print() override { calls << QStringLiteral("print"); }
    void printPreview() override { calls << QStringLiteral("preview"); }
    void pageSetup() override { calls << QStringLiteral("setup"); }
    void saveAs(const QString& path, SaveFormat) override
    {
        calls << QStringLiteral("save ") + path;
    }
    QStringList calls;
};

class FakeDocument : public platform::DocumentFacet
{
public:
    void ask(const QString& script, std::function<void(const QVariant&)> answer) override
    {
        asked << script;
        pending.push([this, script, answer] { answer(answers.value(script)); });
    }
    void collectLinks(std::function<void(const platform::PageLinks&)> answer) override
    {
        pending.push([this, answer] { answer(links); });
    }
    void write(const QString& html) override { written << html; }
    void removeContent(bool pictures, bool flash) override
    {
        removed << QStringLiteral("%1 %2").arg(pictures).arg(flash);
    }
    QStringList asked;
    QMap<QString, QVariant> answers;
    platform::PageLinks links;
    QStringList written;
    QStringList removed;
    AnswerQueue pending;
};

class FakeSecurity : public platform::SecurityFacet
{
public:
    int lockLevel() const override { return level; }
    int level = 0;
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
