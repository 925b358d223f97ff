#pragma once
// The message a second start of the program sends the running one: a first
// line naming the message, then the address given on the command line (empty
// when there was none) and a line end. Anything else is refused.
#include <QByteArray>
#include <QString>
#include <optional>

namespace platform::handover {

// Longer messages are cut off unread.
constexpr qsizetype maxMessage = qsizetype{32} * 1024;

QByteArray message(const QString& address);
// The address of a whole message; nothing when it is not one, or not yet whole.
std::optional<QString> addressOf(const QByteArray& message);

} // namespace platform::handover
