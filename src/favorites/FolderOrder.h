#pragma once
// The order of a favourites folder's entries, kept in its hidden ".order"
// file (one name per line, UTF-8): the entries it names come first, in its
// order, and every other entry after them by name. So an imported folder
// keeps the order it had in the browser it came from, and what is added to
// a folder comes last, as in every browser. The order is a convenience: a
// folder whose file cannot be written is listed by name.
#include <QString>
#include <QStringList>

namespace FolderOrder {

inline const QString fileName = QStringLiteral(".order");

QStringList read(const QString& folder);
// Puts the entries named last, in the order given, and every other entry of
// the folder where it is shown now.
void placeLast(const QString& folder, const QStringList& names);
// Puts newName where oldName was listed.
void rename(const QString& folder, const QString& oldName, const QString& newName);
// Takes name off the folder's list.
void remove(const QString& folder, const QString& name);

} // namespace FolderOrder
