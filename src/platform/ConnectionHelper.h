#pragma once
// Proxy services: the list of proxies the user can choose from, kept in
// "Proxies.txt" beside the program (one per line; blank lines and lines
// beginning with "#" are skipped), the one in use, and the hosts that go
// straight to the sites whatever the proxy ("NoProxy.txt", one per line).
// Applied through the program's forwarding proxy, so a choice holds for the
// next request of every view. An upstream proxy that wants a name and
// password it was not given has the user asked for them, once at a time.
#include <QObject>
#include <QString>
#include <QStringList>

namespace proxy {
class ForwardingProxy;
} // namespace proxy

namespace platform {

class Dialogs;

class ConnectionHelper
{
public:
    ConnectionHelper(QString appDir, proxy::ForwardingProxy& forwarder, Dialogs& dialogs);

    static constexpr const char* listName = "Proxies.txt";
    static constexpr const char* bypassName = "NoProxy.txt";

    QString listPath() const { return appDir_ + QLatin1String(listName); }
    QStringList proxies() const;
    // Why a line of the list names no proxy that can be used; empty when it
    // names one.
    static QString problemWith(const QString& entry);
    // entry: a line of the list, or "" for a direct connection.
    void setProxy(const QString& entry);
    const QString& proxy() const { return proxy_; }
    // Adds host to the hosts reached without proxy, for this run and after;
    // false when the list could not be written (the host still goes direct).
    bool addToBypass(const QString& proxyEntry, const QString& host);
    const QStringList& bypass() const { return bypass_; }

private:
    QString appDir_;
    proxy::ForwardingProxy& forwarder_;
    QString proxy_;
    QStringList bypass_;
    bool asking_ = false;
    // Ends the connection to the proxy's sign-in requests with this object.
    QObject context_;
};

// The lines of a list file that name something: trimmed, without blanks and
// "#" comments. The file's text is read as UTF-8, else in the local code page.
QStringList readListFile(const QString& path);

} // namespace platform
