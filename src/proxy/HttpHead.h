#pragma once
// The few pieces of an HTTP/1.1 message head the forwarding proxy reads and
// writes.
#include <QByteArray>
#include <QString>

#include <optional>
#include <utility>

namespace proxy::httphead {

constexpr qsizetype maxHead = qsizetype(64) * 1024;

bool headerIs(const QByteArray& line, const char* name);
QByteArray headerValue(const QByteArray& line);
// "host:port" or "[v6]:port"; port fallback when there is none, 0 when it is
// not a port.
std::pair<QString, quint16> splitAuthority(const QByteArray& authority, quint16 fallback);
// The head at the front of buffer, taken off it with its blank line, without
// its last line break; nullopt while it has not all come.
std::optional<QByteArray> takeHead(QByteArray& buffer);
QByteArray basicAuthorization(const QString& user, const QString& password);
// The first line of a head, the whole of one that has one line.
QByteArray firstLine(const QByteArray& head);
// A response head's status code; 0 when its first line is no HTTP status
// line.
int statusOf(const QByteArray& head);

} // namespace proxy::httphead
