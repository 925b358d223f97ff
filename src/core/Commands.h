#pragma once
// The command table: every fixed key a tool click can carry, declared once,
// in the order keys are compared, with what the command acts on. Each folder
// registers the handlers of its own commands with the CommandDispatcher; a
// key without a handler does nothing. Generated tools (tabs, favourites,
// blocked windows...) are found by the prefix routes after the fixed keys.
#include <QLatin1String>
#include <QStringView>
#include <array>

namespace cmd {

// What a command needs before it can run: nothing, the tab that is shown, or
// the tab chosen through the tab menu (else the shown one). A command whose
// tab has no view does not run.
enum class ActsOn { Nothing, CurrentTab, TargetTab };

enum class Command {
    NewTab,
    NewTabHome,
    DuplicateTab,
    OpenFromCompanion,
    Back,
    Forward,
    Stop,
    StopAll,
    Refresh,
    Home,
    SaveAs,
    PageSetup,
    PrintPreview,
    Print,
    CloseTab,
    Quit,
    Properties,
    WorkOffline,
    CloseOthers,
    CloseAll,
    SelectAll,
    Cut,
    Copy,
    Paste,
    Delete,
    Undo,
    Redo,
    Find,
    ViewSource,
    TextLargest,
    TextLarger,
    TextMedium,
    TextSmaller,
    TextSmallest,
    FullScreen,
    AddFavourite,
    OrganiseFavourites,
    Go,
    ScrollBars,
    FavouriteIcons,
    InternetOptions,
    ViewLinks,
    DeleteCookies,
    DeleteTemporaryFiles,
    DeleteHistory,
    ReadMail,
    NewMail,
    SendLink,
    QuickSave,
    OpenFile,
    CompanionBar,
    CompanionSetup,
    ShowMainBar,
    ShowAddressBar,
    ShowStatusBar,
    RefreshAll,
    ViewLinksEndingWith,
    KillPopups,
    AddToBlockList,
    Silent,
    ImportFavourites,
    ExportFavourites,
    AddressBook,
    EditTranslations,
    ViewText,
    StopPopups,
    DesignMode,
    RemoveImages,
    RemoveFlash,
    About,
    HistoryPanel,
    FavouritesPanel,
    BypassProxy,
    ReopenClosed,
    FilterLists,
    AllowOnSite,
};

struct CommandInfo
{
    Command id;
    const char* key;
    ActsOn actsOn;
};

using enum ActsOn;
using enum Command;

inline constexpr std::array commandTable = {
    CommandInfo{NewTab, "b_newt", Nothing},
    CommandInfo{NewTabHome, "b_new2", Nothing},
    CommandInfo{DuplicateTab, "b_new3", TargetTab},
    CommandInfo{OpenFromCompanion, "spe_sNew1", Nothing},
    CommandInfo{Back, "b_back", CurrentTab},
    CommandInfo{Forward, "b_forward", CurrentTab},
    CommandInfo{Stop, "b_stop", CurrentTab},
    CommandInfo{StopAll, "b_stopall", Nothing},
    CommandInfo{Refresh, "b_refresh", CurrentTab},
    CommandInfo{Home, "b_home", CurrentTab},
    CommandInfo{SaveAs, "b_saveas", TargetTab},
    CommandInfo{PageSetup, "b_pageset", CurrentTab},
    CommandInfo{PrintPreview, "b_preview", CurrentTab},
    CommandInfo{Print, "b_print", CurrentTab},
    CommandInfo{CloseTab, "b_close", TargetTab},
    CommandInfo{Quit, "b_quit", Nothing},
    CommandInfo{Properties, "b_property", CurrentTab},
    CommandInfo{WorkOffline, "b_offline", Nothing},
    CommandInfo{CloseOthers, "b_closeall1", TargetTab},
    CommandInfo{CloseAll, "b_closeall2", Nothing},
    CommandInfo{SelectAll, "b_selectall", CurrentTab},
    CommandInfo{Cut, "b_cut", CurrentTab},
    CommandInfo{Copy, "b_copy", CurrentTab},
    CommandInfo{Paste, "b_paste", CurrentTab},
    CommandInfo{Delete, "b_del", CurrentTab},
    CommandInfo{Undo, "b_undo", CurrentTab},
    CommandInfo{Redo, "b_redo", CurrentTab},
    CommandInfo{Find, "b_find", CurrentTab},
    CommandInfo{ViewSource, "b_source", CurrentTab},
    CommandInfo{TextLargest, "b_biggest", CurrentTab},
    CommandInfo{TextLarger, "b_big", CurrentTab},
    CommandInfo{TextMedium, "b_normal", CurrentTab},
    CommandInfo{TextSmaller, "b_small", CurrentTab},
    CommandInfo{TextSmallest, "b_smallest", CurrentTab},
    CommandInfo{FullScreen, "b_fullscreen", Nothing},
    CommandInfo{AddFavourite, "b_addfav", TargetTab},
    CommandInfo{OrganiseFavourites, "b_orgfav", Nothing},
    CommandInfo{Go, "b_go", Nothing},
    CommandInfo{ScrollBars, "b_scrollon", CurrentTab},
    CommandInfo{FavouriteIcons, "b_iconon", Nothing},
    CommandInfo{InternetOptions, "b_opInternet", Nothing},
    CommandInfo{ViewLinks, "b_viewlinks", CurrentTab},
    CommandInfo{DeleteCookies, "b_delcookie", Nothing},
    CommandInfo{DeleteTemporaryFiles, "b_deltempfiles", Nothing},
    CommandInfo{DeleteHistory, "b_delhistory", Nothing},
    CommandInfo{ReadMail, "b_emailall", Nothing},
    CommandInfo{NewMail, "b_sendemail", Nothing},
    CommandInfo{SendLink, "b_sendaddr", CurrentTab},
    CommandInfo{QuickSave, "b_fastsave", CurrentTab},
    CommandInfo{OpenFile, "b_openfile", Nothing},
    CommandInfo{CompanionBar, "b_opengetbar", Nothing},
    CommandInfo{CompanionSetup, "b_setup", Nothing},
    CommandInfo{ShowMainBar, "b_toolsbarok", Nothing},
    CommandInfo{ShowAddressBar, "b_addrok", Nothing},
    CommandInfo{ShowStatusBar, "b_statusok", Nothing},
    CommandInfo{RefreshAll, "b_refreshall", Nothing},
    CommandInfo{ViewLinksEndingWith, "b_viewspecial", CurrentTab},
    CommandInfo{KillPopups, "b_killpop", Nothing},
    CommandInfo{AddToBlockList, "b_addtohei", TargetTab},
    CommandInfo{Silent, "b_besilent", Nothing},
    CommandInfo{ImportFavourites, "b_importfav", Nothing},
    CommandInfo{ExportFavourites, "b_exportfav", Nothing},
    CommandInfo{AddressBook, "b_openaddrbook", Nothing},
    CommandInfo{EditTranslations, "b_orgtrans", Nothing},
    CommandInfo{ViewText, "b_viewtexts", CurrentTab},
    CommandInfo{StopPopups, "b_stoppopup", Nothing},
    CommandInfo{DesignMode, "sep_sFile2", CurrentTab},
    CommandInfo{RemoveImages, "b_imgs", Nothing},
    CommandInfo{RemoveFlash, "b_swfs", Nothing},
    CommandInfo{About, "b_aboutme", Nothing},
    CommandInfo{HistoryPanel, "b_history", Nothing},
    CommandInfo{FavouritesPanel, "b_showfav", Nothing},
    CommandInfo{BypassProxy, "b_addtononproxy", TargetTab},
    CommandInfo{ReopenClosed, "b_reopenclosed", Nothing},
    CommandInfo{FilterLists, "b_filterlists", Nothing},
    CommandInfo{AllowOnSite, "b_allowsite", CurrentTab},
};

inline constexpr int commandCount = int(commandTable.size());

constexpr bool tableFollowsTheEnum()
{
    for (int i = 0; i < commandCount; ++i)
        if (int(commandTable[size_t(i)].id) != i)
            return false;
    return true;
}
static_assert(tableFollowsTheEnum(), "the command table lists the commands in enum order");

constexpr const CommandInfo& info(Command id)
{
    return commandTable[size_t(id)];
}

constexpr QLatin1String keyOf(Command id)
{
    return QLatin1String(info(id).key);
}

// The first command whose key equals key exactly; nullptr for none.
const CommandInfo* find(QStringView key);

// Generated tools, tested in this order after the fixed keys, each on the
// first letters of the key: "fav", "tra", "tab", "block", "lang", "Proxy".
enum class Route { Favourite, Translation, Tab, Blocked, Language, Proxy };

struct RouteInfo
{
    Route id;
    const char* prefix;
};

inline constexpr std::array routeTable = {
    RouteInfo{Route::Favourite, "fav"}, RouteInfo{Route::Translation, "tra"},
    RouteInfo{Route::Tab, "tab"},       RouteInfo{Route::Blocked, "block"},
    RouteInfo{Route::Language, "lang"}, RouteInfo{Route::Proxy, "Proxy"},
};

inline constexpr int routeCount = int(routeTable.size());

bool onRoute(QStringView key, Route route);

} // namespace cmd
