#pragma once
// Where a saved page goes: a file name made from its title that any file
// system takes, and a new file that never replaces an earlier save.
#include <QByteArray>
#include <QString>

class QUrl;

namespace quicksaver {

// The title without / \ : * ? " < > | and control characters, blanks
// collapsed, no leading dot, no trailing dots or blanks, at most 100
// characters and 200 bytes of UTF-8 (file names hold 255); the address's host
// when nothing is left, else "Saved page". Without extension.
QString safeFileName(const QString& title, const QUrl& address);

// Writes content to "<name>.html" in folder, else "<name> (2).html",
// "<name> (3).html"..., the first name that is free. The name is taken before
// the content is written, so two savers never share a file. The path, or
// empty with the reason in error.
QString saveUnique(const QString& folder, const QString& name, const QByteArray& content,
                   QString* error);

} // namespace quicksaver
