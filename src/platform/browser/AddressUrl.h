#pragma once
// The address a view goes to for a text typed or chosen by the user.
#include <QString>
#include <QUrl>

namespace platform {

// Like QUrl::fromUserInput, but "about:" pages are named in lower case:
// the engine knows "about:blank" and refuses "about:Blank".
QUrl urlFromAddress(const QString& address);

} // namespace platform
