#pragma once
// The address bar and what feeds it: the typed addresses of the per-user
// store and the pages opened in this run as suggestions. Wires itself to the
// tabs and registers the Go command.
#include "AddressBar.h"

class AddressCompleter;
class CommandDispatcher;
class QComboBox;
class ViewEvents;

namespace platform {
class UserRegistry;
}

class HistorySubsystem
{
public:
    HistorySubsystem(QComboBox& box, TabStrip& tabs, ViewEvents& events,
                     platform::UserRegistry& registry, CommandDispatcher& commands);

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
