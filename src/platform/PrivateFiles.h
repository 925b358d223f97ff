#pragma once
// What the user did (addresses, page text, passwords) is kept in files only
// the user can read. A write into the program's folder, which someone else
// may also be able to write, never follows a link planted there in place of
// the file.
#include <QIODevice>
#include <QString>

class QFileDevice;

namespace platform {

// Makes the folder and its missing parents; the folder itself owner-only.
bool makePrivateFolder(const QString& path);
// Makes an existing file owner-only.
bool makePrivate(const QString& path);
// Opens file for writing, owner-only; false when it cannot be opened or its
// name is a symbolic link.
bool openPrivate(QFileDevice& file, QIODevice::OpenMode mode);

} // namespace platform
