#include "FilterListChoice.h"
#include "platform/FilterListPlaces.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>

QStringList FilterListChoice::all() const
{
    QStringList lists;
    const QDir own(ownFolder());
    for (const QString& name : own.entryList({QStringLiteral("*.txt")}, QDir::Files, QDir::Name))
        lists << own.filePath(name);
    return lists + platform::systemFilterLists();
}

void FilterListChoice::load() const
{
    if (loaded_)
        return;
    loaded_ = true;
    QFile file(offFile());
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return;
    for (const QByteArray& line : file.readAll().split('\n'))
        if (const QString path = QString::fromUtf8(line).trimmed(); !path.isEmpty())
            off_ << path;
}

QList<bool> FilterListChoice::onOf(const QStringList& lists) const
{
    load();
    QList<bool> on;
    for (const QString& list : lists)
        on << !off_.contains(list);
    return on;
}

QStringList FilterListChoice::on() const
{
    QStringList lists = all();
    const QList<bool> chosen = onOf(lists);
    for (qsizetype i = lists.size() - 1; i >= 0; --i)
        if (!chosen[i])
            lists.removeAt(i);
    return lists;
}

// A list switched off stays off while it is away, so it comes back off.
bool FilterListChoice::choose(const QStringList& lists, const QList<bool>& on)
{
    load();
    QStringList off = off_;
    for (qsizetype i = 0; i < lists.size() && i < on.size(); ++i) {
        off.removeAll(lists[i]);
        if (!on[i])
            off << lists[i];
    }
    QSaveFile file(offFile());
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text))
        return false;
    file.write(off.join(u'\n').toUtf8().append('\n'));
    if (!file.commit())
        return false;
    off_ = off;
    return true;
}
