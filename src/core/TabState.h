#pragma once
// Which tab is shown and where each tab stands. Written only by the tab
// strip (current, previous, count) and by TabPositions (the rest); everyone
// else reads. Positions count from 1; element 0 of each list is unused.
#include <vector>

struct TabState
{
    int currentTab = 0;
    int previousTab = 0;
    int tabCount = 0; // highest view index in use
    std::vector<int> tabView{0};
    std::vector<bool> canGoForward{false};
    std::vector<bool> canGoBack{false};
};
