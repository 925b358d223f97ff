#include "SiteList.h"

#include <QFile>
#include <QSaveFile>

namespace {

QString hostOf(const QString& address)
{
    return QUrl(address.trimmed(), QUrl::TolerantMode).host().toLower();
}

// A listed host holds its subdomains.
bool covers(const QString& listed, const QString& host)
{
    return host == listed || host.endsWith(u'.' + listed);
}

} // namespace

void SiteList::load() const
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

bool SiteList::add(const QString& address)
{
    load();
    const QString host = hostOf(address);
    if (host.isEmpty())
        return false;
    if (hosts_.contains(host))
        return true;
    if (!write(QStringList(addresses_) << address.trimmed()))
        return false;
    addresses_ << address.trimmed();
    hosts_.insert(host);
    return true;
}

bool SiteList::write(const QStringList& addresses)
{
    QSaveFile file(fileName());
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text))
        return false;
    file.write(addresses.join(u'\n').toUtf8().append('\n'));
    return file.commit();
}

bool SiteList::remove(const QUrl& url)
{
    load();
    QStringList kept;
    for (const QString& address : std::as_const(addresses_))
        if (!covers(hostOf(address), url.host().toLower()))
            kept << address;
    if (kept.size() == addresses_.size())
        return true;
    if (!write(kept))
        return false;
    addresses_ = kept;
    hosts_.clear();
    for (const QString& address : std::as_const(addresses_))
        hosts_.insert(hostOf(address));
    return true;
}

bool SiteList::lists(const QUrl& url) const
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
