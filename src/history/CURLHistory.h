#pragma once
// A snapshot of the history store as a list sorted by address, and the
// store's operations on it. The snapshot changes only when Refresh() (or a
// member that calls it) reads the store again.
#include "history/HistoryStore.h"

#include <QDateTime>
#include <QTimeZone>
#include <vector>

namespace platform {
class Dialogs;
} // namespace platform

// One entry of the snapshot.
class URLHistoryItem
{
public:
    // zone is the system's time zone as it was when the list was read.
    URLHistoryItem(HistoryRecord record, const QTimeZone& zone)
        : record_(std::move(record)), zone_(zone)
    {
    }

    // Local times. Each read turns the kept time into local time once more,
    // in place, as the system call behind it always did: the first read is
    // right, and a caller that needs a time twice keeps its first answer.
    QDateTime LastVisited() { return localised(record_.lastVisited); }
    QDateTime Expires() { return localised(record_.expires); }
    QDateTime LastUpdated() { return localised(record_.lastUpdated); }
    const QString& URL() const { return record_.url; }
    quint32 Flags() const { return record_.flags; }
    const QString& Title() const { return record_.title; }

private:
    QDateTime localised(qint64& millis) const;

    HistoryRecord record_;
    // The zone's own table of offsets: asking the C library for local time
    // rereads the zone file for every time.
    QTimeZone zone_;
};

class CURLHistory
{
public:
    // Reads the store at once.
    CURLHistory(HistoryStore& store, platform::Dialogs& dialogs);

    void AddURL(const QString& url, const QString& title, quint32 flags);
    int Count() const { return int(items_.size()); }
    void Clear();
    // Reads the entries whose address begins with filter; the flags are
    // the store's own and none is used.
    void Refresh(const QString& filter = {}, quint32 filterFlags = 0);
    // 1-based.
    URLHistoryItem& Item(int index) { return items_.at(size_t(index - 1)); }
    // Takes entry index out of the list and its address out of the store.
    URLHistoryItem Remove(int index);
    // Deletes the address whose text is the number, as it always has.
    void DeleteURL(quint32 number, quint32 flags);
    std::vector<URLHistoryItem>::iterator begin() { return items_.begin(); }
    std::vector<URLHistoryItem>::iterator end() { return items_.end(); }
    // Ascending by address, compared code unit by code unit.
    void Sorted();

private:
    void siftDown(std::vector<int>& order, size_t at, size_t length) const;

    HistoryStore& store_;
    platform::Dialogs& dialogs_;
    std::vector<URLHistoryItem> items_;
};
