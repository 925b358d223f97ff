#include "NarrowText.h"

namespace platform {

static int narrowWidth(QChar c)
{
    return c.unicode() > 0x7F ? 2 : 1;
}

int narrowLength(const QString& text)
{
    int length = 0;
    for (QChar c : text)
        length += narrowWidth(c);
    return length;
}

QString narrowLeft(const QString& text, int limit)
{
    int length = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        length += narrowWidth(text[i]);
        if (length > limit)
            return text.left(i);
    }
    return text;
}

} // namespace platform
