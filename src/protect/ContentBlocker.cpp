#include "ContentBlocker.h"
#include "core/CommandDispatcher.h"
#include "core/MainState.h"
#include "core/Switches.h"
#include "platform/browser/BrowserView.h"
#include "tabs/ActiveTabPresenter.h"
#include "tabs/EveryTabSignals.h"
#include "tabs/Tabs.h"

using cmd::Command;

ContentBlocker::ContentBlocker(const MainState& state, commandbar::CommandBar& bar, Tabs& tabs,
                               const EveryTabSignals& every, ActiveTabPresenter& events,
                               CommandDispatcher& commands)
    : bar_(bar)
{
    QObject::connect(&events, &ActiveTabPresenter::documentHooked, &events,
                     [this](platform::BrowserView* view) { apply(*view); });
    QObject::connect(&every, &EveryTabSignals::documentComplete, &events,
                     [this](platform::BrowserView* view) { apply(*view); });
    for (Command command : {Command::RemoveImages, Command::RemoveFlash})
        commands.on(command, [&bar, &state, &tabs, command](const CommandContext&) {
            switches::set(bar, command, !switches::isOn(bar, command));
            // Told even when both are off, so frames that load later keep theirs.
            if (platform::BrowserView* current = tabs.view(state.currentTab))
                current->document().removeContent(switches::isOn(bar, Command::RemoveImages),
                                                  switches::isOn(bar, Command::RemoveFlash));
        });
}

void ContentBlocker::apply(platform::BrowserView& view) const
{
    const bool pictures = switches::isOn(bar_, Command::RemoveImages);
    const bool flash = switches::isOn(bar_, Command::RemoveFlash);
    if ((pictures || flash) && view.index() != 0)
        view.document().removeContent(pictures, flash);
}
