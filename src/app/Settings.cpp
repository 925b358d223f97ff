#include "Settings.h"
#include "commandbar/CommandBar.h"
#include "core/Keys.h"
#include "core/Switches.h"
#include "net/ProxyMenu.h"
#include "platform/ini/ProfileFile.h"

#include <algorithm>

namespace {

constexpr QLatin1String section{"QUB-BROWSER"};
constexpr QLatin1String proxyKey{"PROXY_IP"};
constexpr QLatin1String homeKey{"HOMEPAGE"};
constexpr QLatin1String searchKey{"SEARCHURL"};
constexpr QLatin1String historyDaysKey{"HISTORYDAYS"};
constexpr QLatin1String restoreInBackgroundKey{"RESTOREINBACKGROUND"};
constexpr QLatin1String freezeKey{"FREEZEAFTER"};
constexpr QLatin1String discardKey{"DISCARDAFTER"};

struct Switch
{
    const char* name;
    cmd::Command command;
    int fallback;
    QLatin1String shownBand; // band shown or hidden with the switch, if any
};

using cmd::Command;

// In the order they are written.
const Switch settingSwitches[] = {
    {"ADDRESSBAR", Command::ShowAddressBar, 1, key::addressBar},
    {"STATUSBAR", Command::ShowStatusBar, 1, key::statusBar},
    {"TOOLSBAR", Command::ShowMainBar, 1, key::mainBar},
    {"ICONON", Command::FavouriteIcons, 0, {}},
    {"OPENGETBAR", Command::CompanionBar, 0, {}},
    {"BESILENT", Command::Silent, 0, {}},
    {"STOPPOPUP", Command::StopPopups, 0, {}},
    {"KILLPOP", Command::KillPopups, 0, {}},
};

} // namespace

Settings::Settings(QString appDir, commandbar::CommandBar& bar, ProxyMenu& proxies)
    : appDir_(std::move(appDir)), bar_(bar), proxies_(proxies)
{
}

void Settings::load()
{
    const platform::ProfileFile file(fileName());
    for (const Switch& s : settingSwitches) {
        // The companion bar checks its own tool when it opens.
        const bool on = file.readInt(section, QLatin1String(s.name), s.fallback) == 1;
        if (s.command == Command::CompanionBar) {
            companionAtStart_ = on;
            continue;
        }
        switches::set(bar_, s.command, on);
        if (!s.shownBand.isEmpty())
            if (commandbar::Band* band = bar_.band(s.shownBand))
                band->setVisible(on);
    }

    homePage_ = platform::ReadIniString(fileName(), section, homeKey);
    if (homePage_.isEmpty())
        homePage_ = defaultHomePage;

    searchAddress_ = file.readString(section, searchKey, defaultSearchAddress);
    historyDays_ = file.readInt(section, historyDaysKey, defaultHistoryDays);
    restoreInBackground_ = file.readInt(section, restoreInBackgroundKey, 0) == 1;
    // A negative time counts as never, as 0 does.
    const auto seconds = [&](QLatin1String key, int fallback) {
        return std::chrono::seconds{std::max(0, file.readInt(section, key, fallback))};
    };
    tabRest_ = {seconds(freezeKey, defaultFreezeSeconds),
                seconds(discardKey, defaultDiscardSeconds)};

    proxies_.start(platform::ReadIniString(fileName(), section, proxyKey));
}

bool Settings::save() const
{
    platform::ProfileFile::Entries entries;
    for (const Switch& s : settingSwitches) {
        // A skin without the switch leaves its value in the file as it was.
        if (bar_.collectionTool(QLatin1String(cmd::keyOf(s.command))))
            entries.append({QLatin1String(s.name), switches::isOn(bar_, s.command)
                                                       ? QStringLiteral("1")
                                                       : QStringLiteral("0")});
    }
    entries.append({proxyKey, proxies_.checkedEntry()});
    // One write, so that a shut-down cut short leaves the old settings or the new.
    return platform::ProfileFile(fileName()).writeStrings(section, entries);
}

bool Settings::setHomePage(const QString& address)
{
    homePage_ = address.isEmpty() ? QString(defaultHomePage) : address;
    return platform::ProfileFile(fileName()).writeString(section, homeKey, address);
}
