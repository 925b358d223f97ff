#pragma once
// Every band and tool key the program looks up by name, declared once. The
// shipped skin is checked against lookedUpTools() by a test.
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
inline constexpr const char* tabMenu = "tab_Menu";

inline constexpr const char* addressTool = "ctl_addr";
inline constexpr const char* pageIconTool = "ctl_ieicon";
inline constexpr const char* statusTextTool = "ctl_statustext";
inline constexpr const char* progressTool = "ctl_progress";

inline constexpr const char* tabPrefix = "tabs-";

inline constexpr const char* newTab = "b_newt";
inline constexpr const char* newTabHome = "b_new2";
inline constexpr const char* duplicateTab = "b_new3";
inline constexpr const char* back = "b_back";
inline constexpr const char* forward = "b_forward";
inline constexpr const char* stop = "b_stop";
inline constexpr const char* stopAll = "b_stopall";
inline constexpr const char* refresh = "b_refresh";
inline constexpr const char* refreshAll = "b_refreshall";
inline constexpr const char* home = "b_home";
inline constexpr const char* go = "b_go";
inline constexpr const char* closeTab = "b_close";
inline constexpr const char* closeOthers = "b_closeall1";
inline constexpr const char* closeAll = "b_closeall2";
inline constexpr const char* quit = "b_quit";
inline constexpr const char* showMainBar = "b_toolsbarok";
inline constexpr const char* showAddressBar = "b_addrok";
inline constexpr const char* showStatusBar = "b_statusok";
inline constexpr const char* favIcons = "b_iconon";
inline constexpr const char* companionBar = "b_opengetbar";
inline constexpr const char* silent = "b_besilent";
inline constexpr const char* stopPopups = "b_stoppopup";
inline constexpr const char* killPopups = "b_killpop";
inline constexpr const char* fullScreen = "b_fullscreen";

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
        {toolsMenu, companionBar},
        {toolsMenu, silent},
        {toolsMenu, stopPopups},
        {toolsMenu, killPopups},
    };
}

} // namespace key
