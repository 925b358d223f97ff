#pragma once
// The history tree "tvwHistory" as an item model: a node per day ("Root" +
// the day's short date; "Today" for today), per site within a day ("Domain"
// + day + site) and per address ("Link" + a running number; the page's title,
// or the address when the title is blank; the address as its tag). It is
// filled in steps, with other events let run between them, so a history of
// any size never holds up the window; refreshing() is true meanwhile. Day and
// site nodes are found by their keys through an index, never by a search.
#include <QAbstractItemModel>
#include <QDate>
#include <QHash>
#include <QTimer>
#include <vector>

class CURLHistory;

class HistoryTree : public QAbstractItemModel
{
    Q_OBJECT
public:
    enum Role { KeyRole = Qt::UserRole, TagRole };
    static constexpr int step = 10000;

    explicit HistoryTree(QObject* parent = nullptr);

    // Reads the snapshot's "http" addresses (in address order) and fills the
    // tree with them anew.
    void refresh(CURLHistory& history);
    bool refreshing() const { return refreshing_; }
    // The node with that key, if there is a day or site node of it.
    QModelIndex find(const QString& key) const;
    QModelIndex today() const;

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;

signals:
    // The last step is in: the tree holds the whole history.
    void filled();

private:
    struct Entry
    {
        QDate day;
        QString url;
        QString title;
    };
    struct Node
    {
        QString key;
        QString text;
        QString tag;
        int parent;
        int row;
        std::vector<int> children;
    };

    void fillStep();
    int addNode(int parent, QString key, QString text, QString tag);
    QModelIndex indexOfNode(int node) const;

    std::vector<Node> nodes_;
    std::vector<int> top_;
    QHash<QString, int> keyed_;
    QHash<QDate, QString> days_;
    std::vector<Entry> pending_;
    size_t next_ = 0;
    quint16 links_ = 0;
    bool refreshing_ = false;
    QTimer stepper_;
};
