#pragma once
// The changes a user makes to the favourites tree by hand: a new folder, a
// new name, a move to another folder, a delete. Every path must lie inside
// the root; a change that would leave it, overwrite an entry or put a folder
// inside itself is refused with a message and changes nothing. Each folder's
// order follows: what is new or moved in comes last, a renamed entry keeps
// its place.
#include <QString>
#include <QStringList>

class FavouritesOrganiser
{
public:
    // The longest name, in UTF-8 bytes, that leaves room for an extension in
    // the 255 bytes of a file name.
    static constexpr int maxNameBytes = 250;

    explicit FavouritesOrganiser(const QString& root);

    // Each returns an empty text when done, else the message to show.
    QString createFolder(const QString& parent, const QString& name) const;
    // A new internet shortcut "name.url" in folder, written whole or not at all.
    QString addFavourite(const QString& folder, const QString& name, const QString& address) const;
    // A favourite keeps its extension, whatever the new name ends with.
    QString rename(const QString& path, const QString& name) const;
    // Where rename(path, name) puts the entry at path, while it is there.
    static QString renamedPath(const QString& path, const QString& name);
    QString move(const QString& path, const QString& folder) const;
    // To the desktop's trash where there is one, so a slip can be undone.
    QString remove(const QString& path) const;

    // Every folder of the tree, the root first, then depth first by name.
    QStringList folders() const;
    // The name to show for an entry: a favourite without its extension.
    static QString displayName(const QString& path);
    // name trimmed and cut to maxNameBytes, never inside a character.
    static QString fittingName(const QString& name);
    // What to ask before the entry at path is deleted.
    static QString deleteQuestion(const QString& path);

private:
    bool inside(const QString& path) const;
    QString checkedName(const QString& name) const;

    QString root_;
};
