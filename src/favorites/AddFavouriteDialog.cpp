#include "AddFavouriteDialog.h"
#include "FavouritesStore.h"
#include "platform/Dialogs.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>

AddFavouriteDialog::AddFavouriteDialog(const QString& root, const QString& address,
                                       const QString& title, platform::Dialogs& dialogs,
                                       QWidget* parent)
    : QDialog(parent), root_(QDir::cleanPath(root)), address_(address), dialogs_(dialogs),
      organiser_(root), name_(new QLineEdit(this)), folders_(new QTreeWidget(this))
{
    setWindowTitle(QStringLiteral("Add Favorite"));
    name_->setText(FavouritesOrganiser::fittingName(
        FavouritesStore::sanitizeTitle(title.isEmpty() ? address : title)));
    name_->selectAll();
    folders_->setHeaderHidden(true);
    auto* newFolder = new QPushButton(QStringLiteral("New &Folder..."), this);
    connect(newFolder, &QPushButton::clicked, this, &AddFavouriteDialog::newFolder);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    buttons->addButton(newFolder, QDialogButtonBox::ActionRole);
    connect(buttons, &QDialogButtonBox::accepted, this, &AddFavouriteDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &AddFavouriteDialog::reject);
    auto* form = new QFormLayout(this);
    form->addRow(QStringLiteral("&Name:"), name_);
    form->addRow(QStringLiteral("Create &in:"), folders_);
    form->addRow(buttons);
    fillFolders(root_);
    resize(420, 360);
}

void AddFavouriteDialog::fillFolders(const QString& select)
{
    folders_->clear();
    QHash<QString, QTreeWidgetItem*> made;
    for (const QString& path : organiser_.folders()) {
        const QString folder = QDir::cleanPath(path);
        QTreeWidgetItem* parent = made.value(folder.left(folder.lastIndexOf(u'/')));
        auto* item = parent ? new QTreeWidgetItem(parent) : new QTreeWidgetItem(folders_);
        item->setText(0, folder == root_ ? QStringLiteral("Favorites") : folder.section(u'/', -1));
        item->setIcon(0, QIcon::fromTheme(QStringLiteral("folder")));
        item->setData(0, Qt::UserRole, folder);
        made.insert(folder, item);
    }
    if (QTreeWidgetItem* root = made.value(root_))
        root->setExpanded(true);
    if (QTreeWidgetItem* chosen = made.value(QDir::cleanPath(select)))
        folders_->setCurrentItem(chosen);
}

QString AddFavouriteDialog::folder() const
{
    const QTreeWidgetItem* item = folders_->currentItem();
    return item ? item->data(0, Qt::UserRole).toString() : root_;
}

void AddFavouriteDialog::newFolder()
{
    const QString name = dialogs_.inputText(QStringLiteral("Name of the new folder:"), {});
    if (name.isEmpty())
        return;
    const QString problem = organiser_.createFolder(folder(), name);
    if (!problem.isEmpty()) {
        dialogs_.message(problem, platform::Dialogs::Buttons::Ok, platform::Dialogs::Icon::Warning);
        return;
    }
    fillFolders(folder() + u'/' + name.trimmed());
}

void AddFavouriteDialog::accept()
{
    const QString problem = organiser_.addFavourite(folder(), name_->text(), address_);
    if (!problem.isEmpty()) {
        dialogs_.message(problem, platform::Dialogs::Buttons::Ok, platform::Dialogs::Icon::Warning);
        return;
    }
    QDialog::accept();
}
