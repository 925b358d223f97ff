#pragma once
// The program's own Add Favourite dialog: the name (the page's title, with
// the characters a file name cannot hold made blanks, cut to the length a
// file name can hold), the folder to put it in, and a new folder there. OK
// writes the shortcut, last in its folder; a problem is said and the dialog
// stays open to put it right.
#include "FavouritesOrganiser.h"

#include <QDialog>

class QLineEdit;
class QTreeWidget;

namespace platform {
class Dialogs;
} // namespace platform

class AddFavouriteDialog : public QDialog
{
    Q_OBJECT
public:
    AddFavouriteDialog(const QString& root, const QString& address, const QString& title,
                       platform::Dialogs& dialogs, QWidget* parent);

    QLineEdit* nameEdit() const { return name_; }
    QTreeWidget* folders() const { return folders_; }
    // The folder chosen; the root when none is.
    QString folder() const;

    void newFolder();
    void accept() override;

private:
    void fillFolders(const QString& select);

    QString root_;
    QString address_;
    platform::Dialogs& dialogs_;
    FavouritesOrganiser organiser_;
    QLineEdit* name_;
    QTreeWidget* folders_;
};
