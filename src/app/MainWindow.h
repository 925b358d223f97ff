#pragma once
// The main window: the composition root. It creates the subsystems in
// start-up order, hosts their controls in the command bar, and connects
// events to the objects that handle them; it holds no rules of its own.
#include "ExitFlow.h"
#include "Language.h"
#include "LastPages.h"
#include "MainState.h"
#include "Settings.h"
#include "WindowDisplay.h"
#include "commands/BarEvents.h"
#include "commands/CommandDispatcher.h"
#include "history/AddressBar.h"
#include "platform/ClickHook.h"
#include "platform/ConnectionHelper.h"
#include "platform/UserRegistry.h"
#include "platform/browser/WidgetViewStage.h"
#include "platform/commandbar/CommandBar.h"
#include "tabs/TabStrip.h"
#include "tabs/ViewEvents.h"

#include <QMainWindow>
#include <memory>

class AddressCompleter;
class ProgressDisplay;
class QComboBox;
class QLabel;
class QLineEdit;

namespace platform {
class CommandBarWidgets;
class Dialogs;
} // namespace platform

class MainWindow : public QMainWindow
{
    Q_OBJECT
public:
    MainWindow(const QString& appDir, platform::Dialogs& dialogs,
               platform::BrowserViewFactory& factory, const platform::Clock& clock);
    ~MainWindow() override;

    // Runs the start-up; false when the program must end (no usable skin).
    bool start(const QString& commandLineAddress);
    // Asks the exit question, then closes the window as the answer says.
    void quit();

    MainState& state() { return state_; }
    platform::CommandBar& bar() { return bar_; }
    platform::CommandBarWidgets* barWidgets() const { return barWidgets_; }
    TabStrip& tabs() { return tabs_; }
    ExitFlow& exitFlow() { return exit_; }
    const platform::ClickHook& clickHook() const { return clickHook_; }
    QComboBox* addressBox() const { return addressBox_; }
    AddressBar& addressBar() { return addressBar_; }
    AddressCompleter* addressCompleter() const { return completer_; }
    ViewEvents& viewEvents() { return viewEvents_; }
    ProgressDisplay* progressDisplay() const { return progress_; }
    QLineEdit* statusText() const { return statusText_; }
    const LastPages& lastPages() const { return lastPages_; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    bool loadSkin();
    void hostControls();
    void loadTabIcons();
    void layoutAddressTool();
    void wireView(platform::BrowserView* view);

    platform::Dialogs& dialogs_;
    platform::BrowserViewFactory& factory_;
    MainState state_;
    platform::CommandBar bar_;
    platform::ConnectionHelper connection_;
    Language language_;
    Settings settings_;
    platform::ClickHook clickHook_;
    platform::UserRegistry registry_;
    LastPages lastPages_;

    QWidget* clientArea_;
    QWidget* hideFrame_;
    QComboBox* addressBox_;
    QLabel* pageIcon_;
    QWidget* statusHost_;
    QLineEdit* statusText_;
    ProgressDisplay* progress_;
    AddressCompleter* completer_;

    platform::WidgetViewStage stage_;
    TabStrip tabs_;
    WindowDisplay display_;
    ViewEvents viewEvents_;
    AddressBar addressBar_;
    CommandDispatcher dispatcher_;
    BarEvents barEvents_;
    ExitFlow exit_;
    platform::CommandBarWidgets* barWidgets_ = nullptr;
};
