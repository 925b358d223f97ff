#include "InternetOptions.h"
#include "OptionsDialog.h"
#include "Settings.h"
#include "core/BarEventRouter.h"
#include "core/CommandDispatcher.h"
#include "core/Keys.h"
#include "platform/browser/BrowserView.h"

namespace {
constexpr QLatin1String titleEnding{" - Lunched By QUBBROWSER"};
} // namespace

InternetOptions::InternetOptions(QWidget& window, Settings& settings,
                                 platform::BrowserViewFactory& views, commandbar::CommandBar& bar,
                                 CommandDispatcher& commands, BarEventRouter& events)
    : window_(window), settings_(settings), views_(views), bar_(bar), commands_(commands)
{
    commands.on(cmd::Command::InternetOptions, [this](const CommandContext&) { open(0); });
    events.onSecondaryAction(QLatin1String(key::securityTool),
                             [this](commandbar::Tool&) { open(1); });
}

void InternetOptions::open(int page)
{
    if (!dialog_) {
        dialog_ = new OptionsDialog(settings_.homePage(), bar_, commands_, &window_);
        dialog_->setAttribute(Qt::WA_DeleteOnClose);
        dialog_->setWindowTitle(dialog_->windowTitle() + titleEnding);
        QObject::connect(dialog_, &QDialog::finished, &window_, [this](int result) {
            if (result == QDialog::Accepted)
                apply();
            window_.setEnabled(true);
            window_.activateWindow();
        });
    }
    dialog_->showPage(page);
    window_.setEnabled(false);
    // The window's children follow it; the dialog is its own window and stays usable.
    dialog_->setEnabled(true);
    dialog_->show();
    dialog_->raise();
    dialog_->activateWindow();
}

void InternetOptions::apply()
{
    if (dialog_->homePage() != settings_.homePage()) {
        settings_.setHomePage(dialog_->homePage());
        views_.setHomeAddress(settings_.homePage());
    }
    for (cmd::Command command : dialog_->changedSwitches())
        commands_.run(command);
}
