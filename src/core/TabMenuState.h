#pragma once
// The handshake that swaps the bar's customise menu for the tab menu while
// the pointer is over a tab, and the tab that menu acts on. Written only by
// TabMenu.
struct TabMenuState
{
    // The tab chosen through the tab strip; 0 falls back to the current tab.
    int targetTab = 0;
    bool tabMenuArmed = false;
    bool tabMenuPending = false;
};
