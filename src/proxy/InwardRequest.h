#pragma once
// Whether a page's request reaches into the user's own network: a page from
// the internet asking for a picture, a script or data from an address of
// this computer or of the local network (a router, a printer, a development
// server), the attack the engine's private-network protection stops. The
// program's own proxy hides from the engine where an answer came from, so
// the program makes this check itself, by address; a name that only resolves
// to such an address is the proxy's to judge.
#include <QHostAddress>
#include <QUrl>

namespace proxy {

// This computer's own address: loopback, unspecified ("this network") or
// link-local, IPv4 also when written as IPv6.
bool isThisComputer(const QHostAddress& address);

// An address whose host is this computer's or the local network's: a
// loopback, private, link-local or unspecified IP literal, "localhost", a
// name without a dot, or a name under a suffix kept for local networks.
bool isInwardHost(const QString& host);

// A request by a page from initiator for target that reaches inward from
// outside. A page's own navigations are not asked about.
bool reachesInward(const QUrl& initiator, const QUrl& target);

} // namespace proxy
