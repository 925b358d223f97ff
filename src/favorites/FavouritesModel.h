#pragma once
// The favourites tree "tvwFav" as an item model over the store's scan: a
// folder node (key "favband" + folder number) holds its folders, then its
// favourites (key "K" + table entry). Reset at every new reading. A
// favourite's label is edited without its extension, and a new name typed
// there is handed on as renameRequested and never set by the model: the
// label changes only once the file has. The tooltip of a favourite reads its
// address from the file, never opening it.
#include <QAbstractItemModel>
#include <QIcon>

class FavouritesStore;

class FavouritesModel : public QAbstractItemModel
{
    Q_OBJECT
public:
    enum Role { KeyRole = Qt::UserRole, EntryRole, PathRole };

    explicit FavouritesModel(FavouritesStore& store, QObject* parent = nullptr);

    QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    // The node of table entry n.
    QModelIndex indexOfEntry(int entry) const;
    // The pictures of folders and favourites: "res1.ico" and "res2.ico" in
    // folder where they can be read, else the icon theme's.
    void loadPictures(const QString& folder);

signals:
    void renameRequested(int entry, const QString& name);

private:
    QModelIndex indexOfItem(int item) const;

    FavouritesStore& store_;
    QIcon folderPicture_;
    QIcon favouritePicture_;
};
