#pragma once
// Keys of the tools the program makes at run time, built and read back here
// only: "tabs-" + view index, "blocked-" + entry, "Proxy" + entry, "fav" +
// entry. Numbers are read the way the old basic Val() read them: blanks
// skipped, an optional sign, the digits up to the first other character.
#include <QString>
#include <QStringView>

namespace keys {

int leadingValue(QStringView text);

inline constexpr int tabToolBaseId = 50000;
QString tabKey(int viewIndex);
bool isTabKey(QStringView key);
// The value after the first five characters ("tabs-").
int tabIndex(QStringView key);

QString blockedKey(int entry);
// The value after the first eight characters ("blocked-").
int blockedEntry(QStringView key);

QString proxyKey(int entry);

// Favourite and translation entries are numbered by their tool identifier.
QString favouriteKey(int entry);
// The pop-up band of favourites folder n.
QString favouriteBandKey(int folder);
inline int favouriteEntry(int toolId)
{
    return toolId - 1500;
}
inline int translationEntry(int toolId)
{
    return toolId - 1400;
}

} // namespace keys
