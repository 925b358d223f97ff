#include "FavouritesSubsystem.h"
#include "AddFavouriteDialog.h"
#include "FavouritesPanel.h"
#include "FavouritesTransfer.h"
#include "OrganiseFavouritesDialog.h"
#include "commandbar/CommandBar.h"
#include "core/CommandDispatcher.h"
#include "core/Keys.h"
#include "core/Switches.h"
#include "core/ToolKeys.h"
#include "platform/Dialogs.h"
#include "platform/browser/BrowserView.h"
#include "tabs/Tabs.h"

#include <QDir>
#include <QRegularExpression>

namespace {
// Pairs of description and patterns: bookmark files first, as every browser
// writes them, then everything.
constexpr QLatin1String bookmarkFilter{"Bookmark files|*.html;*.htm|All files|*.*"};
// The tool's caption without its menu mnemonic.
QString dialogTitle(const commandbar::Tool& tool)
{
    static const QRegularExpression mnemonic(QStringLiteral("&(?!&)"));
    return QString(tool.caption()).remove(mnemonic);
}

} // namespace

FavouritesSubsystem::FavouritesSubsystem(QWidget& window, const QString& pictures,
                                         commandbar::CommandBar& bar, Tabs& tabs,
                                         platform::Dialogs& dialogs, platform::Shell& shell,
                                         CommandDispatcher& commands, BarEventRouter& events)
    : window_(window), bar_(bar), dialogs_(dialogs), folder_(FavouritesFolder::userRoot()),
      store_(folder_.root(), dialogs, shell), watch_(store_), menus_(bar, shell),
      switches_(bar, commands, events),
      panel_(new FavouritesPanel(store_, tabs, dialogs, shell, pictures, &window))
{
    panel_->hide();
    QObject::connect(&store_, &FavouritesStore::rebuilt, &store_,
                     [this] { menus_.build(store_.scan()); });
    QObject::connect(&store_, &FavouritesStore::renamed, &store_, [this](int entry) {
        menus_.setCaption(entry, store_.scan().items()[size_t(store_.scan().itemOf(entry))].name);
    });

    commands.on(cmd::Route::Favourite, [this, &tabs](const CommandContext& c) {
        // "— NONE —" carries no file, whatever number its identifier gives.
        if (c.tool.tag().isEmpty())
            return;
        const QString address = store_.open(keys::favouriteEntry(c.tool.id()));
        if (!address.isEmpty())
            tabs.openEntry(address);
    });
    commands.on(cmd::Command::AddFavourite, [this](const CommandContext& c) {
        if (c.view->locationUrl().isEmpty() || !ensureFolder())
            return;
        AddFavouriteDialog dialog(folder_.root(), c.view->locationUrl(), c.view->title(), dialogs_,
                                  &window_);
        dialog.exec();
        store_.refresh();
    });
    commands.on(cmd::Command::OrganiseFavourites, [this](const CommandContext&) { organise(); });
    commands.on(cmd::Command::FavouriteIcons, [this](const CommandContext&) {
        switches::set(bar_, cmd::Command::FavouriteIcons,
                      !switches::isOn(bar_, cmd::Command::FavouriteIcons));
        store_.refresh();
    });
    commands.on(cmd::Command::ImportFavourites,
                [this](const CommandContext& c) { importFavourites(dialogTitle(c.tool)); });
    commands.on(cmd::Command::ExportFavourites,
                [this](const CommandContext& c) { exportFavourites(dialogTitle(c.tool)); });
}

void FavouritesSubsystem::start()
{
    if (commandbar::Tool* tool = bar_.tool(key::favouritesPage, key::favouritesTree))
        tool->setControl(panel_);
    ensureFolder();
    store_.refresh();
}

bool FavouritesSubsystem::ensureFolder()
{
    if (folder_.ensure())
        return true;
    dialogs_.message(
        QStringLiteral("The favourites folder %1 could not be made.").arg(folder_.root()),
        platform::Dialogs::Buttons::Ok, platform::Dialogs::Icon::Warning);
    return false;
}

void FavouritesSubsystem::organise()
{
    if (ensureFolder()) {
        OrganiseFavouritesDialog dialog(folder_.root(), dialogs_, &window_);
        dialog.exec();
    }
    store_.refresh();
}

void FavouritesSubsystem::importFavourites(const QString& title)
{
    const QString path = dialogs_.openFileName(bookmarkFilter, title, QDir::homePath());
    if (path.isEmpty() || !ensureFolder())
        return;
    const FavouritesTransfer::Result result = FavouritesTransfer(folder_.root()).importFile(path);
    store_.refresh();
    QString problem = result.problem;
    if (problem.isEmpty() && result.favourites == 0 && result.folders == 0)
        problem = QStringLiteral("No new bookmarks were found in %1.").arg(path);
    if (!problem.isEmpty())
        dialogs_.message(problem, platform::Dialogs::Buttons::Ok, platform::Dialogs::Icon::Warning);
}

void FavouritesSubsystem::exportFavourites(const QString& title)
{
    const QString path = dialogs_.saveFileName(
        title, QDir::homePath() + QStringLiteral("/bookmarks.html"), bookmarkFilter);
    if (path.isEmpty())
        return;
    const QString problem =
        FavouritesTransfer(folder_.root()).exportFile(FavouritesScan::read(folder_.root()), path);
    if (!problem.isEmpty())
        dialogs_.message(problem, platform::Dialogs::Buttons::Ok, platform::Dialogs::Icon::Warning);
}
