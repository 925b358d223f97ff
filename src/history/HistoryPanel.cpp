#include "HistoryPanel.h"
#include "HistoryTree.h"
#include "platform/browser/BrowserView.h"
#include "tabs/Tabs.h"

#include <QHelpEvent>
#include <QToolTip>
#include <QTreeView>
#include <QVBoxLayout>

HistoryPanel::HistoryPanel(HistoryTree& tree, Tabs& tabs, QWidget* parent)
    : QWidget(parent), tree_(tree), tabs_(tabs), view_(new QTreeView(this))
{
    view_->setObjectName(QStringLiteral("tvwHistory"));
    view_->setModel(&tree_);
    view_->setHeaderHidden(true);
    view_->setUniformRowHeights(true);
    view_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    view_->viewport()->installEventFilter(this);
    connect(view_, &QTreeView::clicked, this, &HistoryPanel::openNode);
    connect(&tree_, &HistoryTree::filled, view_, [this] { view_->expand(tree_.today()); });
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(view_);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
}

void HistoryPanel::openNode(const QModelIndex& node)
{
    if (node.data(HistoryTree::KeyRole).toString().startsWith(QLatin1String("Link")))
        tabs_.newTab(node.data(HistoryTree::TagRole).toString(), true);
}

QString HistoryPanel::tooltipAt(const QPoint& point) const
{
    if (tree_.refreshing())
        return QStringLiteral("Refreshing...");
    const QModelIndex node = view_->indexAt(point);
    if (!node.isValid())
        return {};
    return node.data(HistoryTree::KeyRole).toString().startsWith(QLatin1String("Link"))
               ? node.data(HistoryTree::TagRole).toString()
               : QStringLiteral("Click to open!");
}

bool HistoryPanel::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != view_->viewport() || event->type() != QEvent::ToolTip)
        return false;
    auto* help = static_cast<QHelpEvent*>(event);
    if (const QString tip = tooltipAt(help->pos()); !tip.isEmpty())
        QToolTip::showText(help->globalPos(), tip, view_->viewport());
    return true;
}
