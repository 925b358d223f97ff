#include "FavouritesOrganiser.h"
#include "FolderOrder.h"
#include "platform/ini/ProfileFile.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

namespace {

constexpr QLatin1String outside{"That entry is not in the favourites folder."};
constexpr QLatin1String taken{"An entry named \"%1\" is already there."};

QString clean(const QString& path)
{
    return QDir::cleanPath(QFileInfo(path).absoluteFilePath());
}

} // namespace

FavouritesOrganiser::FavouritesOrganiser(const QString& root) : root_(clean(root)) {}

bool FavouritesOrganiser::inside(const QString& path) const
{
    const QString full = clean(path);
    return full == root_ || full.startsWith(root_ + u'/');
}

QString FavouritesOrganiser::checkedName(const QString& name) const
{
    const QString trimmed = name.trimmed();
    if (trimmed.isEmpty() || trimmed == QStringLiteral(".") || trimmed == QStringLiteral("..") ||
        trimmed.contains(u'/') || trimmed.contains(QChar(0)) ||
        trimmed.toUtf8().size() > maxNameBytes)
        return QStringLiteral("\"%1\" cannot be the name of a favourite or folder.").arg(name);
    return {};
}

QString FavouritesOrganiser::createFolder(const QString& parent, const QString& name) const
{
    if (!inside(parent) || !QFileInfo(parent).isDir())
        return outside;
    if (QString problem = checkedName(name); !problem.isEmpty())
        return problem;
    const QString target = clean(parent) + u'/' + name.trimmed();
    if (QFileInfo::exists(target))
        return taken.arg(name.trimmed());
    if (!QDir().mkdir(target))
        return QStringLiteral("The folder \"%1\" could not be made.").arg(name.trimmed());
    FolderOrder::placeLast(clean(parent), {name.trimmed()});
    return {};
}

QString FavouritesOrganiser::addFavourite(const QString& folder, const QString& name,
                                          const QString& address) const
{
    if (!inside(folder) || !QFileInfo(folder).isDir())
        return outside;
    if (QString problem = checkedName(name); !problem.isEmpty())
        return problem;
    const QString file = name.trimmed() + QStringLiteral(".url");
    const QString target = clean(folder) + u'/' + file;
    if (QFileInfo::exists(target))
        return taken.arg(file);
    if (!platform::ProfileFile(target).writeString(QStringLiteral("InternetShortcut"),
                                                   QStringLiteral("URL"), address))
        return QStringLiteral("The favourite \"%1\" could not be written.").arg(file);
    FolderOrder::placeLast(clean(folder), {file});
    return {};
}

QString FavouritesOrganiser::rename(const QString& path, const QString& name) const
{
    const QFileInfo entry(clean(path));
    if (!inside(path) || entry.absoluteFilePath() == root_ || !entry.exists())
        return outside;
    if (QString problem = checkedName(name); !problem.isEmpty())
        return problem;
    const QString target = renamedPath(entry.absoluteFilePath(), name);
    const QString newName = QFileInfo(target).fileName();
    if (target == entry.absoluteFilePath())
        return {};
    // A change of case alone is a rename on a case-sensitive file system only.
    if (QFileInfo::exists(target) && target.compare(entry.absoluteFilePath(), Qt::CaseInsensitive))
        return taken.arg(newName);
    if (!QDir().rename(entry.absoluteFilePath(), target))
        return QStringLiteral("\"%1\" could not be renamed.").arg(entry.fileName());
    FolderOrder::rename(entry.absolutePath(), entry.fileName(), newName);
    return {};
}

QString FavouritesOrganiser::renamedPath(const QString& path, const QString& name)
{
    const QFileInfo entry(clean(path));
    QString newName = name.trimmed();
    if (entry.isFile() && !entry.suffix().isEmpty() &&
        !newName.endsWith(u'.' + entry.suffix(), Qt::CaseInsensitive))
        newName += u'.' + entry.suffix();
    return entry.absolutePath() + u'/' + newName;
}

QString FavouritesOrganiser::move(const QString& path, const QString& folder) const
{
    const QString from = clean(path);
    const QString to = clean(folder);
    if (!inside(from) || !inside(to) || from == root_ || !QFileInfo::exists(from) ||
        !QFileInfo(to).isDir())
        return outside;
    if (to == from || to.startsWith(from + u'/'))
        return QStringLiteral("A folder cannot be moved into itself.");
    const QString target = to + u'/' + QFileInfo(from).fileName();
    if (target == from)
        return {};
    if (QFileInfo::exists(target))
        return taken.arg(QFileInfo(from).fileName());
    if (!QDir().rename(from, target))
        return QStringLiteral("\"%1\" could not be moved.").arg(QFileInfo(from).fileName());
    FolderOrder::remove(QFileInfo(from).absolutePath(), QFileInfo(from).fileName());
    FolderOrder::placeLast(to, {QFileInfo(from).fileName()});
    return {};
}

QString FavouritesOrganiser::remove(const QString& path) const
{
    const QFileInfo entry(clean(path));
    if (!inside(path) || entry.absoluteFilePath() == root_ || !entry.exists())
        return outside;
    const bool removed = QFile::moveToTrash(entry.absoluteFilePath()) ||
                         (entry.isDir() ? QDir(entry.absoluteFilePath()).removeRecursively()
                                        : QFile::remove(entry.absoluteFilePath()));
    if (!removed)
        return QStringLiteral("\"%1\" could not be deleted.").arg(entry.fileName());
    FolderOrder::remove(entry.absolutePath(), entry.fileName());
    return {};
}

QStringList FavouritesOrganiser::folders() const
{
    QStringList found;
    QDirIterator walk(root_, QDir::Dirs | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (walk.hasNext())
        found << walk.next();
    found.sort(Qt::CaseInsensitive);
    found.prepend(root_);
    return found;
}

QString FavouritesOrganiser::displayName(const QString& path)
{
    const QFileInfo entry(path);
    return entry.isDir() ? entry.fileName() : entry.completeBaseName();
}

QString FavouritesOrganiser::fittingName(const QString& name)
{
    QString fitting = name.trimmed();
    while (fitting.toUtf8().size() > maxNameBytes ||
           (!fitting.isEmpty() && fitting.back().isHighSurrogate()))
        fitting.chop(1);
    return fitting.trimmed();
}

QString FavouritesOrganiser::deleteQuestion(const QString& path)
{
    const QFileInfo entry(path);
    const QString what = entry.isDir()
                             ? QStringLiteral("Delete the folder \"%1\" and everything in it?")
                             : QStringLiteral("Delete \"%1\"?");
    return what.arg(displayName(path)) + QStringLiteral("\nAre you sure?");
}
