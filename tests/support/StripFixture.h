#pragma once
// The shipped skin's command bar with a tab strip of fake views, no tab open
// yet: the base of the unit tests of tabs, view events and the address bar.
#include "platform/commandbar/CommandBar.h"
#include "platform/commandbar/SkinLoader.h"
#include "support/Fakes.h"
#include "tabs/TabStrip.h"

struct StripFixture
{
    MainState state;
    platform::CommandBar bar;
    FakeViewFactory factory;
    FakeStage stage;
    TabStrip tabs{state, bar, factory, stage};

    StripFixture() { platform::SkinLoader::loadFile(bar, QStringLiteral(QUB_SKIN_FILE)); }
    FakeBrowserView* view(int index) { return static_cast<FakeBrowserView*>(tabs.view(index)); }
};
