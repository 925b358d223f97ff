#include "ConnectionHelper.h"
#include "Dialogs.h"
#include "NarrowText.h"
#include "proxy/ForwardingProxy.h"
#include "proxy/ProxyEntry.h"

#include <QFile>
#include <QRegularExpression>
#include <QSaveFile>

namespace platform {

QStringList readListFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QStringList lines;
    for (const QString& line : decodeText(file.readAll()).split(QLatin1Char('\n'))) {
        const QString text = line.trimmed();
        if (!text.isEmpty() && !text.startsWith(QLatin1Char('#')))
            lines << text;
    }
    return lines;
}

ConnectionHelper::ConnectionHelper(QString appDir, proxy::ForwardingProxy& forwarder,
                                   Dialogs& dialogs)
    : appDir_(std::move(appDir)), forwarder_(forwarder),
      bypass_(readListFile(appDir_ + QLatin1String(bypassName)))
{
    forwarder_.setBypass(bypass_);
    QObject::connect(&forwarder_, &proxy::ForwardingProxy::signInNeeded, &context_,
                     [this, &dialogs](const QString& host, quint16 port, const QString& realm) {
                         // Requests that meet the refusal while the user is asked add no
                         // second question.
                         if (asking_)
                             return;
                         asking_ = true;
                         QString prompt =
                             QStringLiteral("The proxy %1 asks for a user name and password.")
                                 .arg(host + QLatin1Char(':') + QString::number(port));
                         if (!realm.isEmpty())
                             prompt += QStringLiteral("\nIt says: ") + realm;
                         QString user;
                         QString password;
                         if (dialogs.credentials(prompt, user, password))
                             forwarder_.setUpstreamLogin(host, port, user, password);
                         asking_ = false;
                     });
}

QStringList ConnectionHelper::proxies() const
{
    return readListFile(listPath());
}

QString ConnectionHelper::problemWith(const QString& entry)
{
    QString problem;
    proxy::ProxyEntry::parse(entry, &problem);
    return problem;
}

void ConnectionHelper::setProxy(const QString& entry)
{
    // A line naming no proxy it can use never becomes the route: it would be
    // a direct connection in the guise of a proxy.
    proxy_ = problemWith(entry).isEmpty() ? entry : QString();
    forwarder_.setUpstream(proxy_);
}

// The host alone counts: a name and password or a port in the site go.
bool ConnectionHelper::addToBypass(const QString&, const QString& site)
{
    QString host = site.section(QLatin1Char('@'), -1).trimmed();
    static const QRegularExpression port(QStringLiteral(":\\d*$"));
    if (!host.startsWith(QLatin1Char('[')) || host.contains(QLatin1String("]:")))
        host.remove(port);
    if (host.isEmpty() || bypass_.contains(host, Qt::CaseInsensitive))
        return true;
    bypass_ << host;
    forwarder_.setBypass(bypass_);
    QSaveFile file(appDir_ + QLatin1String(bypassName));
    return file.open(QIODevice::WriteOnly) &&
           file.write((bypass_.join(QLatin1Char('\n')) + QLatin1Char('\n')).toUtf8()) >= 0 &&
           file.commit();
}

} // namespace platform
