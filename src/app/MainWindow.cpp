#include "MainWindow.h"
#include "AddressToolWidth.h"
#include "Keys.h"
#include "ProgressDisplay.h"
#include "history/AddressCompleter.h"
#include "platform/Dialogs.h"
#include "platform/commandbar/CommandBarWidgets.h"
#include "platform/commandbar/SkinLoader.h"

#include <QApplication>
#include <QCloseEvent>
#include <QComboBox>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QVBoxLayout>

namespace {

const QString skinName = QStringLiteral("default.tb2");

// The tab band's buttons drawn as tabs, the active one white and raised. Bold
// would widen a caption past the size its button was given, and clip it.
const char* const tabStyle = R"(
QToolBar#tb_Tabs { spacing: 0px; }
QToolBar#tb_Tabs QToolButton {
    border: 1px solid #b6b6b6; border-bottom-color: #9a9a9a;
    border-top-left-radius: 6px; border-top-right-radius: 6px;
    background: #dedede; color: #4a4a4a; padding: 3px 10px; margin: 3px 0px 0px 2px;
    min-width: 100px;
}
QToolBar#tb_Tabs QToolButton:hover:!checked { background: #ececec; }
QToolBar#tb_Tabs QToolButton:checked {
    background: #ffffff; border-bottom-color: #ffffff; color: #000000; margin-top: 1px;
}
)";

} // namespace

MainWindow::MainWindow(const QString& appDir, platform::Dialogs& dialogs,
                       platform::BrowserViewFactory& factory, const platform::Clock& clock)
    : dialogs_(dialogs), factory_(factory), language_(appDir), settings_(appDir, bar_, connection_),
      clickHook_(clock), lastPages_(appDir), clientArea_(new QWidget(this)),
      hideFrame_(new QWidget(this)), addressBox_(new QComboBox(this)), pageIcon_(new QLabel(this)),
      statusHost_(new QWidget(this)), statusText_(new QLineEdit(statusHost_)),
      progress_(new ProgressDisplay(this)), completer_(new AddressCompleter(this)),
      stage_(*clientArea_, *hideFrame_), tabs_(state_, bar_, factory, stage_),
      display_(*this, *addressBox_, *statusText_, *progress_),
      viewEvents_(state_, bar_, tabs_, display_, clock), addressBar_(*addressBox_, tabs_),
      dispatcher_(state_, bar_, tabs_, display_, addressBar_), barEvents_(state_, bar_),
      exit_(state_, bar_, tabs_, settings_, language_, dialogs, clock, clickHook_)
{
    state_.appDir = appDir;
    setObjectName(QStringLiteral("frm_Main"));
    // The hosted controls show once the command bar takes them into its tools.
    for (QWidget* control : {static_cast<QWidget*>(addressBox_), static_cast<QWidget*>(pageIcon_),
                             statusHost_, static_cast<QWidget*>(progress_)})
        control->hide();
    clientArea_->setObjectName(QStringLiteral("pic_WB"));
    hideFrame_->setObjectName(QStringLiteral("HideFrame"));
    addressBox_->setObjectName(QStringLiteral("cbo_Input"));
    addressBox_->setInsertPolicy(QComboBox::NoInsert);
    addressBar_.setCompleter(*completer_);
    pageIcon_->setObjectName(QStringLiteral("pic_ieicon"));
    pageIcon_->setPixmap(QIcon::fromTheme(QStringLiteral("text-html")).pixmap(16, 16));
    pageIcon_->setContentsMargins(4, 0, 4, 0);

    statusHost_->setObjectName(QStringLiteral("pic_ST"));
    statusText_->setObjectName(QStringLiteral("txt_status"));
    statusText_->setReadOnly(true);
    statusText_->setFrame(false);
    auto* statusLayout = new QVBoxLayout(statusHost_);
    statusLayout->setContentsMargins(0, 0, 0, 0);
    statusLayout->addWidget(statusText_, 0, Qt::AlignVCenter);

    connect(&bar_, &platform::CommandBar::toolClicked, &dispatcher_, &CommandDispatcher::dispatch);
    connect(&bar_, &platform::CommandBar::toolSecondaryAction, &dispatcher_,
            &CommandDispatcher::secondaryAction);
    connect(&bar_, &platform::CommandBar::toolHovered, &tabs_, &TabStrip::reportTool);
    connect(&bar_, &platform::CommandBar::bandDropDown, &barEvents_, &BarEvents::dropDown);
    connect(&bar_, &platform::CommandBar::bandShown, &barEvents_, &BarEvents::bandShown);
    // Queued: bands shown or hidden have their new places only once the
    // window has laid them out.
    connect(&bar_, &platform::CommandBar::layoutRecalculated, this, &MainWindow::layoutAddressTool,
            Qt::QueuedConnection);
    connect(&dispatcher_, &CommandDispatcher::quitRequested, this, &MainWindow::quit);
    connect(&tabs_, &TabStrip::viewCreated, this, &MainWindow::wireView);
    connect(&tabs_, &TabStrip::newTabActivated, &viewEvents_, &ViewEvents::newTabActivated);
    connect(&tabs_, &TabStrip::activeTabRefreshed, &viewEvents_, &ViewEvents::activeTabRefreshed);
    connect(&tabs_, &TabStrip::tabLeft, &viewEvents_, &ViewEvents::tabLeft);
    connect(&viewEvents_, &ViewEvents::documentHooked, completer_,
            [this](platform::BrowserView* view) { completer_->addAddress(view->locationUrl()); });
    connect(&addressBar_, &AddressBar::addressSent, this,
            [this](const QString& address) { platform::recordTypedUrl(registry_, address); });
    connect(&exit_, &ExitFlow::lastPageRecorded, this,
            [this](const QString& address) { lastPages_.append(address); });
}

