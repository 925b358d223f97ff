#include "HistoryTree.h"
#include "CURLHistory.h"
#include "platform/browser/AddressUrl.h"

#include <QIcon>
#include <QLocale>

HistoryTree::HistoryTree(QObject* parent) : QAbstractItemModel(parent)
{
    stepper_.setSingleShot(true);
    stepper_.setInterval(0);
    connect(&stepper_, &QTimer::timeout, this, &HistoryTree::fillStep);
}

void HistoryTree::refresh(CURLHistory& history)
{
    history.Refresh(QStringLiteral("http"), 0);
    std::vector<Entry> entries;
    entries.reserve(size_t(history.Count()));
    // Each time is read once: a second read would be shifted again.
    for (URLHistoryItem& item : history)
        entries.push_back({item.LastVisited().date(), item.URL(), item.Title()});
    beginResetModel();
    nodes_.clear();
    top_.clear();
    keyed_.clear();
    days_.clear();
    links_ = 0;
    endResetModel();
    pending_ = std::move(entries);
    next_ = 0;
    refreshing_ = true;
    fillStep();
}

void HistoryTree::fillStep()
{
    const QLocale locale;
    const QString today = locale.toString(QDate::currentDate(), QLocale::ShortFormat);
    // Formatting a date costs more than all the rest of an entry: once a day.
    QDate lastDay;
    QString day;
    beginResetModel();
    for (const size_t end = std::min(pending_.size(), next_ + step); next_ < end; ++next_) {
        const Entry& entry = pending_[next_];
        if (entry.day != lastDay) {
            lastDay = entry.day;
            day = days_.value(lastDay);
            if (day.isEmpty())
                days_.insert(lastDay, day = locale.toString(lastDay, QLocale::ShortFormat));
        }
        const QString dayKey = QStringLiteral("Root") + day;
        int dayNode = keyed_.value(dayKey, -1);
        if (dayNode < 0)
            dayNode = addNode(-1, dayKey, day == today ? QStringLiteral("Today") : day, {});
        const QString domain = platform::getDomain(entry.url);
        const QString siteKey = QStringLiteral("Domain") + day + domain;
        int siteNode = keyed_.value(siteKey, -1);
        if (siteNode < 0)
            siteNode = addNode(dayNode, siteKey, domain, day);
        const QString title = entry.title.trimmed().isEmpty() ? entry.url : entry.title;
        addNode(siteNode, QStringLiteral("Link") + QString::number(++links_), title, entry.url);
    }
    endResetModel();
    if (next_ < pending_.size()) {
        stepper_.start();
        return;
    }
    pending_.clear();
    refreshing_ = false;
    emit filled();
}

int HistoryTree::addNode(int parent, QString key, QString text, QString tag)
{
    const int node = int(nodes_.size());
    std::vector<int>& level = parent < 0 ? top_ : nodes_[size_t(parent)].children;
    if (!key.startsWith(QLatin1String("Link")))
        keyed_.insert(key, node);
    nodes_.push_back(
        {std::move(key), std::move(text), std::move(tag), parent, int(level.size()), {}});
    (parent < 0 ? top_ : nodes_[size_t(parent)].children).push_back(node);
    return node;
}

QModelIndex HistoryTree::find(const QString& key) const
{
    const int node = keyed_.value(key, -1);
    return node < 0 ? QModelIndex() : indexOfNode(node);
}

QModelIndex HistoryTree::today() const
{
    return find(QStringLiteral("Root") +
                QLocale().toString(QDate::currentDate(), QLocale::ShortFormat));
}

QModelIndex HistoryTree::indexOfNode(int node) const
{
    return node < 0 ? QModelIndex() : createIndex(nodes_[size_t(node)].row, 0, quintptr(node));
}

QModelIndex HistoryTree::index(int row, int column, const QModelIndex& parent) const
{
    const std::vector<int>& level =
        parent.isValid() ? nodes_[size_t(parent.internalId())].children : top_;
    if (column != 0 || row < 0 || row >= int(level.size()))
        return {};
    return createIndex(row, 0, quintptr(level[size_t(row)]));
}

QModelIndex HistoryTree::parent(const QModelIndex& child) const
{
    return child.isValid() ? indexOfNode(nodes_[size_t(child.internalId())].parent) : QModelIndex();
}

int HistoryTree::rowCount(const QModelIndex& parent) const
{
    if (parent.column() > 0)
        return 0;
    return int((parent.isValid() ? nodes_[size_t(parent.internalId())].children : top_).size());
}

int HistoryTree::columnCount(const QModelIndex&) const
{
    return 1;
}

QVariant HistoryTree::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    const Node& node = nodes_[size_t(index.internalId())];
    switch (role) {
    case Qt::DisplayRole:
        return node.text;
    case Qt::DecorationRole:
        return QIcon::fromTheme(node.parent < 0 ? QStringLiteral("x-office-calendar")
                                : node.key.startsWith(QLatin1String("Link"))
                                    ? QStringLiteral("text-html")
                                    : QStringLiteral("folder"));
    case KeyRole:
        return node.key;
    case TagRole:
        return node.tag;
    default:
        return {};
    }
}
