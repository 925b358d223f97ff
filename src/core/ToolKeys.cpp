#include "ToolKeys.h"

#include <algorithm>
#include <limits>

namespace keys {

namespace {
const QString tabPrefix = QStringLiteral("tabs-");
const QString blockedPrefix = QStringLiteral("blocked-");
} // namespace

int leadingValue(QStringView text)
{
    qsizetype i = 0;
    while (i < text.size() && text[i] == u' ')
        ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == u'-' || text[i] == u'+'))
        negative = text[i++] == u'-';
    qint64 value = 0;
    for (; i < text.size() && text[i].isDigit() && text[i].unicode() < 128; ++i) {
        value = value * 10 + (text[i].unicode() - '0');
        if (value > std::numeric_limits<int>::max())
            return 0; // no tool number is that large
    }
    return int(negative ? -value : value);
}

QString tabKey(int viewIndex)
{
    return tabPrefix + QString::number(viewIndex);
}

bool isTabKey(QStringView key)
{
    return key.startsWith(tabPrefix);
}

int tabIndex(QStringView key)
{
    return leadingValue(key.mid(std::min<qsizetype>(5, key.size())));
}

QString blockedKey(int entry)
{
    return blockedPrefix + QString::number(entry);
}

int blockedEntry(QStringView key)
{
    return leadingValue(key.mid(std::min<qsizetype>(8, key.size())));
}

QString proxyKey(int entry)
{
    return QStringLiteral("Proxy") + QString::number(entry);
}

QString favouriteBandKey(int folder)
{
    return QStringLiteral("favband") + QString::number(folder);
}

QString favouriteKey(int entry)
{
    return QStringLiteral("fav") + QString::number(entry);
}

} // namespace keys
