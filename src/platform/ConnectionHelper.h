#pragma once
// Proxy services of the companion: the list of proxies the user can choose
// from and the one in use. The list is empty until the proxy menu has its
// own source; the chosen entry is kept so that it is saved unchanged.
#include <QString>
#include <QStringList>

namespace platform {

class ConnectionHelper
{
public:
    void setProxy(const QString& entry) { proxy_ = entry; }
    const QString& proxy() const { return proxy_; }
    QStringList proxies() const { return {}; }

private:
    QString proxy_;
};

} // namespace platform
