#pragma once
// The favourites page of the side bar: a refresh button and the tree
// "tvwFav", its pictures from the program's "res" folder. A click on a
// favourite opens it in a new tab and a click on a folder opens or closes it;
// the right button shows a favourite's file's properties; F2 renames a
// favourite and Delete deletes an entry, each after "Are you sure?".
#include <QWidget>

class FavouritesModel;
class FavouritesStore;
class QModelIndex;
class QTreeView;
class Tabs;

namespace platform {
class Dialogs;
class Shell;
} // namespace platform

class FavouritesPanel : public QWidget
{
    Q_OBJECT
public:
    FavouritesPanel(FavouritesStore& store, Tabs& tabs, platform::Dialogs& dialogs,
                    platform::Shell& shell, const QString& pictures, QWidget* parent = nullptr);

    QTreeView* tree() const { return tree_; }
    FavouritesModel* model() const { return model_; }

    void openNode(const QModelIndex& node);
    void rename(int entry, const QString& name);
    void deleteNode(const QModelIndex& node);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool sure(const QString& question);

    FavouritesStore& store_;
    Tabs& tabs_;
    platform::Dialogs& dialogs_;
    platform::Shell& shell_;
    FavouritesModel* model_;
    QTreeView* tree_;
};
