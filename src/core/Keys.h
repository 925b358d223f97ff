#pragma once
// Every band and tool key the program looks up by name, declared once. The
// shipped skin is checked against lookedUpTools() by a test.
#include "Commands.h"

#include <QString>
#include <utility>
#include <vector>

namespace key {

inline constexpr const char* menuBar = "mnu_Main";
inline constexpr const char* mainBar = "tb_Main";
inline constexpr const char* addressBar = "tb_Addressbar";
inline constexpr const char* tabsBar = "tb_Tabs";
inline constexpr const char* leftBar = "tb_Leftbar";
inline constexpr const char* statusBar = "sb_Status";
inline constexpr const char* fileMenu = "sub_File";
inline constexpr const char* viewMenu = "sub_View";
inline constexpr const char* favMenu = "sub_Fav";
inline constexpr const char* toolsMenu = "sub_Usetools";
inline constexpr const char* proxyMenu = "sub_Proxylist";
inline constexpr const char* editMenu = "sub_Edit";
inline constexpr const char* textMenu = "sub_Text";
inline constexpr const char* languageMenu = "sub_Language";
inline constexpr const char* blockedMenu = "sub_Blocked";
inline constexpr const char* translateMenu = "sub_Trans";
inline constexpr const char* tabMenu = "tab_Menu";
inline constexpr const char* favouritesPage = "cbnd_Fav";
inline constexpr const char* historyPage = "cbnd_History";

inline constexpr const char* addressTool = "ctl_addr";
inline constexpr const char* pageIconTool = "ctl_ieicon";
inline constexpr const char* statusTextTool = "ctl_statustext";
inline constexpr const char* progressTool = "ctl_progress";
inline constexpr const char* securityTool = "b_security";
inline constexpr const char* blockedCountTool = "b_blocked";
inline constexpr const char* favouritesTree = "tvwFav";
inline constexpr const char* historyTree = "tvwHistory";

// Command tools the program finds by key take their key from the command table.
inline constexpr const char* newTab = cmd::keyOf(cmd::Command::NewTab);
inline constexpr const char* newTabHome = cmd::keyOf(cmd::Command::NewTabHome);
inline constexpr const char* duplicateTab = cmd::keyOf(cmd::Command::DuplicateTab);
inline constexpr const char* back = cmd::keyOf(cmd::Command::Back);
inline constexpr const char* forward = cmd::keyOf(cmd::Command::Forward);
inline constexpr const char* stop = cmd::keyOf(cmd::Command::Stop);
inline constexpr const char* stopAll = cmd::keyOf(cmd::Command::StopAll);
inline constexpr const char* refresh = cmd::keyOf(cmd::Command::Refresh);
inline constexpr const char* refreshAll = cmd::keyOf(cmd::Command::RefreshAll);
inline constexpr const char* home = cmd::keyOf(cmd::Command::Home);
inline constexpr const char* go = cmd::keyOf(cmd::Command::Go);
inline constexpr const char* closeTab = cmd::keyOf(cmd::Command::CloseTab);
inline constexpr const char* closeOthers = cmd::keyOf(cmd::Command::CloseOthers);
inline constexpr const char* closeAll = cmd::keyOf(cmd::Command::CloseAll);
inline constexpr const char* quit = cmd::keyOf(cmd::Command::Quit);
inline constexpr const char* workOffline = cmd::keyOf(cmd::Command::WorkOffline);
inline constexpr const char* showMainBar = cmd::keyOf(cmd::Command::ShowMainBar);
inline constexpr const char* showAddressBar = cmd::keyOf(cmd::Command::ShowAddressBar);
inline constexpr const char* showStatusBar = cmd::keyOf(cmd::Command::ShowStatusBar);
inline constexpr const char* favIcons = cmd::keyOf(cmd::Command::FavouriteIcons);
inline constexpr const char* companionBar = cmd::keyOf(cmd::Command::CompanionBar);
inline constexpr const char* silent = cmd::keyOf(cmd::Command::Silent);
inline constexpr const char* stopPopups = cmd::keyOf(cmd::Command::StopPopups);
inline constexpr const char* killPopups = cmd::keyOf(cmd::Command::KillPopups);
inline constexpr const char* fullScreen = cmd::keyOf(cmd::Command::FullScreen);
inline constexpr const char* favouritesSwitch = cmd::keyOf(cmd::Command::FavouritesPanel);
inline constexpr const char* historySwitch = cmd::keyOf(cmd::Command::HistoryPanel);

// (band, tool) pairs the program finds by key; an empty tool means the band
// alone.
inline std::vector<std::pair<QString, QString>> lookedUpTools()
{
    return {
        {menuBar, {}},
        {mainBar, back},
        {mainBar, forward},
        {addressBar, addressTool},
        {addressBar, pageIconTool},
        {tabsBar, {}},
        {leftBar, {}},
        {statusBar, statusTextTool},
        {statusBar, progressTool},
        {statusBar, securityTool},
        {statusBar, blockedCountTool},
        {editMenu, {}},
        {textMenu, {}},
        {languageMenu, {}},
        {blockedMenu, {}},
        {translateMenu, {}},
        {fileMenu, workOffline},
        {proxyMenu, {}},
        {tabMenu, {}},
        {fileMenu, newTab},
        {fileMenu, closeTab},
        {fileMenu, closeOthers},
        {fileMenu, closeAll},
        {fileMenu, quit},
        {viewMenu, showMainBar},
        {viewMenu, showAddressBar},
        {viewMenu, showStatusBar},
        {viewMenu, fullScreen},
        {favMenu, favIcons},
        {favouritesPage, favouritesTree},
        {historyPage, historyTree},
        {mainBar, favouritesSwitch},
        {mainBar, historySwitch},
        {viewMenu, favouritesSwitch},
        {viewMenu, historySwitch},
        {addressBar, go},
        {toolsMenu, companionBar},
        {toolsMenu, silent},
        {toolsMenu, stopPopups},
        {toolsMenu, killPopups},
    };
}

} // namespace key
