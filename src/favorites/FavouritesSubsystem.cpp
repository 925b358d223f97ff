#include "FavouritesSubsystem.h"
#include "OrganiseFavouritesDialog.h"
#include "core/CommandDispatcher.h"
#include "platform/Dialogs.h"

FavouritesSubsystem::FavouritesSubsystem(QWidget& window, platform::Dialogs& dialogs,
                                         CommandDispatcher& commands)
    : window_(window), dialogs_(dialogs), folder_(FavouritesFolder::userRoot())
{
    commands.on(cmd::Command::OrganiseFavourites, [this](const CommandContext&) { organise(); });
}

void FavouritesSubsystem::organise()
{
    if (!folder_.ensure()) {
        dialogs_.message(
            QStringLiteral("The favourites folder %1 could not be made.").arg(folder_.root()),
            platform::Dialogs::Buttons::Ok, platform::Dialogs::Icon::Warning);
        return;
    }
    OrganiseFavouritesDialog dialog(folder_.root(), dialogs_, &window_);
    dialog.exec();
}
