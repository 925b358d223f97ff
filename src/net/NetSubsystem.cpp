#include "NetSubsystem.h"
#include "ProxyMenu.h"
#include "commandbar/CommandBar.h"
#include "commandbar/Tool.h"
#include "core/CommandDispatcher.h"
#include "core/Keys.h"
#include "core/MainState.h"
#include "core/Switches.h"
#include "platform/ConnectionHelper.h"
#include "platform/TextWindow.h"
#include "platform/browser/AddressUrl.h"
#include "platform/browser/BrowserView.h"
#include "tabs/TabStrip.h"

#include <QApplication>
#include <QMainWindow>

#include <algorithm>

NetSubsystem::NetSubsystem(QWidget& window, MainState& state, commandbar::CommandBar& bar,
                           TabStrip& tabs, ProxyMenu& proxies, platform::Dialogs& dialogs,
                           CompanionBar::Captions captions, CommandDispatcher& commands)
    : window_(window), state_(state), bar_(bar), tabs_(tabs), proxies_(proxies), dialogs_(dialogs),
      captions_(std::move(captions))
{
    commands.on(cmd::Route::Proxy, [this](const CommandContext& c) {
        proxies_.select(c.tool);
        bar_.recalcLayout();
    });
    commands.on(cmd::Command::BypassProxy, [this](const CommandContext& c) {
        addToNonProxy(c.view ? c.view->locationUrl() : QString());
    });
    commands.on(cmd::Command::CompanionBar, [this](const CommandContext&) { openBar(); });
    commands.on(cmd::Command::CompanionSetup, [this](const CommandContext&) {
        // Over the options dialog when that asked, so the list can be edited.
        QWidget* owner = QApplication::activeModalWidget();
        CompanionBar::editProxyList(proxies_.connection().listPath(), dialogs_, channel_,
                                    owner ? owner : &window_)
            ->show();
    });
    commands.on(cmd::Command::OpenFromCompanion, [this](const CommandContext&) {
        const QString text = channel_.text();
        if (QStringView(text).left(8).contains(u"://"))
            tabs_.newTab(text, true);
    });
    QObject::connect(&channel_, &CompanionChannel::changed, &channel_,
                     [this] { onChannelChange(); });
}

void NetSubsystem::start(bool openCompanion, const QString& searchTemplate)
{
    searchTemplate_ = searchTemplate.contains(QLatin1String("{query}"))
                          ? searchTemplate
                          : QStringLiteral("https://duckduckgo.com/?q={query}");
    if (openCompanion)
        openBar();
}

void NetSubsystem::openBar()
{
    if (!switches::isOn(bar_, cmd::Command::CompanionBar)) {
        makeCompanion();
        switches::set(bar_, cmd::Command::CompanionBar, true);
        return;
    }
    if (companion_)
        companion_->gameover();
    switches::set(bar_, cmd::Command::CompanionBar, false);
    companion_ = nullptr;
}

namespace {
// The top right of the page area: the menus, Back and Forward stay in sight.
QPoint companionPlace(QWidget& window, const QWidget& companion)
{
    constexpr int margin = 8;
    const auto* main = qobject_cast<QMainWindow*>(&window);
    const QWidget* area = main && main->centralWidget() ? main->centralWidget() : &window;
    return area->mapToGlobal(
        QPoint(std::max(0, area->width() - companion.frameGeometry().width() - margin), margin));
}
} // namespace

void NetSubsystem::makeCompanion()
{
    companion_ = new CompanionBar(channel_, proxies_.connection().listPath(), searchTemplate_,
                                  captions_, dialogs_, &window_);
    companion_->adjustSize();
    companion_->move(companionPlace(window_, *companion_));
    companion_->show();
}

void NetSubsystem::recaption()
{
    if (!companion_)
        return;
    const QPoint place = companion_->pos();
    companion_->gameover();
    makeCompanion();
    companion_->move(place);
}

void NetSubsystem::onChannelChange()
{
    const QString text = channel_.text();
    if (!text.startsWith(QLatin1String("QUB_")))
        return;
    const QStringView command = QStringView(text).mid(4);
    if (command == QLatin1String("close")) {
        switches::set(bar_, cmd::Command::CompanionBar, false);
        companion_ = nullptr;
        channel_.setText({});
    } else if (command == QLatin1String("proxychange")) {
        proxies_.rebuild();
        channel_.setText({});
    } else if (command == QLatin1String("iconleft") || command == QLatin1String("iconright")) {
        channel_.setText({});
        state_.iconMoved = true;
        // The current tab as the strip knows it: by its view's place.
        if (const platform::BrowserView* current = tabs_.currentView())
            tabs_.activateTab(tabs_.positions().viewAt(tabs_.positions().positionOf(*current)));
    }
    const QString again = channel_.text();
    if (again.contains(QLatin1String("QUB_open"))) {
        tabs_.newTab(again.mid(8), true);
        channel_.setText({});
    }
}

void NetSubsystem::addToNonProxy(const QString& address)
{
    const QString domain = platform::getDomain(address);
    proxies_.connection().addToBypass(proxies_.checkedEntry(), domain);
}
