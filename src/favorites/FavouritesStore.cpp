#include "FavouritesStore.h"
#include "FolderOrder.h"
#include "InternetShortcut.h"
#include "platform/Dialogs.h"
#include "platform/Shell.h"

#include <QDir>
#include <QFileInfo>

FavouritesStore::FavouritesStore(QString root, platform::Dialogs& dialogs, platform::Shell& shell)
    : root_(std::move(root)), dialogs_(dialogs), shell_(shell)
{
}

void FavouritesStore::refresh()
{
    scan_ = FavouritesScan::read(root_);
    emit rebuilt();
}

void FavouritesStore::refreshIfChanged()
{
    FavouritesScan scan = FavouritesScan::read(root_);
    if (scan == scan_)
        return;
    scan_ = std::move(scan);
    emit rebuilt();
}

QString FavouritesStore::open(int entry)
{
    const QString path = scan_.path(entry);
    if (path.isEmpty() || !QFileInfo::exists(path)) {
        refresh();
        dialogs_.message(QStringLiteral("Possible external changes ocurred, so please try again!"),
                         platform::Dialogs::Buttons::Ok, platform::Dialogs::Icon::None);
        return {};
    }
    const QString extension = QFileInfo(path).suffix().toLower();
    if (extension == QLatin1String("url"))
        return InternetShortcut::address(path);
    if (extension == QLatin1String("lnk") || extension == QLatin1String("desktop"))
        shell_.open(path);
    return {};
}

bool FavouritesStore::rename(int entry, const QString& oldName, const QString& newName)
{
    const QString path = scan_.path(entry);
    if (path.isEmpty() || !QFileInfo::exists(path))
        return false;
    const QFileInfo file(path);
    // Only the file's own name changes, never its extension: a name that is
    // also part of a folder above it must not move the file, a new name
    // cannot leave its folder, and the file stays the kind of file it was.
    QString stem = file.completeBaseName();
    const QString extension = file.fileName().mid(stem.size());
    stem.replace(oldName, newName);
    if (!extension.isEmpty() && stem.endsWith(extension, Qt::CaseInsensitive))
        stem.chop(extension.size());
    const QString name = stem + extension;
    const QString target = file.absolutePath() + u'/' + name;
    const bool fits = !newName.isEmpty() && !stem.isEmpty() && !name.contains(u'/') &&
                      !name.contains(QChar(0)) && name != QLatin1String(".") &&
                      name != QLatin1String("..");
    if (!fits || (target != path && (QFileInfo::exists(target) || !QDir().rename(path, target)))) {
        dialogs_.message(QStringLiteral("Error when rename!"), platform::Dialogs::Buttons::Ok,
                         platform::Dialogs::Icon::None);
        return false;
    }
    FolderOrder::rename(file.absolutePath(), file.fileName(), name);
    scan_.rename(entry, target);
    emit renamed(entry);
    return true;
}

QString FavouritesStore::sanitizeTitle(QString title)
{
    // "?/\<>|" only: the asterisk, the colon and the quote have always stayed.
    for (const QChar c : QStringView(u"?/\\<>|"))
        title.replace(c, u' ');
    return title;
}
