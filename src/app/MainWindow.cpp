#include "MainWindow.h"
#include "AddressToolWidth.h"
#include "AfterFirstPaint.h"
#include "ProgressDisplay.h"
#include "commandbar/SkinLoader.h"
#include "commandbar/widgets/CommandBarWidgets.h"
#include "core/Keys.h"
#include "platform/Dialogs.h"
#include "platform/FreeMemory.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileInfo>
#include <QLabel>
#include <QScreen>
#include <QTimer>
#include <QVBoxLayout>

namespace {
constexpr QLatin1String skinName{"default.tb2"};
} // namespace

MainWindow::MainWindow(const platform::ProgramFolder& folder, platform::Dialogs& dialogs,
                       platform::Shell& shell, platform::BrowserViewFactory& factory,
                       const platform::Clock& clock)
    : dialogs_(dialogs), factory_(factory),
      connection_(folder.own(), factory.forwardingProxy(), dialogs), proxies_(bar_, connection_),
      language_(folder), settings_(folder.own(), bar_, proxies_), clickHook_(clock),
      lastPages_(folder.own()), controls_(*this), clientArea_(new QWidget(this)),
      hideFrame_(new QWidget(this)), stage_(*clientArea_, *hideFrame_),
      display_(*this, *controls_.addressBox(), *controls_.statusText(), *controls_.progress(),
               pacer_),
      commands_(state_, bar_, [this](int index) { return tabs_.strip().view(index); }),
      barEvents_(bar_),
      tabs_(state_, bar_, factory, stage_, display_, clock, commands_, barEvents_),
      history_(*controls_.addressBox(), *controls_.pageIcon(), bar_, tabs_.strip(), tabs_.every(),
               tabs_.presenter(), registry_, dialogs, factory.privateData(), commands_),
      commandSet_(*this, bar_, state_, tabs_, dialogs, shell, factory, commands_, barEvents_),
      favourites_(*this, folder.read(QStringLiteral("res/")), bar_, tabs_.strip(), dialogs, shell,
                  commands_, barEvents_),
      translate_(*this, folder, bar_, tabs_.strip(), dialogs, commands_),
      options_(*this, settings_, factory, bar_, commands_, barEvents_),
      protect_(
          state_, bar_, tabs_.strip(), tabs_.every(), tabs_.presenter(), factory, clickHook_, clock,
          shell, dialogs,
          [this](const QString& key, const QString& fallback) { return caption(key, fallback); },
          commands_),
      languages_(folder, bar_, dialogs, commands_),
      net_(
          *this, state_, bar_, tabs_.strip(), proxies_, dialogs,
          [this](const QString& key, const QString& fallback) { return caption(key, fallback); },
          commands_),
      session_(
          folder.own(), tabs_.strip(), tabs_.every(), factory,
          [this](const QString& key, const QString& fallback) { return caption(key, fallback); }),
      exit_(state_, tabs_.strip(), language_, dialogs, clock)
{
    state_.folder = folder;
    setObjectName(QStringLiteral("frm_Main"));
    clientArea_->setObjectName(QStringLiteral("pic_WB"));
    hideFrame_->setObjectName(QStringLiteral("HideFrame"));

    commands_.on(cmd::Command::Quit, [this](const CommandContext&) { quit(); });
    // The session is written whole and marked clean before the tabs close.
    exit_.addStep([this] { session_.finish(); });
    addShutdownSteps(exit_, settings_, clickHook_, folder.own());
    connect(&languages_, &LanguageMenu::switched, this, [this] {
        protect_.relabel([this] { applyLanguage(); });
        net_.recaption();
        if (platform::BrowserView* view = tabs_.strip().currentView())
            tabs_.presenter().activeTabRefreshed(view);
        bar_.recalcLayout();
    });
    connect(&exit_, &ExitFlow::lastPageRecorded, this,
            [this](const QString& address) { lastPages_.append(address); });
    // Queued: bands shown or hidden have their new places only once the
    // window has laid them out.
    connect(&bar_, &commandbar::CommandBar::layoutRecalculated, this,
            &MainWindow::layoutAddressTool, Qt::QueuedConnection);
}

MainWindow::~MainWindow()
{
    // The bar's widgets speak to the bar, which goes before the window's children.
    delete barWidgets_;
}

MainWindow::Parts MainWindow::parts()
{
    return {state_,
            bar_,
            barWidgets_,
            commands_,
            tabs_.strip(),
            tabs_.presenter(),
            exit_,
            clickHook_,
            history_.addressBar(),
            history_.completer(),
            controls_.addressBox(),
            controls_.statusText(),
            controls_.progress(),
            lastPages_,
            favourites_,
            history_,
            net_,
            connection_,
            session_};
}

