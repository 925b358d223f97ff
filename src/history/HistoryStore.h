#pragma once
// The per-user history of visited addresses, one record per address: SQLite
// in the user's data folder, in write-ahead-log mode, its schema numbered in
// "user_version". Visits are written by a thread of their own, a batch per
// transaction, so a visit never waits for the disk; a killed program loses
// at most the visits of its last unfinished transaction. Reads first let the
// writer catch up, so they see every visit recorded before them.
#include <QDateTime>
#include <QObject>
#include <QString>
#include <QStringList>
#include <atomic>
#include <memory>
#include <vector>

class QThread;

struct HistoryRecord
{
    QString url;
    QString title;
    // Milliseconds since the epoch, UTC.
    qint64 lastVisited = 0;
    qint64 lastUpdated = 0;
    qint64 expires = 0;
    quint32 flags = 0;
};

class HistoryWriter;

class HistoryStore : public QObject
{
    Q_OBJECT
public:
    // Opens the store at path, making it when missing. A file that is not a
    // readable store is moved aside and a new store starts; problem() then
    // says so.
    explicit HistoryStore(const QString& path, QObject* parent = nullptr);
    ~HistoryStore() override;

    // The file in the user's data folder.
    static QString userPath();
    // Empty when the store opened as it was; else what happened, for the user.
    const QString& problem() const { return problem_; }
    bool isOpen() const { return open_; }

    // A page names its own address and title, at any length and as often as
    // it likes: an address longer than this is not kept, nor a data: or
    // blob: one, a title is kept to its start, and past maxRows the oldest
    // visits go.
    static constexpr int maxUrlLength = 8192;
    static constexpr int maxTitleLength = 1024;
    static constexpr int maxRows = 200000;

    // A visit (or an update of the address's title), now unless a time in
    // milliseconds since the epoch is given.
    void addUrl(const QString& url, const QString& title, quint32 flags = 0, qint64 visitedAt = 0);
    void deleteUrl(const QString& url);
    // Every visit, from the file and its log alike.
    void clear();
    // Drops the addresses last visited more than days ago; later visits
    // expire that long after they are made.
    void expire(int days);

    // Every record whose address begins with filter (all for an empty one),
    // in no particular order.
    std::vector<HistoryRecord> records(const QString& filter = {}) const;
    // Up to limit addresses for typed text: those whose site begins with it
    // first, then those whose address or title holds it, most recent first
    // (beyond the latest two thousand, only for three letters or more).
    QStringList complete(const QString& text, int limit) const;
    // The same, asked of the writer's thread so typing never waits for the
    // file: completed() brings the answer, unless a later request came first.
    void requestCompletion(const QString& text, int limit);

    // Keeps at most rows visits from now on (maxRows unless set).
    void setRowLimit(int rows) { rowLimit_ = rows; }

    // Waits until every visit recorded so far is in the file.
    void flush() const;

signals:
    void completed(const QString& text, const QStringList& urls);

private:
    bool openFile(const QString& path);

    QString connection_;
    QString problem_;
    bool open_ = false;
    qint64 keptDays_ = 20;
    int rowLimit_ = maxRows;
    std::unique_ptr<QThread> thread_;
    HistoryWriter* writer_ = nullptr;
    // The store outlives its writer's thread, so the thread may read this.
    std::atomic<quint64> latestRequest_{0};
};
