#pragma once
// The favourites subsystem: the favourites folder and the commands on it.
#include "FavouritesFolder.h"

class CommandDispatcher;
class QWidget;

namespace platform {
class Dialogs;
}

class FavouritesSubsystem
{
public:
    FavouritesSubsystem(QWidget& window, platform::Dialogs& dialogs, CommandDispatcher& commands);

private:
    void organise();

    QWidget& window_;
    platform::Dialogs& dialogs_;
    FavouritesFolder folder_;
};
