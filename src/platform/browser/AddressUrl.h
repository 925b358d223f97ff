#pragma once
// The address a view goes to for a text typed or chosen by the user.
#include <QString>
#include <QUrl>

namespace platform {

// Like QUrl::fromUserInput, but "about:" pages are named in lower case:
// the engine knows "about:blank" and refuses "about:Blank".
QUrl urlFromAddress(const QString& address);

// Whether typed text names a place (an address with a known scheme, a host
// with a dot or a port, "localhost", a local path) rather than words to
// search for.
bool isAddress(const QString& text);

// The search service's address for the words: "{query}" in the template,
// in any case, replaced by the words escaped.
QUrl searchUrl(const QString& searchTemplate, const QString& words);

// The site of an address as the side panels and the proxy bypass name it:
// what lies between the first "//" and the next "/", user, password and port
// included. Without "//" it starts at the second character.
QString getDomain(const QString& url);

} // namespace platform
