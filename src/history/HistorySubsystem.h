#pragma once
// The address bar and what feeds it: the typed addresses of the per-user
// store and the pages opened in this run as suggestions. Wires itself to the
// tabs and registers the Go and Open File commands.
#include "AddressBar.h"

class AddressCompleter;
class CommandDispatcher;
class QComboBox;
class ViewEvents;

namespace platform {
class Dialogs;
class UserRegistry;
} // namespace platform

class HistorySubsystem
{
public:
    HistorySubsystem(QComboBox& box, TabStrip& tabs, ViewEvents& events,
                     platform::UserRegistry& registry, platform::Dialogs& dialogs,
                     CommandDispatcher& commands);

    // Start-up: the list's first entry, then the typed addresses after it.
    void fillAddressList();

    AddressBar& addressBar() { return addressBar_; }
    AddressCompleter& completer() { return *completer_; }

private:
    QComboBox& box_;
    platform::UserRegistry& registry_;
    AddressCompleter* completer_;
    AddressBar addressBar_;
};
