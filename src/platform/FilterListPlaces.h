#pragma once
// Where filter lists are on this system: the copies of EasyList and
// EasyPrivacy that Debian's uBlock Origin package installs, and the file
// that keeps the lists' compiled form between runs.
#include <QString>
#include <QStringList>

namespace platform {

// The system's lists that are there, in a fixed order.
QStringList systemFilterLists();
// In the user's cache folder: losing it costs one reading of the lists.
QString filterCacheFile();

} // namespace platform
