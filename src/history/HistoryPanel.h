#pragma once
// The history page of the side bar: the tree "tvwHistory". A click on an
// address opens it in a new tab; the pointer over a node shows
// "Refreshing..." while the tree fills, an address's own address, and
// "Click to open!" over a day or a site. Once filled, today's sites show.
#include <QWidget>

class HistoryTree;
class QTreeView;
class Tabs;

class HistoryPanel : public QWidget
{
    Q_OBJECT
public:
    HistoryPanel(HistoryTree& tree, Tabs& tabs, QWidget* parent = nullptr);

    QTreeView* view() const { return view_; }
    void openNode(const QModelIndex& node);
    // The tooltip for a point of the tree's viewport; empty to leave it.
    QString tooltipAt(const QPoint& point) const;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    HistoryTree& tree_;
    Tabs& tabs_;
    QTreeView* view_;
};
