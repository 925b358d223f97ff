#pragma once
// The icon theme the program's named icons come from.

namespace platform {

// Desktops without a configured icon theme still get the named icons.
void chooseIconTheme();

} // namespace platform
