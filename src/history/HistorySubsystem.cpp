#include "HistorySubsystem.h"
#include "AddressCompleter.h"
#include "core/CommandDispatcher.h"
#include "platform/Dialogs.h"
#include "platform/UserRegistry.h"
#include "platform/browser/BrowserView.h"
#include "tabs/ViewEvents.h"

#include <QComboBox>

namespace {
// Pairs of description and patterns; the second pair is kept as it has always been.
const QString openFileFilter = QStringLiteral(
    "*.HTML;*.HTM|*.HTML;*.HTM|*.XML;*.SML|*.XML;*.SML|*.MHT;*.MHT|*.MHT;*.MHT|*.*|*.*");
} // namespace

HistorySubsystem::HistorySubsystem(QComboBox& box, TabStrip& tabs, ViewEvents& events,
                                   platform::UserRegistry& registry, platform::Dialogs& dialogs,
                                   CommandDispatcher& commands)
    : box_(box), registry_(registry), completer_(new AddressCompleter(&box)), addressBar_(box, tabs)
{
    addressBar_.setCompleter(*completer_);
    commands.on(cmd::Command::Go,
                [this](const CommandContext&) { addressBar_.navigateFromAddressBar(false); });
    commands.on(cmd::Command::OpenFile, [this, &dialogs](const CommandContext&) {
        const QString path = dialogs.openFileName(openFileFilter);
        if (path.isEmpty())
            return;
        box_.setEditText(path);
        addressBar_.navigateFromAddressBar(false);
    });
    QObject::connect(
        &events, &ViewEvents::documentHooked, completer_,
        [this](platform::BrowserView* view) { completer_->addAddress(view->locationUrl()); });
    QObject::connect(
        &addressBar_, &AddressBar::addressSent, completer_,
        [this](const QString& address) { platform::recordTypedUrl(registry_, address); });
}

void HistorySubsystem::fillAddressList()
{
    box_.addItem(QStringLiteral("About:Blank"));
    addressBar_.loadTypedUrls(registry_);
    for (int i = box_.count() - 1; i >= 1; --i)
        completer_->addAddress(box_.itemText(i));
    // No entry is chosen until the user chooses one: the box starts empty.
    box_.setCurrentIndex(-1);
}
