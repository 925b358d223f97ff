#pragma once
// The main window: the composition root. It creates the subsystems in
// start-up order, each of which wires itself, runs the start-up steps, and
// hands window events on; it holds no rules of its own.
#include "ExitFlow.h"
#include "HostedControls.h"
#include "InternetOptions.h"
#include "Language.h"
#include "LanguageMenu.h"
#include "LastPages.h"
#include "Settings.h"
#include "WindowDisplay.h"
#include "commandbar/CommandBar.h"
#include "commandbar/widgets/RedrawPacer.h"
#include "commands/CommandsSubsystem.h"
#include "core/BarEventRouter.h"
#include "core/CommandDispatcher.h"
#include "core/MainState.h"
#include "favorites/FavouritesSubsystem.h"
#include "history/HistorySubsystem.h"
#include "net/NetSubsystem.h"
#include "net/ProxyMenu.h"
#include "platform/ClickHook.h"
#include "platform/ConnectionHelper.h"
#include "platform/UserRegistry.h"
#include "platform/browser/WidgetViewStage.h"
#include "protect/ProtectSubsystem.h"
#include "session/SessionSubsystem.h"
#include "tabs/TabSubsystem.h"
#include "translate/TranslateSubsystem.h"

#include <QMainWindow>

namespace platform {
class Dialogs;
class Shell;
} // namespace platform
namespace commandbar {
class CommandBarWidgets;
} // namespace commandbar

class MainWindow : public QMainWindow
{
    Q_OBJECT
public:
    MainWindow(const platform::ProgramFolder& folder, platform::Dialogs& dialogs,
               platform::Shell& shell, platform::BrowserViewFactory& factory,
               const platform::Clock& clock);
    ~MainWindow() override;

    // Runs the start-up; false when the program must end (no usable skin).
    bool start(const QString& commandLineAddress);
    // Asks the exit question, then closes the window as the answer says.
    void quit();
    // A later start's address, in a new tab; the window comes to the front.
    void openHandedOver(const QString& address);

    // The parts, for tests and tools that look inside.
    struct Parts
    {
        MainState& state;
        commandbar::CommandBar& bar;
        commandbar::CommandBarWidgets* barWidgets;
        CommandDispatcher& commands;
        TabStrip& tabs;
        ActiveTabPresenter& presenter;
        ExitFlow& exitFlow;
        const platform::ClickHook& clickHook;
        AddressBar& addressBar;
        AddressCompleter& addressCompleter;
        QComboBox* addressBox;
        QLineEdit* statusText;
        ProgressDisplay* progressDisplay;
        const LastPages& lastPages;
        FavouritesSubsystem& favourites;
        HistorySubsystem& history;
        NetSubsystem& net;
        platform::ConnectionHelper& connection;
        SessionSubsystem& session;
    };
    Parts parts();

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    bool loadSkin();
    void applyLanguage();
    void layoutAddressTool();
    // A text of the language file, or the fallback when it has none.
    QString caption(const QString& key, const QString& fallback) const;

    platform::Dialogs& dialogs_;
    platform::BrowserViewFactory& factory_;
    MainState state_;
    commandbar::CommandBar bar_;
    platform::ConnectionHelper connection_;
    ProxyMenu proxies_;
    Language language_;
    Settings settings_;
    platform::ClickHook clickHook_;
    platform::UserRegistry registry_;
    LastPages lastPages_;
    HostedControls controls_;
    QWidget* clientArea_;
    QWidget* hideFrame_;
    commandbar::RedrawPacer pacer_;
    platform::WidgetViewStage stage_;
    WindowDisplay display_;
    CommandDispatcher commands_;
    BarEventRouter barEvents_;
    TabSubsystem tabs_;
    HistorySubsystem history_;
    CommandsSubsystem commandSet_;
    FavouritesSubsystem favourites_;
    TranslateSubsystem translate_;
    InternetOptions options_;
    ProtectSubsystem protect_;
    LanguageMenu languages_;
    NetSubsystem net_;
    SessionSubsystem session_;
    ExitFlow exit_;
    commandbar::CommandBarWidgets* barWidgets_ = nullptr;
};
