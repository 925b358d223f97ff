#pragma once
// The main window's shared state, read and written by the subsystems that the
// main window wires together. Plain data; positions count from 1.
#include <QIcon>
#include <QString>
#include <array>
#include <vector>

struct MainState
{
    QString appDir;

    int currentTab = 0;
    int previousTab = 0;
    int tabCount = 0; // highest view index in use
    // By strip position; element 0 is unused.
    std::vector<int> tabView{0};
    std::vector<bool> canGoForward{false};
    std::vector<bool> canGoBack{false};
    std::array<QIcon, 3> tabIcons;

    bool exitAnswered = false;
    bool exitCancelled = false;
    bool shuttingDown = false;

    // The tab chosen through the tab strip; 0 falls back to the current tab.
    int targetTab = 0;
    bool tabMenuArmed = false;
    bool tabMenuPending = false;

    QString baseTitle;

    // Time of day, in whole seconds, of the last click in a page.
    int lastClickTime = 0;
};
