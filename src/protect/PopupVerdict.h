#pragma once
// Whether the user asked for the window a page wants to open: a pure function
// of what is known at the request, so every rule can be tried in isolation.
#include <QString>

struct PopupFacts
{
    // The tool that turns blocking on.
    bool stopPopups = false;
    // The request comes from the current tab, and that tab has an address.
    bool fromCurrentTab = false;
    bool hasAddress = false;
    // The page's focused element: none when its tag is empty. Its value is
    // what the element holds by default: a link's target address.
    QString activeTag;
    QString activeValue;
    QString activeInputType;
    // A button went down recently, and what lies at the point where it did.
    bool buttonWentDown = false;
    bool elementAtPoint = false;
    QString pointValue;
    // Seconds since midnight now, and the last click in a page in whole
    // seconds as it is kept.
    double now = 0;
    int lastClickTime = 0;
    // Some frame of the page has a focused element.
    bool frameHasActiveElement = false;
    // The user chose "open link in a new tab" (or window) from the page's menu.
    bool chosenFromPageMenu = false;
    // The engine saw the user act in the requesting frame just now. A page
    // can stage everything else the rules look at, so nothing passes
    // without it.
    bool userActivated = false;
};

// The detection: true when the facts show the user asked for the window.
bool userAskedForWindow(const PopupFacts& facts);
// The decision: a window is opened unless blocking is on and nobody asked.
bool windowAllowed(const PopupFacts& facts);