MainWindow::~MainWindow()
{
    // The bar's widgets speak to the bar, which goes before the window's children.
    delete barWidgets_;
}

bool MainWindow::loadSkin()
{
    if (!QFileInfo::exists(state_.appDir + skinName)) {
        dialogs_.message(QStringLiteral("Cannot find skin file:") + skinName,
                         platform::Dialogs::Buttons::Ok, platform::Dialogs::Icon::None);
        return false;
    }
    QString problem;
    if (auto error = platform::SkinLoader::loadFile(bar_, state_.appDir + skinName))
        problem = error->text(skinName);
    else if (auto tabs = TabStrip::skinProblem(bar_))
        problem = tabs->text(skinName);
    if (!problem.isEmpty()) {
        dialogs_.message(problem, platform::Dialogs::Buttons::Ok,
                         platform::Dialogs::Icon::Critical);
        return false;
    }
    state_.baseTitle = language_.apply(bar_, QCoreApplication::applicationVersion());
    setWindowTitle(state_.baseTitle);
    return true;
}

void MainWindow::hostControls()
{
    auto host = [this](const char* band, const char* tool, QWidget* control) {
        if (platform::Tool* t = bar_.tool(band, tool))
            t->setControl(control);
    };
    host(key::statusBar, key::statusTextTool, statusHost_);
    host(key::addressBar, key::addressTool, addressBox_);
    host(key::addressBar, key::pageIconTool, pageIcon_);
    if (platform::Tool* progress = bar_.tool(key::statusBar, key::progressTool)) {
        progress->setWidth(barWidgets_->pixelsToTwips(progress_->width()));
        progress->setControl(progress_);
    }
}

bool MainWindow::start(const QString& commandLineAddress)
{
    if (!loadSkin())
        return false;
    barWidgets_ = new platform::CommandBarWidgets(bar_, *this);
    if (QWidget* strip = barWidgets_->container(bar_.band(key::tabsBar)))
        strip->setStyleSheet(QLatin1String(tabStyle));
    addressBox_->addItem(QStringLiteral("About:Blank"));
    hostControls();
    progress_->info()->clear();
    setCentralWidget(clientArea_);
    addressBar_.loadTypedUrls(registry_);
    for (int i = addressBox_->count() - 1; i >= 1; --i)
        completer_->addAddress(addressBox_->itemText(i));
    // No entry is chosen until the user chooses one: the box starts empty.
    addressBox_->setCurrentIndex(-1);
    settings_.load();
    factory_.setHomeAddress(settings_.homePage());

    bar_.setPagePicture(QIcon(pageIcon_->pixmap()));
    tabs_.createCatchView();
    tabs_.openFirstTab();
    loadTabIcons();
    if (!commandLineAddress.isEmpty())
        tabs_.view(1)->navigate(commandLineAddress);
    lastPages_.restore(tabs_);
    clickHook_.start();
    // Without a window manager a maximise request is not honoured; the
    // geometry makes the window fill the screen all the same.
    if (const QScreen* display = screen())
        setGeometry(display->availableGeometry());
    showMaximized();
    return true;
}

void MainWindow::loadTabIcons()
{
    for (int n = 1; n <= 3; ++n)
        state_.tabIcons[size_t(n - 1)] =
            QIcon(state_.appDir + QStringLiteral("res/tab%1.ico").arg(n));
}

void MainWindow::wireView(platform::BrowserView* view)
{
    const int index = view->index();
    connect(view, &platform::BrowserView::windowClosing, this,
            [this, index](bool isChild) { tabs_.pageClosing(index, isChild); });
    connect(view, &platform::BrowserView::newWindowRequested, &tabs_, &TabStrip::openNewWindow);
    viewEvents_.watch(view);
}

void MainWindow::quit()
{
    exit_.askExitQuestion();
    close();
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

void MainWindow::layoutAddressTool()
{
    platform::Band* address = bar_.band(key::addressBar);
    platform::Band* main = bar_.band(key::mainBar);
    platform::Tool* tool = bar_.tool(key::addressBar, key::addressTool);
    if (!address || !main || !tool || !barWidgets_)
        return;
    const int line = bar_.dockLine(*address);
    const bool sameLine = line >= 0 && line == bar_.dockLine(*main);
    tool->setWidth(
        addressToolWidth(sameLine, barWidgets_->pixelsToTwips(width()), bar_.leftTwips(*address)));
}
