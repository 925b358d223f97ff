#include "FolderOrder.h"

#include <QFile>
#include <QSaveFile>
#include <QSet>

namespace {

// A folder's order, not a store: a larger file is not one of ours.
constexpr qint64 largest = 4 << 20;

bool write(const QString& folder, const QStringList& names)
{
    QSaveFile file(folder + '/' + FolderOrder::fileName);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write((names.join('\n') + '\n').toUtf8());
    return file.commit();
}

} // namespace

namespace FolderOrder {

QStringList read(const QString& folder)
{
    QFile file(folder + '/' + fileName);
    if (!file.open(QIODevice::ReadOnly) || file.size() > largest)
        return {};
    QStringList names = QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts);
    for (QString& name : names)
        if (name.endsWith('\r'))
            name.chop(1);
    return names;
}

bool append(const QString& folder, const QStringList& names)
{
    QStringList listed = read(folder);
    const QSet<QString> known(listed.cbegin(), listed.cend());
    const qsizetype before = listed.size();
    for (const QString& name : names)
        if (!known.contains(name) && !listed.mid(before).contains(name))
            listed << name;
    return listed.size() == before || write(folder, listed);
}

bool rename(const QString& folder, const QString& oldName, const QString& newName)
{
    QStringList listed = read(folder);
    const qsizetype at = listed.indexOf(oldName);
    if (at < 0)
        return true;
    listed[at] = newName;
    return write(folder, listed);
}

} // namespace FolderOrder
