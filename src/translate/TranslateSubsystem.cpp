#include "TranslateSubsystem.h"
#include "commandbar/CommandBar.h"
#include "core/CommandDispatcher.h"
#include "core/Keys.h"
#include "core/ToolKeys.h"
#include "platform/TextWindow.h"
#include "platform/browser/BrowserView.h"
#include "tabs/Tabs.h"

#include <QFile>

TranslateSubsystem::TranslateSubsystem(QWidget& window, platform::ProgramFolder folder,
                                       commandbar::CommandBar& bar, Tabs& tabs,
                                       platform::Dialogs& dialogs, CommandDispatcher& commands)
    : window_(window), folder_(std::move(folder)), bar_(bar), dialogs_(dialogs)
{
    commands.on(cmd::Route::Translation, [this, &tabs](const CommandContext& c) {
        platform::BrowserView* view = tabs.currentView();
        const QString address =
            view ? list_.serviceAddress(keys::translationEntry(c.tool.id()), view->locationUrl())
                 : QString();
        if (!address.isEmpty())
            tabs.newTab(address, true);
    });
    commands.on(cmd::Command::EditTranslations, [this](const CommandContext&) {
        // Edited, the list becomes the user's own copy; the shipped one is
        // its first text.
        const QString own = folder_.own(QLatin1String(TranslationList::fileName));
        if (listPath() != own && QFile::copy(listPath(), own))
            QFile::setPermissions(own, QFile::ReadOwner | QFile::WriteOwner);
        platform::TextWindow::editFile(own, dialogs_, &window_)->show();
    });
}

QString TranslateSubsystem::listPath() const
{
    return folder_.read(QLatin1String(TranslationList::fileName));
}

void TranslateSubsystem::start(const QString& editCaption)
{
    commandbar::Band* menu = bar_.band(QLatin1String(key::translateMenu));
    if (!menu)
        return;
    auto add = [&](const QString& key, int id, commandbar::ControlType type,
                   const QString& caption) {
        commandbar::Tool tool(bar_, key, id, type);
        tool.setCaption(caption);
        bar_.insertTool(*menu, tool);
    };
    const QLatin1String edit = cmd::keyOf(cmd::Command::EditTranslations);
    add(QLatin1String(edit), 1398, commandbar::ControlType::Button,
        editCaption.isEmpty() ? QStringLiteral("Edit Translation List...") : editCaption);
    add(QStringLiteral("spe_sTans1"), 1399, commandbar::ControlType::Separator, {});
    list_ = TranslationList::read(listPath());
    int services = 0;
    int separators = 0;
    for (const TranslationList::Line& line : list_.lines()) {
        if (line.separator) {
            ++separators;
            add(keys::translationSeparatorKey(separators), keys::translationSeparatorId(separators),
                commandbar::ControlType::Separator, {});
        } else {
            ++services;
            add(keys::translationKey(services), keys::translationId(services),
                commandbar::ControlType::Button, line.name);
        }
    }
}
