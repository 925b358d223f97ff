#pragma once
// Whole-file reads and writes for tests, a file's mode, and a favourites
// folder of a test's own.
#include "platform/ini/ProfileFile.h"

#include <QByteArray>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QString>
#include <QTemporaryDir>

inline QByteArray readFile(const QString& path)
{
    // Empty while the file is not there yet, without the warning a read of
    // an unopened file gives: tests poll for files still being written.
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

inline void writeFile(const QString& path, const QByteArray& content)
{
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write(content);
}

// Every file under folder with its content; a socket or device as "(other)".
inline QMap<QString, QByteArray> filesUnder(const QString& folder)
{
    QMap<QString, QByteArray> files;
    QDirIterator it(folder, QDir::Files | QDir::Hidden | QDir::System,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        files[path] = QFileInfo(path).isFile() ? readFile(path) : QByteArray("(other)");
    }
    return files;
}

// True when the file or folder is there and no one but its owner may use it.
inline bool ownerOnly(const QString& path)
{
    constexpr QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup |
                                          QFile::ReadOther | QFile::WriteOther | QFile::ExeOther;
    return QFile::exists(path) && !(QFile::permissions(path) & others);
}

// While it lives, the user's data folder (where the program finds its
// favourites) is a temporary one, with the favourites folder made in it.
struct TemporaryFavourites
{
    QTemporaryDir data;
    QString root = data.path() + QStringLiteral("/QUB-BROWSER/Favorites/");
    QByteArray saved = qgetenv("XDG_DATA_HOME");

    TemporaryFavourites()
    {
        qputenv("XDG_DATA_HOME", data.path().toUtf8());
        QDir().mkpath(root);
        // The engine's profile may still be writing its own files here as
        // the folder goes: they are removed as far as they can be, quietly.
        data.setAutoRemove(false);
    }
    ~TemporaryFavourites()
    {
        qputenv("XDG_DATA_HOME", saved);
        QDir(data.path()).removeRecursively();
    }
    // An internet shortcut at a path below the root, its folders made.
    bool add(const QString& path, const QString& address) const
    {
        QDir().mkpath(QFileInfo(root + path).path());
        return platform::ProfileFile(root + path)
            .writeString(QStringLiteral("InternetShortcut"), QStringLiteral("URL"), address);
    }
};