bool MainWindow::loadSkin()
{
    const QString skin = state_.folder.read(skinName);
    if (!QFileInfo::exists(skin)) {
        dialogs_.message(QStringLiteral("Cannot find skin file:") + skinName,
                         platform::Dialogs::Buttons::Ok, platform::Dialogs::Icon::None);
        return false;
    }
    QString problem;
    if (auto error = commandbar::SkinLoader::loadFile(bar_, skin))
        problem = error->text(skinName);
    else if (auto tabs = TabBand::skinProblem(bar_))
        problem = tabs->text(skinName);
    if (!problem.isEmpty()) {
        dialogs_.message(problem, platform::Dialogs::Buttons::Ok,
                         platform::Dialogs::Icon::Critical);
        return false;
    }
    applyLanguage();
    return true;
}

void MainWindow::applyLanguage()
{
    state_.baseTitle = language_.apply(bar_, QCoreApplication::applicationVersion());
    setWindowTitle(state_.baseTitle);
}

bool MainWindow::start(const QString& commandLineAddress)
{
    if (!loadSkin())
        return false;
    barWidgets_ = new commandbar::CommandBarWidgets(bar_, *this, pacer_);
    if (QWidget* strip = barWidgets_->container(bar_.band(key::tabsBar)))
        styleTabBand(*strip);
    controls_.host(bar_, *barWidgets_);
    controls_.progress()->info()->clear();
    auto* centre = new QWidget(this);
    auto* column = new QVBoxLayout(centre);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(clientArea_, 1);
    column->addWidget(commandSet_.findBar());
    setCentralWidget(centre);
    history_.fillAddressList();
    settings_.load();
    translate_.start(language_.text(QLatin1String(cmd::keyOf(cmd::Command::EditTranslations))));
    languages_.build();
    factory_.setHomeAddress(settings_.homePage());
    factory_.setSearchAddress(settings_.searchAddress());
    history_.start(settings_.historyDays());

    bar_.setPagePicture(QIcon(controls_.pageIcon()->pixmap()));
    tabs_.strip().createCatchView();
    tabs_.strip().openFirstTab();
    if (!commandLineAddress.isEmpty())
        tabs_.strip().view(1)->navigate(commandLineAddress);
    // What start-up freed goes back to the system once the first page is in
    // and drawn.
    connect(
        tabs_.strip().view(1), &platform::BrowserView::documentComplete, this,
        [this] { QTimer::singleShot(1000, this, [] { platform::returnFreeMemory(); }); },
        Qt::SingleShotConnection);
    lastPages_.restore(tabs_.strip());
    session_.start();
    if (settings_.restoreInBackground())
        tabs_.backgroundRestore().start();
    tabs_.rest().start(settings_.tabRest());
    clickHook_.start();
    // Thousands of favourites take a while to read: the window shows first.
    afterFirstPaint(*this, [this] { favourites_.start(); });
    // Without a window manager a maximise request is not honoured; the
    // geometry makes the window fill the screen all the same.
    if (const QScreen* display = screen())
        setGeometry(display->availableGeometry());
    showMaximized();
    net_.start(settings_.companionAtStart(), settings_.searchAddress());
    return true;
}

void MainWindow::quit()
{
    exit_.askExitQuestion();
    close();
}

void MainWindow::openHandedOver(const QString& address)
{
    if (!address.isEmpty())
        tabs_.strip().newTab(address, true);
    if (isMinimized())
        showMaximized();
    raise();
    activateWindow();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (!exit_.closeRequested()) {
        event->ignore();
        return;
    }
    event->accept();
    QApplication::quit();
}

void MainWindow::resizeEvent(QResizeEvent* event)
{
    QMainWindow::resizeEvent(event);
    if (!isMinimized())
        layoutAddressTool();
}

QString MainWindow::caption(const QString& key, const QString& fallback) const
{
    const QString text = language_.text(key);
    return text.isEmpty() ? fallback : text;
}

void MainWindow::layoutAddressTool()
{
    commandbar::Band* address = bar_.band(key::addressBar);
    commandbar::Band* main = bar_.band(key::mainBar);
    commandbar::Tool* tool = bar_.tool(key::addressBar, key::addressTool);
    if (!address || !main || !tool || !barWidgets_)
        return;
    const int line = bar_.dockLine(*address);
    const bool sameLine = line >= 0 && line == bar_.dockLine(*main);
    tool->setWidth(addressToolWidth(sameLine, barWidgets_->lines().pixelsToTwips(width()),
                                    bar_.leftTwips(*address)));
}
