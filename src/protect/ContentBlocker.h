#pragma once
// Pictures and Flash taken out of pages once they have loaded, while the
// switches of the Content Blocking menu say so; switching one re-runs the
// pass over the current tab's page.
class CommandDispatcher;
class TabStrip;
struct MainState;

namespace platform {
class BrowserView;
class CommandBar;
} // namespace platform

class ContentBlocker
{
public:
    ContentBlocker(const MainState& state, const platform::CommandBar& bar, TabStrip& tabs,
                   CommandDispatcher& commands);

    void apply(platform::BrowserView& view) const;

private:
    const platform::CommandBar& bar_;
};
