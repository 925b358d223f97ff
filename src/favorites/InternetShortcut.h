#pragma once
// An internet shortcut file: the address under key "URL" of its section
// "InternetShortcut". The address is read whole, unlike the settings' values:
// a page's address is often longer than the 254 characters kept of those.
#include <QString>

namespace InternetShortcut {

// Empty when the file, the section or the key is missing.
QString address(const QString& path);

} // namespace InternetShortcut
