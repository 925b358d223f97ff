#include "WindowCommands.h"
#include "commandbar/CommandBar.h"
#include "commandbar/Tool.h"
#include "core/CommandDispatcher.h"
#include "core/Keys.h"
#include "core/ToolKeys.h"
#include "platform/Dialogs.h"
#include "platform/Shell.h"
#include "platform/browser/BrowserView.h"

#include <QCoreApplication>
#include <QUrl>

using cmd::Command;

QString aboutText()
{
    return QCoreApplication::applicationVersion() + u'\n' +
           QStringLiteral("A tabbed web browser.") + u'\n' +
           QStringLiteral("Copyright (C) 2026 the QUB-BROWSER developers. ") +
           QStringLiteral("QUB-BROWSER is free software.");
}

// Each field encoded whole: a page's address or title must not add fields of
// its own (an attachment, a hidden recipient) to the message.
QString mailText(const QString& to, const QString& subject, const QString& body)
{
    return QStringLiteral("mailto:") + QString::fromLatin1(QUrl::toPercentEncoding(to, "@")) +
           QStringLiteral("?subject=") + QString::fromLatin1(QUrl::toPercentEncoding(subject)) +
           QStringLiteral("&body=") + QString::fromLatin1(QUrl::toPercentEncoding(body));
}

namespace {

void openMail(platform::Dialogs& dialogs, platform::Shell& shell, const QString& text)
{
    if (!shell.open(text))
        dialogs.message(QStringLiteral("No mail program is set up on this desktop."),
                        platform::Dialogs::Buttons::Ok, platform::Dialogs::Icon::Information);
}

} // namespace

WindowCommands::WindowCommands(platform::Dialogs& dialogs, platform::Shell& shell,
                               commandbar::CommandBar& bar, platform::PrivateData& privateData,
                               CommandDispatcher& commands)
{
    using platform::PrivateData;
    const std::pair<Command, int> clears[] = {{Command::DeleteCookies, PrivateData::Cookies},
                                              {Command::DeleteTemporaryFiles, PrivateData::Cache}};
    for (const auto& [command, kind] : clears)
        commands.on(command, [&privateData, kind = kind](const CommandContext&) {
            privateData.clear(kind);
        });
    commands.on(Command::AddressBook, [&dialogs, &shell](const CommandContext&) {
        if (!shell.openAddressBook())
            dialogs.message(QStringLiteral("No address book program is installed on this desktop."),
                            platform::Dialogs::Buttons::Ok, platform::Dialogs::Icon::Information);
    });
    commands.on(Command::About, [&dialogs](const CommandContext&) {
        dialogs.message(aboutText(), platform::Dialogs::Buttons::Ok,
                        platform::Dialogs::Icon::Information, QStringLiteral("About"));
    });
    commands.on(Command::NewMail, [&dialogs, &shell](const CommandContext&) {
        openMail(dialogs, shell, mailText({}, {}, {}));
    });
    commands.on(Command::SendLink, [&dialogs, &shell, &bar](const CommandContext& c) {
        const commandbar::Tool* tab = bar.tool(key::tabsBar, keys::tabKey(c.tab));
        openMail(dialogs, shell,
                 mailText({}, tab ? tab->caption() : QString(), c.view->locationUrl()));
    });
    // The desktop names no mail reader, only the program for mailto:, which
    // opens with an empty message.
    commands.on(Command::ReadMail, [&dialogs, &shell](const CommandContext&) {
        openMail(dialogs, shell, QStringLiteral("mailto:"));
    });
}
