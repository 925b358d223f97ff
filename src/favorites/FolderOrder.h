#pragma once
// The order of a favourites folder's entries, kept in its hidden ".order"
// file (one name per line, UTF-8): the entries it names come first, in its
// order, and every other entry after them by name. So an imported folder
// keeps the order it had in the browser it came from, and a new favourite
// comes last, as in every browser.
#include <QString>
#include <QStringList>

namespace FolderOrder {

inline const QString fileName = QStringLiteral(".order");

QStringList read(const QString& folder);
// Adds names not yet listed at the end; false when the file could not be written.
bool append(const QString& folder, const QStringList& names);
// Puts newName where oldName was listed.
bool rename(const QString& folder, const QString& oldName, const QString& newName);

} // namespace FolderOrder
