#pragma once
// The address bar and the history: the typed addresses of the per-user store
// and the pages opened in this run as suggestions, the history store that
// keeps every page a tab opens, and the side bar's history tree over it.
// Drags in and out of pages open what they carry. Wires itself to the tabs
// and registers the Go, Open File and Delete History commands.
#include "AddressBar.h"
#include "HistoryTree.h"

#include <memory>

class AddressCompleter;
class CURLHistory;
class CommandDispatcher;
class HistoryPanel;
class QComboBox;
class QWidget;
class EveryTabSignals;
class ActiveTabPresenter;

namespace platform {
class BrowserView;
class Dialogs;
class PrivateData;
class UserRegistry;
} // namespace platform
namespace commandbar {
class CommandBar;
} // namespace commandbar
class HistoryStore;

class HistorySubsystem
{
public:
    HistorySubsystem(QComboBox& box, QWidget& pageIcon, commandbar::CommandBar& bar, Tabs& tabs,
                     const EveryTabSignals& every, ActiveTabPresenter& events,
                     platform::UserRegistry& registry, platform::Dialogs& dialogs,
                     platform::PrivateData& privateData, CommandDispatcher& commands);
    ~HistorySubsystem();

    // Start-up: the list's first entry, then the typed addresses after it.
    void fillAddressList();
    // Start-up: the history store opened, addresses older than keptDays
    // dropped, and the history page put in the side bar.
    void start(int keptDays);
    // Fills the history tree from the store anew.
    void refreshHistory();

    AddressBar& addressBar() { return addressBar_; }
    AddressCompleter& completer() { return *completer_; }
    HistoryTree& tree() { return tree_; }
    HistoryPanel& panel() { return *panel_; }
    HistoryStore* store() { return store_.get(); }

private:
    void record(platform::BrowserView* view);
    void clear();
    // The store's snapshot, made on first use; nullptr before start().
    CURLHistory* snapshot();

    QComboBox& box_;
    commandbar::CommandBar& bar_;
    platform::UserRegistry& registry_;
    platform::Dialogs& dialogs_;
    AddressCompleter* completer_;
    AddressBar addressBar_;
    HistoryTree tree_;
    HistoryPanel* panel_;
    std::unique_ptr<HistoryStore> store_;
    std::unique_ptr<CURLHistory> history_;
};
