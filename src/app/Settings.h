#pragma once
// The program's settings: the checked states of eight command-bar tools, the
// chosen proxy and the home page, kept in "Browser.ini". Read once at start, written once
// at exit; in between the tools' checked states are the only copy.
#include "tabs/TabRest.h"

#include <QString>

class ProxyMenu;

namespace commandbar {
class CommandBar;
} // namespace commandbar

class Settings
{
public:
    Settings(QString appDir, commandbar::CommandBar& bar, ProxyMenu& proxies);

    void load();
    // False when the file could not be written.
    bool save() const;

    QString fileName() const { return appDir_ + QStringLiteral("Browser.ini"); }
    // Where Home goes: the file's HOMEPAGE, or a blank page.
    const QString& homePage() const { return homePage_; }
    // Keeps a new home page at once (empty for a blank page); false when the
    // file could not be written.
    bool setHomePage(const QString& address);

    // Where typed words go: the file's SEARCHURL, an address with "{query}"
    // for the words; a present but empty key means no search service.
    const QString& searchAddress() const { return searchAddress_; }
    // How many days an address stays in the history after its last visit:
    // the file's HISTORYDAYS.
    int historyDays() const { return historyDays_; }
    // OPENGETBAR: the companion bar opens at start-up (and checks its tool).
    bool companionAtStart() const { return companionAtStart_; }
    // RESTOREINBACKGROUND, the program's own: restored tabs load one by one
    // in the background rather than when first shown. Off unless set to 1.
    bool restoreInBackground() const { return restoreInBackground_; }
    // FREEZEAFTER and DISCARDAFTER, the program's own: the seconds a tab is
    // out of sight before its page is frozen, and discarded; 0 for never.
    TabRest::Times tabRest() const { return tabRest_; }

    static constexpr QLatin1String defaultHomePage{"about:blank"};
    static constexpr QLatin1String defaultSearchAddress{"https://duckduckgo.com/?q={query}"};
    static constexpr int defaultHistoryDays = 20;
    static constexpr int defaultFreezeSeconds = 5 * 60;
    static constexpr int defaultDiscardSeconds = 30 * 60;

private:
    QString appDir_;
    commandbar::CommandBar& bar_;
    ProxyMenu& proxies_;
    QString homePage_ = defaultHomePage;
    QString searchAddress_ = defaultSearchAddress;
    int historyDays_ = defaultHistoryDays;
    bool companionAtStart_ = false;
    bool restoreInBackground_ = false;
    TabRest::Times tabRest_;
};
