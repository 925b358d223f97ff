#include "OrganiseFavouritesDialog.h"
#include "platform/Dialogs.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace {

// Favourites are shown by their names, without ".url".
class FavouritesFileModel : public QFileSystemModel
{
public:
    using QFileSystemModel::QFileSystemModel;
    QVariant data(const QModelIndex& index, int role) const override
    {
        if (role == Qt::DisplayRole && index.column() == 0)
            return FavouritesOrganiser::displayName(filePath(index));
        return QFileSystemModel::data(index, role);
    }
};

} // namespace

OrganiseFavouritesDialog::OrganiseFavouritesDialog(const QString& root, platform::Dialogs& dialogs,
                                                   QWidget* parent)
    : QDialog(parent), root_(QDir::cleanPath(root)), dialogs_(dialogs), organiser_(root),
      model_(new FavouritesFileModel(this)), tree_(new QTreeView(this))
{
    setWindowTitle(QStringLiteral("Organise Favourites"));
    model_->setFilter(QDir::AllDirs | QDir::Files | QDir::NoDotAndDotDot);
    model_->setNameFilters(
        {QStringLiteral("*.url"), QStringLiteral("*.lnk"), QStringLiteral("*.desktop")});
    model_->setNameFilterDisables(false);
    tree_->setModel(model_);
    tree_->setRootIndex(model_->setRootPath(root_));
    for (int column = 1; column < model_->columnCount(); ++column)
        tree_->hideColumn(column);
    tree_->header()->hide();
    tree_->setSortingEnabled(true);
    tree_->sortByColumn(0, Qt::AscendingOrder);

    auto* buttons = new QVBoxLayout;
    auto add = [&](const QString& caption, void (OrganiseFavouritesDialog::*action)()) {
        auto* button = new QPushButton(caption, this);
        button->setAutoDefault(false);
        connect(button, &QPushButton::clicked, this, action);
        buttons->addWidget(button);
        return button;
    };
    add(QStringLiteral("New Folder..."), &OrganiseFavouritesDialog::newFolder);
    entryButtons_ = {
        add(QStringLiteral("Rename..."), &OrganiseFavouritesDialog::renameSelected),
        add(QStringLiteral("Move to Folder..."), &OrganiseFavouritesDialog::moveSelected),
        add(QStringLiteral("Delete"), &OrganiseFavouritesDialog::deleteSelected)};
    buttons->addStretch();
    auto* close = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(close, &QDialogButtonBox::rejected, this, &QDialog::reject);
    buttons->addWidget(close);

    auto* layout = new QHBoxLayout(this);
    layout->addWidget(tree_, 1);
    layout->addLayout(buttons);
    connect(tree_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &OrganiseFavouritesDialog::updateButtons);
    updateButtons();
    resize(520, 400);
}

void OrganiseFavouritesDialog::select(const QString& path)
{
    tree_->setCurrentIndex(model_->index(path));
}

QString OrganiseFavouritesDialog::selectedPath() const
{
    const QModelIndexList chosen = tree_->selectionModel()->selectedRows();
    return chosen.isEmpty() ? QString() : model_->filePath(chosen.first());
}

void OrganiseFavouritesDialog::updateButtons()
{
    const bool chosen = !selectedPath().isEmpty();
    for (QPushButton* button : entryButtons_)
        button->setEnabled(chosen);
}

void OrganiseFavouritesDialog::report(const QString& problem)
{
    if (!problem.isEmpty())
        dialogs_.message(problem, platform::Dialogs::Buttons::Ok, platform::Dialogs::Icon::Warning);
}

void OrganiseFavouritesDialog::newFolder()
{
    QString parent = selectedPath();
    if (parent.isEmpty())
        parent = root_;
    else if (!QFileInfo(parent).isDir())
        parent = QFileInfo(parent).absolutePath();
    const QString name =
        dialogs_.inputText(QStringLiteral("Name of the new folder:"), QStringLiteral("New Folder"));
    if (!name.isEmpty())
        report(organiser_.createFolder(parent, name));
}

void OrganiseFavouritesDialog::renameSelected()
{
    const QString path = selectedPath();
    if (path.isEmpty())
        return;
    const QString name =
        dialogs_.inputText(QStringLiteral("New name:"), FavouritesOrganiser::displayName(path));
    if (name.isEmpty())
        return;
    // Where it goes is known only while the entry is still there.
    const QString target = FavouritesOrganiser::renamedPath(path, name);
    const QString problem = organiser_.rename(path, name);
    report(problem);
    if (problem.isEmpty())
        select(target);
}

void OrganiseFavouritesDialog::moveSelected()
{
    const QString path = selectedPath();
    if (path.isEmpty())
        return;
    const QStringList folders = organiser_.folders();
    QStringList names;
    for (const QString& folder : folders)
        names << (folder == folders.first() ? QStringLiteral("Favorites")
                                            : QDir(folders.first()).relativeFilePath(folder));
    const int chosen = dialogs_.chooseItem(
        QStringLiteral("Move \"%1\" to:").arg(FavouritesOrganiser::displayName(path)), names);
    if (chosen < 0 || chosen >= folders.size())
        return;
    const QString problem = organiser_.move(path, folders[chosen]);
    report(problem);
    if (problem.isEmpty())
        select(folders[chosen] + u'/' + QFileInfo(path).fileName());
}

void OrganiseFavouritesDialog::deleteSelected()
{
    const QString path = selectedPath();
    if (path.isEmpty())
        return;
    if (dialogs_.message(FavouritesOrganiser::deleteQuestion(path),
                         platform::Dialogs::Buttons::YesNo,
                         platform::Dialogs::Icon::Question) == platform::Dialogs::Answer::Yes)
        report(organiser_.remove(path));
}
