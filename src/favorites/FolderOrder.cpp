#include "FolderOrder.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>
#include <QSet>

namespace {

// A folder's order, not a store: a larger file is not one of ours.
constexpr qint64 largest = 4 << 20;

void write(const QString& folder, const QStringList& names)
{
    QSaveFile file(folder + u'/' + FolderOrder::fileName);
    if (file.open(QIODevice::WriteOnly)) {
        file.write((names.join(u'\n') + u'\n').toUtf8());
        file.commit();
    }
}

} // namespace

namespace FolderOrder {

QStringList read(const QString& folder)
{
    QFile file(folder + u'/' + fileName);
    if (!file.open(QIODevice::ReadOnly) || file.size() > largest)
        return {};
    QStringList names = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    for (QString& name : names)
        if (name.endsWith(u'\r'))
            name.chop(1);
    return names;
}

void placeLast(const QString& folder, const QStringList& names)
{
    // As the folder is listed: its own order, then the rest by name.
    const QStringList present = QDir(folder).entryList(
        QDir::Dirs | QDir::Files | QDir::NoDotAndDotDot, QDir::Name | QDir::IgnoreCase);
    const QSet<QString> there(present.cbegin(), present.cend());
    const QSet<QString> last(names.cbegin(), names.cend());
    QStringList order;
    QSet<QString> listed;
    for (const QString& name : read(folder))
        if (there.contains(name) && !last.contains(name) && !listed.contains(name)) {
            order << name;
            listed.insert(name);
        }
    for (const QString& name : present)
        if (!listed.contains(name) && !last.contains(name))
            order << name;
    write(folder, order + names);
}

void rename(const QString& folder, const QString& oldName, const QString& newName)
{
    QStringList listed = read(folder);
    const qsizetype at = listed.indexOf(oldName);
    if (at < 0)
        return;
    listed[at] = newName;
    write(folder, listed);
}

void remove(const QString& folder, const QString& name)
{
    QStringList listed = read(folder);
    if (listed.removeAll(name) > 0)
        write(folder, listed);
}

} // namespace FolderOrder
