#include "Settings.h"
#include "core/Keys.h"
#include "net/ProxyMenu.h"
#include "platform/commandbar/CommandBar.h"
#include "platform/ini/ProfileFile.h"

namespace {

const QString section = QStringLiteral("QUB-BROWSER");
const QString proxyKey = QStringLiteral("PROXY_IP");
const QString homeKey = QStringLiteral("HOMEPAGE");
const QString searchKey = QStringLiteral("SEARCHURL");
const QString historyDaysKey = QStringLiteral("HISTORYDAYS");

struct Switch
{
    const char* name;
    const char* band;
    const char* tool;
    int fallback;
    const char* shownBand; // band shown or hidden with the switch, if any
};

// In the order they are written.
const Switch switches[] = {
    {"ADDRESSBAR", key::viewMenu, key::showAddressBar, 1, key::addressBar},
    {"STATUSBAR", key::viewMenu, key::showStatusBar, 1, key::statusBar},
    {"TOOLSBAR", key::viewMenu, key::showMainBar, 1, key::mainBar},
    {"ICONON", key::favMenu, key::favIcons, 0, nullptr},
    {"OPENGETBAR", key::toolsMenu, key::companionBar, 0, nullptr},
    {"BESILENT", key::toolsMenu, key::silent, 0, nullptr},
    {"STOPPOPUP", key::toolsMenu, key::stopPopups, 0, nullptr},
    {"KILLPOP", key::toolsMenu, key::killPopups, 0, nullptr},
};

} // namespace

Settings::Settings(QString appDir, platform::CommandBar& bar, ProxyMenu& proxies)
    : appDir_(std::move(appDir)), bar_(bar), proxies_(proxies)
{
}

void Settings::load()
{
    const platform::ProfileFile file(fileName());
    for (const Switch& s : switches) {
        // The companion bar checks its own tool when it opens.
        const bool on = file.readInt(section, QLatin1String(s.name), s.fallback) == 1;
        if (QLatin1String(s.tool) == QLatin1String(key::companionBar)) {
            companionAtStart_ = on;
            continue;
        }
        if (platform::Tool* tool = bar_.tool(s.band, s.tool))
            tool->setChecked(on);
        if (s.shownBand)
            if (platform::Band* band = bar_.band(s.shownBand))
                band->setVisible(on);
    }

    homePage_ = platform::ReadIniString(fileName(), section, homeKey);
    if (homePage_.isEmpty())
        homePage_ = defaultHomePage;

    searchAddress_ = file.readString(section, searchKey, QLatin1String(defaultSearchAddress));
    historyDays_ = file.readInt(section, historyDaysKey, defaultHistoryDays);

    proxies_.start(platform::ReadIniString(fileName(), section, proxyKey));
}

bool Settings::save() const
{
    platform::ProfileFile::Entries entries;
    for (const Switch& s : switches) {
        // A skin without the switch leaves its value in the file as it was.
        if (const platform::Tool* tool = bar_.tool(s.band, s.tool))
            entries.append({QLatin1String(s.name),
                            tool->checked() ? QStringLiteral("1") : QStringLiteral("0")});
    }
    entries.append({proxyKey, proxies_.checkedEntry()});
    // One write, so that a shut-down cut short leaves the old settings or the new.
    return platform::ProfileFile(fileName()).writeStrings(section, entries);
}

bool Settings::setHomePage(const QString& address)
{
    homePage_ = address.isEmpty() ? QString::fromLatin1(defaultHomePage) : address;
    return platform::ProfileFile(fileName()).writeString(section, homeKey, address);
}
