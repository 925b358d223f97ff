#include "AddressUrl.h"

namespace platform {

QUrl urlFromAddress(const QString& address)
{
    QUrl url = QUrl::fromUserInput(address);
    if (url.scheme() == QLatin1String("about"))
        url.setPath(url.path().toLower());
    return url;
}

} // namespace platform
