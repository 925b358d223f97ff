#pragma once
// Internet Options: the options dialog opened at a page, over a main window
// that is disabled while it is open. The dialog is not run in a loop of its
// own, so pages go on loading behind it; OK applies the home page and the
// changed switches.
#include "OptionsDialog.h"

#include <QPointer>
#include <QString>

class BarEventRouter;
class CommandDispatcher;
class QWidget;
class Settings;

namespace platform {
class BrowserViewFactory;
} // namespace platform
namespace commandbar {
class CommandBar;
} // namespace commandbar

class InternetOptions
{
public:
    InternetOptions(QWidget& window, Settings& settings, platform::BrowserViewFactory& views,
                    commandbar::CommandBar& bar, CommandDispatcher& commands,
                    BarEventRouter& events);

    void open(int page);

private:
    void apply();

    QWidget& window_;
    Settings& settings_;
    platform::BrowserViewFactory& views_;
    commandbar::CommandBar& bar_;
    CommandDispatcher& commands_;
    QPointer<OptionsDialog> dialog_;
};
