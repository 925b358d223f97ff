#include "BlockedList.h"
#include "commandbar/AddBandTool.h"
#include "commandbar/Band.h"
#include "commandbar/CommandBar.h"
#include "commandbar/Tool.h"
#include "core/CommandDispatcher.h"
#include "core/Keys.h"
#include "core/ToolKeys.h"
#include "platform/browser/BrowserView.h"
#include "tabs/Tabs.h"

BlockedList::BlockedList(commandbar::CommandBar& bar, Tabs& tabs, CommandDispatcher& commands)
    : bar_(bar)
{
    commands.on(cmd::Route::Blocked, [this, &tabs](const CommandContext& c) {
        const QString target = address(keys::blockedEntry(c.tool.key()));
        if (!target.isEmpty())
            tabs.openEntry(target);
    });
    commands.on(cmd::Command::ReopenClosed, [this, &tabs](const CommandContext&) {
        if (!closed_.isEmpty())
            tabs.newTab(closed_.takeLast(), true);
    });
}

// The count follows the first ":" of the caption (the whole caption when it
// has none), and the caption keeps what comes up to it.
int BlockedList::count() const
{
    const commandbar::Tool* counter =
        bar_.tool(QLatin1String(key::statusBar), QLatin1String(key::blockedCountTool));
    if (!counter)
        return 0;
    const QString& caption = counter->caption();
    return keys::leadingValue(QStringView(caption).mid(caption.indexOf(u':') + 1));
}

// A count of 0 leaves the label alone: nothing was blocked, so none is shown.
void BlockedList::setCount(int count)
{
    if (count <= 0)
        return;
    if (commandbar::Tool* counter =
            bar_.tool(QLatin1String(key::statusBar), QLatin1String(key::blockedCountTool)))
        counter->setCaption(counter->caption().left(counter->caption().indexOf(u':') + 1) +
                            QString::number(count));
}

void BlockedList::record(const QString& shortText, const QString& address)
{
    if (!bar_.band(QLatin1String(key::blockedMenu)))
        return;
    const int shown = count() + 1;
    setCount(shown);
    add(QString::number(shown) + QStringLiteral(". ") + shortText, address);
}

void BlockedList::recordClosed(const QString& shortTitle, const QString& address)
{
    constexpr int kept = 100;
    if (closed_.size() == kept)
        closed_.removeFirst();
    closed_.append(address);
    add(shortTitle, address);
}

void BlockedList::add(const QString& caption, const QString& address)
{
    commandbar::Band* menu = bar_.band(QLatin1String(key::blockedMenu));
    if (!menu)
        return;
    if (menu->count() >= capacity) {
        bar_.removeTool(*menu, 0);
        addresses_.removeFirst();
        for (int i = 0; i < menu->count(); ++i)
            menu->at(i)->setKey(keys::blockedKey(i + 1));
    }
    const int n = menu->count();
    const QString key = keys::blockedKey(n + 1);
    // The shared tool of that name may hold an earlier entry's identifier.
    bar_.removeCollectionTool(key);
    commandbar::AddBandTool(bar_, QLatin1String(key::blockedMenu), key, keys::blockedId(n + 1),
                            QStringLiteral("0"), caption, false);
    addresses_.append(address);
    bar_.recalcLayout();
}
