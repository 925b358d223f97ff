#include "ContentBlocker.h"
#include "core/CommandDispatcher.h"
#include "core/MainState.h"
#include "platform/browser/BrowserView.h"
#include "platform/commandbar/CommandBar.h"
#include "platform/commandbar/Tool.h"
#include "tabs/TabStrip.h"

namespace {

const QString menuKey = QStringLiteral("sub_ContentBlock");

bool checked(const platform::CommandBar& bar, cmd::Command command)
{
    const platform::Tool* tool = bar.tool(menuKey, QLatin1String(cmd::keyOf(command)));
    return tool && tool->checked();
}

} // namespace

ContentBlocker::ContentBlocker(const MainState& state, const platform::CommandBar& bar,
                               TabStrip& tabs, CommandDispatcher& commands)
    : bar_(bar)
{
    QObject::connect(&tabs, &TabStrip::viewCreated, &tabs, [this](platform::BrowserView* view) {
        QObject::connect(view, &platform::BrowserView::documentComplete, view,
                         [this, view] { apply(*view); });
    });
    for (cmd::Command command : {cmd::Command::RemoveImages, cmd::Command::RemoveFlash})
        commands.on(command, [this, &state, &tabs](const CommandContext& c) {
            c.tool.setChecked(!c.tool.checked());
            if (platform::BrowserView* current = tabs.view(state.currentTab))
                apply(*current);
        });
}

void ContentBlocker::apply(platform::BrowserView& view) const
{
    const bool pictures = checked(bar_, cmd::Command::RemoveImages);
    const bool flash = checked(bar_, cmd::Command::RemoveFlash);
    if ((pictures || flash) && view.index() != 0)
        view.document().removeContent(pictures, flash);
}
