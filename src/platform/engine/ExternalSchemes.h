#pragma once
// Addresses of schemes the engine does not show as pages (ssh:, smb:,
// mailto:, an application's own) start another program. The user is asked
// first, told which program, and nothing starts without a yes.
class QUrl;

namespace platform {

class Dialogs;
class Shell;

// True for the schemes the engine loads itself.
bool isPageScheme(const QUrl& url);

// Hands url to the program the desktop has for its scheme once the user
// agrees; false when nothing started (no such program, or the user said no).
bool openExternally(const QUrl& url, Shell& shell, Dialogs& dialogs);

} // namespace platform
