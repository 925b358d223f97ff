#pragma once
// The program's own Organise Favourites dialog: the favourites folder as a
// tree, with a new folder, rename, move and delete of the chosen entry. The
// names and choices are asked through the dialogs service, the changes made
// by the organiser; the tree follows the folder by itself, and an entry
// renamed or moved stays the one chosen, so that what comes next acts on it.
#include "FavouritesOrganiser.h"

#include <QDialog>

class QFileSystemModel;
class QPushButton;
class QTreeView;

namespace platform {
class Dialogs;
} // namespace platform

class OrganiseFavouritesDialog : public QDialog
{
    Q_OBJECT
public:
    OrganiseFavouritesDialog(const QString& root, platform::Dialogs& dialogs, QWidget* parent);

    QTreeView* tree() const { return tree_; }
    // Selects the entry at path (for the keyboard, and for tests).
    void select(const QString& path);

    void newFolder();
    void renameSelected();
    void moveSelected();
    void deleteSelected();

private:
    QString selectedPath() const;
    void report(const QString& problem);
    void updateButtons();

    QString root_;
    platform::Dialogs& dialogs_;
    FavouritesOrganiser organiser_;
    QFileSystemModel* model_;
    QTreeView* tree_;
    QList<QPushButton*> entryButtons_;
};
