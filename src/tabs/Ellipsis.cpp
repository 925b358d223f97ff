#include "Ellipsis.h"
#include "platform/NarrowText.h"

QString ellipsis(const QString& text, int width)
{
    if (platform::narrowLength(text) <= width)
        return text;
    static const QString mark = QStringLiteral(" ...");
    return platform::narrowLeft(text, width - 1 - int(mark.size())) + mark;
}
