#pragma once
// The favourites page of the side bar: a refresh button and the tree
// "tvwFav". A click on a favourite opens it in a new tab, the right button
// shows its file's properties, F2 renames it and Delete deletes it, each
// after "Are you sure?"; a folder opens and closes.
#include <QWidget>

class FavouritesModel;
class FavouritesStore;
class QModelIndex;
class QTreeView;
class TabStrip;

namespace platform {
class Dialogs;
class Shell;
} // namespace platform

class FavouritesPanel : public QWidget
{
    Q_OBJECT
public:
    FavouritesPanel(FavouritesStore& store, TabStrip& tabs, platform::Dialogs& dialogs,
                    platform::Shell& shell, QWidget* parent = nullptr);

    QTreeView* tree() const { return tree_; }
    FavouritesModel* model() const { return model_; }

    void openNode(const QModelIndex& node);
    void rename(int entry, const QString& name);
    void deleteNode(const QModelIndex& node);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool sure();

    FavouritesStore& store_;
    TabStrip& tabs_;
    platform::Dialogs& dialogs_;
    platform::Shell& shell_;
    FavouritesModel* model_;
    QTreeView* tree_;
};
