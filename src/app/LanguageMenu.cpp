#include "LanguageMenu.h"
#include "commandbar/AddBandTool.h"
#include "commandbar/Band.h"
#include "commandbar/CommandBar.h"
#include "commandbar/Tool.h"
#include "core/CommandDispatcher.h"
#include "core/Keys.h"
#include "core/ToolKeys.h"
#include "platform/Dialogs.h"
#include "platform/ini/ProfileFile.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>

namespace {
constexpr QLatin1String section{"QUB_Main"};
constexpr QLatin1String activeName{"lng.ini"};

QString languageName(const QString& path)
{
    return platform::ReadIniString(path, section, QLatin1String(LanguageMenu::nameKey));
}

// The whole file or nothing: a switch cut short leaves the old language.
bool copyOver(const QString& source, const QString& target)
{
    QFile in(source);
    if (!in.open(QIODevice::ReadOnly))
        return false;
    QSaveFile out(target);
    return out.open(QIODevice::WriteOnly) && out.write(in.readAll()) >= 0 && out.commit();
}
} // namespace

LanguageMenu::LanguageMenu(platform::ProgramFolder folder, commandbar::CommandBar& bar,
                           platform::Dialogs& dialogs, CommandDispatcher& commands)
    : folder_(std::move(folder)), bar_(bar), dialogs_(dialogs)
{
    commands.on(cmd::Route::Language, [this](const CommandContext& c) { choose(c.tool); });
}

void LanguageMenu::build()
{
    const QStringList files = folder_.names({QStringLiteral("*.lng")});
    for (int i = 0; i < files.size(); ++i) {
        QString caption = languageName(folder_.read(files[i]));
        if (caption.isEmpty())
            caption = QFileInfo(files[i]).completeBaseName();
        if (commandbar::Tool* tool = commandbar::AddBandTool(
                bar_, QLatin1String(key::languageMenu), keys::languageKey(i + 1),
                keys::languageId(i + 1), QStringLiteral("0"), caption, false)) {
            tool->setTag(files[i]);
            tool->setCheckable(true);
        }
    }
    checkCurrent();
}

void LanguageMenu::choose(const commandbar::Tool& tool)
{
    const QString source = folder_.read(tool.tag());
    if (!QFileInfo::exists(source)) {
        dialogs_.message(QStringLiteral("Cannot find source file"), platform::Dialogs::Buttons::Ok,
                         platform::Dialogs::Icon::None);
        return;
    }
    if (!copyOver(source, folder_.own(activeName))) {
        dialogs_.message(QStringLiteral("Cannot write %1")
                             .arg(QDir::toNativeSeparators(folder_.own(activeName))),
                         platform::Dialogs::Buttons::Ok, platform::Dialogs::Icon::Critical);
        return;
    }
    checkCurrent();
    emit switched();
}

// The entry whose language names itself as lng.ini does.
void LanguageMenu::checkCurrent()
{
    commandbar::Band* menu = bar_.band(QLatin1String(key::languageMenu));
    if (!menu)
        return;
    const QString current = languageName(folder_.read(activeName));
    for (int i = 0; i < menu->count(); ++i) {
        commandbar::Tool* tool = menu->at(i);
        tool->setChecked(!current.isEmpty() && languageName(folder_.read(tool->tag())) == current);
    }
}
