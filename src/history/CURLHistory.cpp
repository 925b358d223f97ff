#include "CURLHistory.h"
#include "platform/Dialogs.h"

QDateTime URLHistoryItem::localised(qint64& millis) const
{
    millis +=
        qint64(zone_.offsetFromUtc(QDateTime::fromMSecsSinceEpoch(millis, QTimeZone::utc()))) *
        1000;
    const QDateTime wall = QDateTime::fromMSecsSinceEpoch(millis, QTimeZone::utc());
    return QDateTime(wall.date(), wall.time(), zone_);
}

CURLHistory::CURLHistory(HistoryStore& store, platform::Dialogs& dialogs)
    : store_(store), dialogs_(dialogs)
{
    Refresh();
}

void CURLHistory::AddURL(const QString& url, const QString& title, quint32 flags)
{
    store_.addUrl(url, title, flags);
}

void CURLHistory::Clear()
{
    store_.clear();
    Refresh();
}

void CURLHistory::Refresh(const QString& filter, quint32)
{
    items_.clear();
    if (!store_.isOpen()) {
        // No store to read: the list stays empty, as when the history folder
        // could not be bound to.
        dialogs_.message(QStringLiteral("cannot bindto"), platform::Dialogs::Buttons::Ok,
                         platform::Dialogs::Icon::None);
        return;
    }
    const QTimeZone zone = QTimeZone::systemTimeZone();
    for (HistoryRecord& record : store_.records(filter))
        items_.emplace_back(std::move(record), zone);
    Sorted();
}

URLHistoryItem CURLHistory::Remove(int index)
{
    URLHistoryItem item = items_.at(size_t(index - 1));
    store_.deleteUrl(item.URL());
    items_.erase(items_.begin() + (index - 1));
    return item;
}

void CURLHistory::DeleteURL(quint32 number, quint32)
{
    store_.deleteUrl(QString::number(number));
    Refresh();
}

void CURLHistory::siftDown(std::vector<int>& order, size_t at, size_t length) const
{
    const auto url = [&](size_t i) -> const QString& { return items_[size_t(order[i])].URL(); };
    while (2 * at + 1 < length) {
        size_t child = 2 * at + 1;
        if (child + 1 < length && url(child) < url(child + 1))
            ++child;
        if (!(url(at) < url(child)))
            return;
        std::swap(order[at], order[child]);
        at = child;
    }
}

void CURLHistory::Sorted()
{
    const size_t n = items_.size();
    if (n == 0)
        return;
    std::vector<int> order(n);
    for (size_t i = 0; i < n; ++i)
        order[i] = int(i);
    for (size_t i = n / 2; i-- > 0;)
        siftDown(order, i, n);
    for (size_t m = n; m >= 2; --m) {
        std::swap(order[0], order[m - 1]);
        siftDown(order, 0, m - 1);
    }
    std::vector<URLHistoryItem> sorted;
    sorted.reserve(n);
    for (int i : order)
        sorted.push_back(std::move(items_[size_t(i)]));
    items_ = std::move(sorted);
}
