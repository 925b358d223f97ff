#include "FavouritesPanel.h"
#include "FavouritesModel.h"
#include "FavouritesOrganiser.h"
#include "FavouritesStore.h"
#include "platform/Dialogs.h"
#include "platform/Shell.h"
#include "platform/browser/BrowserView.h"
#include "tabs/Tabs.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QToolButton>
#include <QToolTip>
#include <QTreeView>
#include <QVBoxLayout>

FavouritesPanel::FavouritesPanel(FavouritesStore& store, Tabs& tabs, platform::Dialogs& dialogs,
                                 platform::Shell& shell, const QString& pictures, QWidget* parent)
    : QWidget(parent), store_(store), tabs_(tabs), dialogs_(dialogs), shell_(shell),
      model_(new FavouritesModel(store, this)), tree_(new QTreeView(this))
{
    auto* refresh = new QToolButton(this);
    refresh->setObjectName(QStringLiteral("cmdRefresh"));
    refresh->setIcon(QIcon::fromTheme(QStringLiteral("view-refresh")));
    refresh->setToolTip(QStringLiteral("Refresh"));
    connect(refresh, &QToolButton::clicked, &store_, &FavouritesStore::refresh);

    model_->loadPictures(pictures);
    tree_->setObjectName(QStringLiteral("tvwFav"));
    tree_->setModel(model_);
    // A single click opens and closes a folder; a double click would undo it.
    tree_->setExpandsOnDoubleClick(false);
    tree_->setHeaderHidden(true);
    tree_->setUniformRowHeights(true);
    tree_->setEditTriggers(QAbstractItemView::EditKeyPressed);
    tree_->viewport()->installEventFilter(this);
    tree_->installEventFilter(this);
    connect(tree_, &QTreeView::clicked, this, &FavouritesPanel::openNode);
    connect(model_, &FavouritesModel::renameRequested, this, &FavouritesPanel::rename);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(refresh, 0, Qt::AlignLeft);
    layout->addWidget(tree_, 1);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
}

void FavouritesPanel::openNode(const QModelIndex& node)
{
    if (model_->hasChildren(node)) {
        tree_->setExpanded(node, !tree_->isExpanded(node));
        return;
    }
    const int entry = node.data(FavouritesModel::EntryRole).toInt();
    if (entry <= 0)
        return;
    const QString address = store_.open(entry);
    if (!address.isEmpty())
        tabs_.newTab(address, true);
}

bool FavouritesPanel::sure(const QString& question)
{
    return dialogs_.message(question, platform::Dialogs::Buttons::YesNo,
                            platform::Dialogs::Icon::Question) == platform::Dialogs::Answer::Yes;
}

void FavouritesPanel::rename(int entry, const QString& name)
{
    const QModelIndex node = model_->indexOfEntry(entry);
    if (sure(QStringLiteral("Are you sure?")))
        store_.rename(entry, node.data(Qt::EditRole).toString(), name);
}

void FavouritesPanel::deleteNode(const QModelIndex& node)
{
    const QString path = node.data(FavouritesModel::PathRole).toString();
    if (path.isEmpty() || !sure(FavouritesOrganiser::deleteQuestion(path)))
        return;
    const QString problem = FavouritesOrganiser(store_.root()).remove(path);
    if (!problem.isEmpty())
        dialogs_.message(problem, platform::Dialogs::Buttons::Ok, platform::Dialogs::Icon::Warning);
    store_.refresh();
}

bool FavouritesPanel::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == tree_ && event->type() == QEvent::KeyPress &&
        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Delete) {
        deleteNode(tree_->currentIndex());
        return true;
    }
    if (watched != tree_->viewport())
        return false;
    if (event->type() == QEvent::MouseButtonPress &&
        static_cast<QMouseEvent*>(event)->button() == Qt::RightButton) {
        const QModelIndex node =
            tree_->indexAt(static_cast<QMouseEvent*>(event)->position().toPoint());
        if (node.data(FavouritesModel::EntryRole).toInt() > 0)
            platform::showFileProperties(node.data(FavouritesModel::PathRole).toString(), shell_,
                                         dialogs_);
        return true;
    }
    if (event->type() == QEvent::ToolTip) {
        auto* help = static_cast<QHelpEvent*>(event);
        const QModelIndex node = tree_->indexAt(help->pos());
        if (!node.isValid())
            return true;
        QToolTip::showText(help->globalPos(), node.data(Qt::ToolTipRole).toString(),
                           tree_->viewport());
        return true;
    }
    return false;
}
