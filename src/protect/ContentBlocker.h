#pragma once
// Pictures and Flash taken out of pages while the switches of the Content
// Blocking menu say so: each time a view's document is hooked (its title
// came, the page changed while loading, its tab came to the front) and once
// more when it has loaded, so a page that never finishes loses them too.
// Switching one re-runs the pass over the current tab's page.
class CommandDispatcher;
class EveryTabSignals;
class Tabs;
class ActiveTabPresenter;
struct MainState;

namespace platform {
class BrowserView;
} // namespace platform
namespace commandbar {
class CommandBar;
} // namespace commandbar

class ContentBlocker
{
public:
    ContentBlocker(const MainState& state, commandbar::CommandBar& bar, Tabs& tabs,
                   const EveryTabSignals& every, ActiveTabPresenter& events,
                   CommandDispatcher& commands);

    void apply(platform::BrowserView& view) const;

private:
    const commandbar::CommandBar& bar_;
};
