#pragma once
// Test doubles of the browser-view facets. The editing facet records what it
// is told, and its answers wait in a queue until the test gives them, as the
// engine's answers arrive only later.
#include "platform/browser/ViewFacets.h"

#include <QMap>
#include <QStringList>
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
    void print() override {}
    void printPreview() override {}
    void pageSetup() override {}
    void saveAs(const QString&, SaveFormat) override {}
};

// Its answers never come, as from a page that is still loading.
class FakeDocument : public platform::DocumentFacet
{
public:
    void ask(const QString&, std::function<void(const QVariant&)>) override {}
    void collectLinks(std::function<void(const platform::PageLinks&)>) override {}
    void write(const QString&) override {}
    void removeContent(bool, bool) override {}
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
