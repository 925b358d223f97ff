#include "KillList.h"

#include <QFile>
#include <QSaveFile>

namespace {

QString hostOf(const QString& address)
{
    return QUrl(address.trimmed(), QUrl::TolerantMode).host().toLower();
}

} // namespace

void KillList::load() const
{
    if (loaded_)
        return;
    loaded_ = true;
    QFile file(fileName());
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text))
        return;
    for (const QByteArray& line : file.readAll().split('\n')) {
        const QString address = QString::fromUtf8(line).trimmed();
        if (const QString host = hostOf(address); !host.isEmpty()) {
            addresses_ << address;
            hosts_.insert(host);
        }
    }
}

bool KillList::add(const QString& address)
{
    load();
    const QString host = hostOf(address);
    if (host.isEmpty())
        return false;
    if (hosts_.contains(host))
        return true;
    QSaveFile file(fileName());
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text))
        return false;
    file.write((QStringList(addresses_) << address.trimmed()).join(u'\n').toUtf8().append('\n'));
    if (!file.commit())
        return false;
    addresses_ << address.trimmed();
    hosts_.insert(host);
    return true;
}

bool KillList::lists(const QUrl& url) const
{
    load();
    QString host = url.host().toLower();
    while (!host.isEmpty()) {
        if (hosts_.contains(host))
            return true;
        const qsizetype dot = host.indexOf(u'.');
        host = dot < 0 ? QString() : host.mid(dot + 1);
    }
    return false;
}
