#include "NarrowText.h"

#include <QStringDecoder>

namespace platform {

static int narrowWidth(QChar c)
{
    return c.unicode() > 0x7F ? 2 : 1;
}

int narrowLength(const QString& text)
{
    int length = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        // The second half of a surrogate pair adds nothing: the pair counts 2.
        if (i > 0 && text[i].isLowSurrogate() && text[i - 1].isHighSurrogate())
            continue;
        length += narrowWidth(text[i]);
    }
    return length;
}

QString narrowLeft(const QString& text, int limit)
{
    int length = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        // A character outside the basic plane is one unit: never cut inside it.
        const bool pair =
            text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate();
        length += pair ? 2 : narrowWidth(text[i]);
        if (length > limit)
            return text.left(i);
        if (pair)
            ++i;
    }
    return text;
}

QString shortenCaption(const QString& text, int maxBytes)
{
    if (narrowLength(text) <= maxBytes)
        return text;
    return narrowLeft(text, maxBytes - 1) + QStringLiteral(" ...");
}

QString decodeText(const QByteArray& bytes)
{
    QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = utf8.decode(bytes);
    return utf8.hasError() ? QString::fromLatin1(bytes) : text;
}

} // namespace platform
