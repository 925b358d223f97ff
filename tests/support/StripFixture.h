#pragma once
// The shipped skin's command bar with the tabs subsystem on fake views, no tab
// open yet: the base of the unit tests of tabs, view events and the address
// bar.
#include "commandbar/CommandBar.h"
#include "commandbar/SkinLoader.h"
#include "core/BarEventRouter.h"
#include "core/CommandDispatcher.h"
#include "support/Fakes.h"
#include "tabs/TabSubsystem.h"

struct StripFixture
{
    MainState state;
    commandbar::CommandBar bar;
    FakeViewFactory factory;
    FakeStage stage;
    FakeDisplay display;
    SettableClock clock;
    CommandDispatcher commands{state, bar, [this](int index) { return tabs.view(index); }};
    BarEventRouter events{bar};
    TabSubsystem subsystem{state, bar, factory, stage, display, clock, commands, events};
    TabStrip& tabs = subsystem.strip();
    TabMenu& menu = subsystem.menu();

    StripFixture() { commandbar::SkinLoader::loadFile(bar, QStringLiteral(QUB_SKIN_FILE)); }
    FakeBrowserView* view(int index) { return static_cast<FakeBrowserView*>(tabs.view(index)); }
};
