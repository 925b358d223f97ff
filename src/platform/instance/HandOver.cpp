#include "HandOver.h"

#include <QStringDecoder>

namespace platform::handover {

namespace {
constexpr QByteArrayView firstLine{"qub-browser hand-over 1\n"};
} // namespace

QByteArray message(const QString& address)
{
    QByteArray text = firstLine.toByteArray() + address.toUtf8() + '\n';
    return text.size() <= maxMessage ? text : QByteArray();
}

std::optional<QString> addressOf(const QByteArray& message)
{
    if (message.size() > maxMessage || !message.startsWith(firstLine) || !message.endsWith('\n'))
        return std::nullopt;
    const QByteArrayView body =
        QByteArrayView(message).sliced(firstLine.size(), message.size() - firstLine.size() - 1);
    // One line of printable text: no second line, no control character.
    for (const char c : body)
        if (uchar(c) < 0x20 || c == 0x7f)
            return std::nullopt;
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    QString address = utf8.decode(body);
    if (utf8.hasError())
        return std::nullopt;
    return address;
}

} // namespace platform::handover
