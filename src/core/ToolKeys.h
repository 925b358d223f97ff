#pragma once
// Keys and identifiers of the tools the program makes at run time, built and
// read back here only: "tabs-" + view index, "blocked-" + entry, "Proxy" +
// entry, "fav" + entry, "transeg" + service, "lang" + file. Numbers are read the way the old basic
// Val() read them: blanks skipped, an optional sign, the digits up to the first other character.
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
int blockedId(int entry);
// The value after the first eight characters ("blocked-").
int blockedEntry(QStringView key);

QString proxyKey(int entry);
// Entry 1 ("Empty") and 2 share an identifier, as they always have.
int proxyId(int entry);
// The separator after "Empty".
QString proxySeparatorKey();
int proxySeparatorId();

QString languageKey(int file);
int languageId(int file);

// Favourite and translation entries are numbered by their tool identifier.
QString favouriteKey(int entry);
int favouriteId(int entry);
int favouriteEntry(int toolId);
// The drop-down of the folder at that place in its menu, and the pop-up band
// of folder n.
int favouriteFolderId(int position);
QString favouriteBandKey(int folder);
// What an empty folder shows.
QString emptyFolderKey(int folder);
int emptyFolderId(int folder);

QString translationKey(int service);
int translationId(int service);
int translationEntry(int toolId);
QString translationSeparatorKey(int separator);
int translationSeparatorId(int separator);

} // namespace keys
