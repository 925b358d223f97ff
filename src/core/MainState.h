#pragma once
// The main window's shared state, split by owner: each part has one writer
// and is read by the subsystems the main window wires together. Plain data.
#include "TabMenuState.h"
#include "TabState.h"
#include "platform/ProgramFolder.h"

#include <QString>

struct MainState : TabState, TabMenuState
{
    // Set at start-up only.
    platform::ProgramFolder folder;
    // Written by the language file's loader.
    QString baseTitle;

    // Set by the exit for good, and by the bulk closes of the tab strip while
    // they run; new windows are refused while it is set.
    bool shuttingDown = false;

    // Written by the view events: time of day, in whole seconds, of the last
    // click in a page.
    int lastClickTime = 0;

    // Set by the companion channel when the companion's icon moved beside the
    // tab strip; the tab strip, asked for the current tab again, lays itself
    // out anew and clears it.
    bool iconMoved = false;
};
