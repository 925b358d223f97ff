#pragma once
// Every band and tool key the program looks up by name, declared once, each
// tool with the bands it is looked up in. The constants and the list that the
// shipped skin is checked against (lookups()) both come from these tables.
#include "Commands.h"

#include <QLatin1String>
#include <initializer_list>
#include <vector>

// name in the code, key in the skin
#define QUB_BAND_KEYS(BAND)                                                                        \
    BAND(menuBar, "mnu_Main")                                                                      \
    BAND(mainBar, "tb_Main")                                                                       \
    BAND(addressBar, "tb_Addressbar")                                                              \
    BAND(tabsBar, "tb_Tabs")                                                                       \
    BAND(leftBar, "tb_Leftbar")                                                                    \
    BAND(statusBar, "sb_Status")                                                                   \
    BAND(fileMenu, "sub_File")                                                                     \
    BAND(viewMenu, "sub_View")                                                                     \
    BAND(favMenu, "sub_Fav")                                                                       \
    BAND(toolsMenu, "sub_Usetools")                                                                \
    BAND(proxyMenu, "sub_Proxylist")                                                               \
    BAND(editMenu, "sub_Edit")                                                                     \
    BAND(textMenu, "sub_Text")                                                                     \
    BAND(languageMenu, "sub_Language")                                                             \
    BAND(blockedMenu, "sub_Blocked")                                                               \
    BAND(contentBlockMenu, "sub_ContentBlock")                                                     \
    BAND(translateMenu, "sub_Trans")                                                               \
    BAND(tabMenu, "tab_Menu")                                                                      \
    BAND(favouritesPage, "cbnd_Fav")                                                               \
    BAND(historyPage, "cbnd_History")

// name in the code, key in the skin, the bands it is looked up in; a command's
// tool takes its key from the command table.
#define QUB_TOOL_KEYS(TOOL)                                                                        \
    TOOL(addressTool, "ctl_addr", addressBar)                                                      \
    TOOL(pageIconTool, "ctl_ieicon", addressBar)                                                   \
    TOOL(statusTextTool, "ctl_statustext", statusBar)                                              \
    TOOL(progressTool, "ctl_progress", statusBar)                                                  \
    TOOL(securityTool, "b_security", statusBar)                                                    \
    TOOL(blockedCountTool, "b_blocked", statusBar)                                                 \
    TOOL(filteredCountTool, "b_filtered", statusBar)                                               \
    TOOL(favouritesTree, "tvwFav", favouritesPage)                                                 \
    TOOL(historyTree, "tvwHistory", historyPage)                                                   \
    TOOL(newTab, cmd::keyOf(cmd::Command::NewTab), fileMenu)                                       \
    TOOL(back, cmd::keyOf(cmd::Command::Back), mainBar)                                            \
    TOOL(forward, cmd::keyOf(cmd::Command::Forward), mainBar)                                      \
    TOOL(stop, cmd::keyOf(cmd::Command::Stop), mainBar)                                            \
    TOOL(refresh, cmd::keyOf(cmd::Command::Refresh), mainBar)                                      \
    TOOL(go, cmd::keyOf(cmd::Command::Go), addressBar)                                             \
    TOOL(closeTab, cmd::keyOf(cmd::Command::CloseTab), fileMenu)                                   \
    TOOL(closeAll, cmd::keyOf(cmd::Command::CloseAll), fileMenu)                                   \
    TOOL(workOffline, cmd::keyOf(cmd::Command::WorkOffline), fileMenu, statusBar)                  \
    TOOL(showAddressBar, cmd::keyOf(cmd::Command::ShowAddressBar), viewMenu)                       \
    TOOL(showStatusBar, cmd::keyOf(cmd::Command::ShowStatusBar), viewMenu)                         \
    TOOL(fullScreen, cmd::keyOf(cmd::Command::FullScreen), viewMenu, mainBar)                      \
    TOOL(favIcons, cmd::keyOf(cmd::Command::FavouriteIcons), favMenu)                              \
    TOOL(favouritesSwitch, cmd::keyOf(cmd::Command::FavouritesPanel), mainBar, viewMenu)           \
    TOOL(historySwitch, cmd::keyOf(cmd::Command::HistoryPanel), mainBar, viewMenu)                 \
    TOOL(companionBar, cmd::keyOf(cmd::Command::CompanionBar), toolsMenu)                          \
    TOOL(silent, cmd::keyOf(cmd::Command::Silent), toolsMenu)                                      \
    TOOL(stopPopups, cmd::keyOf(cmd::Command::StopPopups), toolsMenu)                              \
    TOOL(killPopups, cmd::keyOf(cmd::Command::KillPopups), toolsMenu)                              \
    TOOL(allowOnSite, cmd::keyOf(cmd::Command::AllowOnSite), contentBlockMenu)

namespace key {

#define QUB_DECLARE_BAND(name, text) inline constexpr QLatin1String name{text};
QUB_BAND_KEYS(QUB_DECLARE_BAND)
#undef QUB_DECLARE_BAND
#define QUB_DECLARE_TOOL(name, text, ...) inline constexpr QLatin1String name{text};
QUB_TOOL_KEYS(QUB_DECLARE_TOOL)
#undef QUB_DECLARE_TOOL

// A band the program looks up, or a tool in it (tool not empty).
struct Lookup
{
    QLatin1String band;
    QLatin1String tool;
};

inline std::vector<Lookup> lookups()
{
    std::vector<Lookup> all;
    const auto addTool = [&all](QLatin1String tool, std::initializer_list<QLatin1String> bands) {
        for (const QLatin1String band : bands)
            all.push_back({band, tool});
    };
#define QUB_LOOKUP_BAND(name, text) all.push_back({name, {}});
    QUB_BAND_KEYS(QUB_LOOKUP_BAND)
#undef QUB_LOOKUP_BAND
#define QUB_LOOKUP_TOOL(name, text, ...) addTool(name, {__VA_ARGS__});
    QUB_TOOL_KEYS(QUB_LOOKUP_TOOL)
#undef QUB_LOOKUP_TOOL
    return all;
}

} // namespace key
