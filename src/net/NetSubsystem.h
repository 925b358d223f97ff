#pragma once
// Connection and companion tools: the Proxy menu's entries and the bypass
// command, the companion bar shown and hidden by its tool, and the channel
// through which the companion asks the browser to open pages, rebuild the
// proxy menu, lay out the tabs or note that it closed.
#include "CompanionBar.h"
#include "CompanionChannel.h"

class CommandDispatcher;
class ProxyMenu;
class TabStrip;
struct MainState;

namespace commandbar {
class CommandBar;
} // namespace commandbar

class NetSubsystem
{
public:
    NetSubsystem(QWidget& window, MainState& state, commandbar::CommandBar& bar, TabStrip& tabs,
                 ProxyMenu& proxies, platform::Dialogs& dialogs, CompanionBar::Captions captions,
                 CommandDispatcher& commands);

    // searchTemplate: where the companion's searches go.
    void start(bool openCompanion, const QString& searchTemplate);
    // Shows the companion when it is closed, closes it when it is open.
    void openBar();
    // After a language switch: an open companion shows the new captions.
    void recaption();
    CompanionChannel& channel() { return channel_; }
    CompanionBar* companion() const { return companion_; }

private:
    void onChannelChange();
    void makeCompanion();
    void addToNonProxy(const QString& address);

    QWidget& window_;
    MainState& state_;
    commandbar::CommandBar& bar_;
    TabStrip& tabs_;
    ProxyMenu& proxies_;
    platform::Dialogs& dialogs_;
    CompanionBar::Captions captions_;
    CompanionChannel channel_;
    QPointer<CompanionBar> companion_;
    QString searchTemplate_;
};
