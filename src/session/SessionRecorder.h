#pragma once
// Keeps the session file up to date while the program runs: any change of
// the tabs (opened, closed, shown, navigated, retitled) has the open pages
// written within delayMs, on a thread of their own so the window never waits
// for the disk. Changes that come close together are written once.
#include "SessionFiles.h"

#include <QObject>
#include <QThread>
#include <QTimer>
#include <memory>

class EveryTabSignals;
class TabStrip;

// Lives on the recorder's thread.
class SessionWriter : public QObject
{
    Q_OBJECT
public:
    explicit SessionWriter(const QString& folder) : files_(folder) {}
    void write(const QByteArray& text) { files_.write(text); }

private:
    SessionFiles files_;
};

class SessionRecorder : public QObject
{
    Q_OBJECT
public:
    static constexpr int delayMs = 500;

    SessionRecorder(const QString& folder, TabStrip& tabs, EveryTabSignals& every);
    ~SessionRecorder() override;

    // While held (the user has yet to say what becomes of a crashed session)
    // nothing is written, so that session stays on disk as it was: not even
    // a write the opening of the first tab had already asked for.
    void hold()
    {
        held_ = true;
        timer_.stop();
    }
    void resume();
    // The tabs as they stand, marked as a clean end, written before this
    // returns; nothing is written after it.
    void finish();

    SessionState snapshot() const;

private:
    void changed();
    void save();

    TabStrip& tabs_;
    QThread thread_;
    std::unique_ptr<SessionWriter> writer_;
    QTimer timer_;
    QByteArray written_;
    bool held_ = false;
    bool finished_ = false;
};
