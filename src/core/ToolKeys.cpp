#include "ToolKeys.h"

#include <algorithm>
#include <limits>

namespace keys {

namespace {
constexpr QLatin1String tabPrefix{"tabs-"};
constexpr QLatin1String blockedPrefix{"blocked-"};
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

int blockedId(int entry)
{
    return 2800 + entry;
}

int proxyId(int entry)
{
    return 3011 + (entry > 1 ? entry : 0);
}

QString proxySeparatorKey()
{
    return QStringLiteral("spe_sProxy1");
}

int proxySeparatorId()
{
    return 3012;
}

QString languageKey(int file)
{
    return QStringLiteral("lang") + QString::number(file);
}

int languageId(int file)
{
    return 3200 + file;
}

int favouriteId(int entry)
{
    return 1500 + entry;
}

int favouriteEntry(int toolId)
{
    return toolId - 1500;
}

int favouriteFolderId(int position)
{
    return position * 100 + 1500;
}

QString emptyFolderKey(int folder)
{
    return favouriteKey(folder + 1000);
}

int emptyFolderId(int folder)
{
    return folder + 2500;
}

QString translationKey(int service)
{
    return QStringLiteral("transeg") + QString::number(service);
}

int translationId(int service)
{
    return 1400 + service;
}

int translationEntry(int toolId)
{
    return toolId - 1400;
}

QString translationSeparatorKey(int separator)
{
    return QStringLiteral("spe_sTrans") + QString::number(separator);
}

int translationSeparatorId(int separator)
{
    return 1900 + separator;
}

} // namespace keys
