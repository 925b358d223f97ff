#include "HistorySubsystem.h"
#include "AddressCompleter.h"
#include "CURLHistory.h"
#include "DragToOpen.h"
#include "HistoryPanel.h"
#include "commandbar/CommandBar.h"
#include "core/CommandDispatcher.h"
#include "core/Keys.h"
#include "history/HistoryStore.h"
#include "platform/Dialogs.h"
#include "platform/UserRegistry.h"
#include "platform/browser/BrowserView.h"
#include "tabs/ActiveTabPresenter.h"
#include "tabs/EveryTabSignals.h"
#include "tabs/Tabs.h"

#include <QComboBox>
#include <QLineEdit>

namespace {
// Pairs of description and patterns; the second pair is kept as it has always been.
constexpr QLatin1String openFileFilter{
    "*.HTML;*.HTM|*.HTML;*.HTM|*.XML;*.SML|*.XML;*.SML|*.MHT;*.MHT|*.MHT;*.MHT|*.*|*.*"};
} // namespace

HistorySubsystem::HistorySubsystem(QComboBox& box, QWidget& pageIcon, commandbar::CommandBar& bar,
                                   Tabs& tabs, const EveryTabSignals& every,
                                   ActiveTabPresenter& events, platform::UserRegistry& registry,
                                   platform::Dialogs& dialogs, platform::PrivateData& privateData,
                                   CommandDispatcher& commands)
    : box_(box), bar_(bar), registry_(registry), dialogs_(dialogs),
      completer_(new AddressCompleter(&box)), addressBar_(box, tabs),
      panel_(new HistoryPanel(tree_, tabs, box.parentWidget()))
{
    panel_->hide();
    new DragToOpen(box, pageIcon, tabs, every, addressBar_);
    // A restored tab not shown yet names a page it has not visited.
    const auto recordTab = [this](platform::BrowserView* view) {
        if (view->index() >= 1 && !view->waitsToBeShown())
            record(view);
    };
    QObject::connect(&every, &EveryTabSignals::documentComplete, &tree_, recordTab);
    QObject::connect(&every, &EveryTabSignals::titleChanged, &tree_, recordTab);
    // The tree fills when its page comes to the front or the side bar shows it.
    QObject::connect(&bar_, &commandbar::CommandBar::childBandChanged, &tree_,
                     [this](commandbar::Band* page) {
                         if (page->key() == QLatin1String(key::historyPage))
                             refreshHistory();
                     });
    QObject::connect(&bar_, &commandbar::CommandBar::bandShown, &tree_,
                     [this](commandbar::Band* side) {
                         if (side->key() == QLatin1String(key::leftBar) &&
                             side->currentChild() == QLatin1String(key::historyPage))
                             refreshHistory();
                     });
    commands.on(cmd::Command::DeleteHistory, [this, &privateData](const CommandContext&) {
        privateData.clear(platform::PrivateData::History);
        clear();
    });
    addressBar_.setCompleter(*completer_);
    QObject::connect(box.lineEdit(), &QLineEdit::textEdited, completer_,
                     &AddressCompleter::suggest);
    commands.on(cmd::Command::Go,
                [this](const CommandContext&) { addressBar_.navigateFromAddressBar(false); });
    commands.on(cmd::Command::OpenFile, [this, &dialogs](const CommandContext&) {
        const QString path = dialogs.openFileName(openFileFilter);
        if (path.isEmpty())
            return;
        box_.setEditText(path);
        addressBar_.navigateFromAddressBar(false, AddressBar::Origin::Placed);
    });
    QObject::connect(
        &events, &ActiveTabPresenter::documentHooked, completer_,
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

HistorySubsystem::~HistorySubsystem() = default;

void HistorySubsystem::start(int keptDays)
{
    store_ = std::make_unique<HistoryStore>(HistoryStore::userPath());
    if (!store_->problem().isEmpty())
        dialogs_.message(store_->problem(), platform::Dialogs::Buttons::Ok,
                         platform::Dialogs::Icon::Warning);
    store_->expire(keptDays);
    completer_->setHistory(*store_);
    if (commandbar::Tool* tool = bar_.tool(key::historyPage, key::historyTree))
        tool->setControl(panel_);
}

void HistorySubsystem::record(platform::BrowserView* view)
{
    const QString address = view->locationUrl();
    if (store_ && !address.isEmpty() &&
        !address.startsWith(QLatin1String("about:"), Qt::CaseInsensitive))
        store_->addUrl(address, view->title());
}

CURLHistory* HistorySubsystem::snapshot()
{
    if (store_ && !history_)
        history_ = std::make_unique<CURLHistory>(*store_, dialogs_);
    return history_.get();
}

void HistorySubsystem::refreshHistory()
{
    if (CURLHistory* history = snapshot())
        tree_.refresh(*history);
}

void HistorySubsystem::clear()
{
    // Nothing typed may reveal a page visited: the typed list and this run's
    // suggestions go with the store.
    platform::forgetTypedUrls(registry_);
    addressBar_.dropTypedUrls();
    completer_->forget();
    if (CURLHistory* history = snapshot()) {
        history->Clear();
        tree_.refresh(*history);
    }
}
