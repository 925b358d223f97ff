#include "CommandBarWidgets.h"
#include "CheckedToolInView.h"
#include "ControlHolder.h"
#include "MenuKeys.h"

#include <QApplication>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDockWidget>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMouseEvent>
#include <QTabWidget>
#include <QTextDocument>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>
#include <QWidgetAction>
#include <iterator>
#include <utility>

namespace commandbar {

namespace {
// A tooltip reads markup when its text looks like some, and a caption can be
// a page's title: such a text is shown escaped, as written.
QString plainToolTip(const QString& text)
{
    return Qt::mightBeRichText(text) ? QStringLiteral("<p style='white-space:pre'>") +
                                           text.toHtmlEscaped() + QStringLiteral("</p>")
                                     : text;
}
} // namespace

CommandBarWidgets::CommandBarWidgets(CommandBar& bar, QMainWindow& window, RedrawPacer& pacer)
    : QObject(&window), bar_(bar), window_(window), pacer_(pacer), lines_(bar, window, containers_),
      shortcuts_(bar, window)
{
    for (const auto& band : bar_.bands())
        createContainer(*band);
    lines_.addAll();
    for (const auto& band : bar_.bands()) {
        for (int i = 0; i < band->count(); ++i)
            insertAction(band.get(), i);
        updateBand(band.get());
    }
    connect(&bar_, &CommandBar::toolInserted, this, &CommandBarWidgets::insertAction);
    connect(&bar_, &CommandBar::toolAboutToBeRemoved, this, &CommandBarWidgets::removeAction);
    connect(&bar_, &CommandBar::toolChanged, this, &CommandBarWidgets::toolChanged);
    statusCalm_.setInterval(100);
    connect(&statusCalm_, &QTimer::timeout, this, &CommandBarWidgets::flushStatus);
    connect(&bar_, &CommandBar::bandChanged, this, &CommandBarWidgets::updateBand);
    connect(&bar_, &CommandBar::bandAdded, this, &CommandBarWidgets::addBand);
    connect(&bar_, &CommandBar::bandAboutToBeRemoved, this, &CommandBarWidgets::removeBand);
    connect(&bar_, &CommandBar::popUpRequested, this, &CommandBarWidgets::popUp);
    connect(&bar_, &CommandBar::dockRequested, this, [this](Band* band) {
        if (auto* toolBar = qobject_cast<QToolBar*>(containers_.value(band));
            toolBar && !band->floating()) {
            window_.removeToolBar(toolBar);
            lines_.placeOnLine(*band, *toolBar);
        }
    });
    bar_.setPlacement(&lines_);
}

CommandBarWidgets::~CommandBarWidgets()
{
    bar_.setPlacement(nullptr);
}

QMenu* CommandBarWidgets::menu(const QString& bandKey) const
{
    return qobject_cast<QMenu*>(containers_.value(bar_.band(bandKey)));
}

void CommandBarWidgets::createContainer(Band& band)
{
    QWidget* widget = nullptr;
    switch (band.kind()) {
    case BandKind::MenuBar:
        widget = window_.menuBar();
        enableMenuKeys(*window_.menuBar(), window_);
        break;
    case BandKind::Popup: {
        auto* menu = new QMenu(&window_);
        connect(menu, &QMenu::aboutToShow, this, [this, b = &band] {
            bar_.reportDropDown(b);
            bar_.reportShown(b);
        });
        widget = menu;
        break;
    }
    case BandKind::Toolbar:
    case BandKind::StatusBar: {
        auto* toolBar = new QToolBar(band.caption(), &window_);
        toolBar->setObjectName(band.key());
        toolBar->setIconSize(QSize(20, 20));
        if (band.kind() == BandKind::StatusBar) {
            toolBar->setMovable(false);
            statusBars_.insert(toolBar);
        } else {
            new CheckedToolInView(*toolBar, bar_, band, actions_);
        }
        widget = toolBar;
        break;
    }
    case BandKind::SideBar: {
        auto* dock = new QDockWidget(band.caption(), &window_);
        dock->setObjectName(band.key());
        auto* pages = new QTabWidget(dock);
        sidePages_.insert(&band, pages);
        dock->setWidget(pages);
        // The model says whether the side bar shows; the dock has no close box of its own.
        dock->setFeatures(QDockWidget::DockWidgetMovable);
        window_.addDockWidget(Qt::LeftDockWidgetArea, dock);
        connect(dock, &QDockWidget::visibilityChanged, this, [this, b = &band](bool shown) {
            if (shown)
                bar_.reportShown(b);
        });
        connect(pages, &QTabWidget::currentChanged, this, [this, pages, b = &band](int index) {
            for (auto it = containers_.cbegin(); it != containers_.cend(); ++it)
                if (it.value() == pages->widget(index)) {
                    b->setCurrentChild(it.key()->key());
                    bar_.reportChildBandChanged(const_cast<Band*>(it.key()));
                }
        });
        widget = dock;
        break;
    }
    case BandKind::ChildBand: {
        QTabWidget* pages = sidePages_.value(bar_.band(band.parentKey()));
        auto* toolBar = new QToolBar(band.caption(), pages);
        toolBar->setOrientation(Qt::Vertical);
        toolBar->setObjectName(band.key());
        if (pages)
            pages->addTab(toolBar, band.caption());
        widget = toolBar;
        break;
    }
    }
    widget->setContextMenuPolicy(Qt::PreventContextMenu);
    if (band.kind() != BandKind::Popup)
        widget->installEventFilter(this);
    containers_.insert(&band, widget);
}

// Bands made at run time are menus (the favourites' folders); a toolbar
// would need a place in the dock lines.
void CommandBarWidgets::addBand(Band* band)
{
    if (band->kind() != BandKind::Popup)
        return;
    createContainer(*band);
    updateBand(band);
}

void CommandBarWidgets::removeBand(Band* band)
{
    for (int i = band->count() - 1; i >= 0; --i)
        removeAction(band, i);
    if (QWidget* container = containers_.take(band))
        container->deleteLater();
}

void CommandBarWidgets::insertAction(Band* band, int index)
{
    QWidget* container = containers_.value(band);
    Tool* tool = band->at(index);
    if (!container || !tool)
        return;
    QAction* action = nullptr;
    if (tool->type() == ControlType::Hosted) {
        auto* widgetAction = new QWidgetAction(container);
        widgetAction->setDefaultWidget(new ControlHolder);
        action = widgetAction;
    } else {
        action = new QAction(container);
        connect(action, &QAction::triggered, this, [this, action, tool] {
            action->setChecked(tool->checked());
            bar_.reportClick(tool);
        });
    }
    // Menu items are not "tools under the pointer": passing over the tab
    // menu's own items must not drop the tab it was opened for.
    if (!qobject_cast<QMenu*>(container))
        connect(action, &QAction::hovered, this, [this, tool] { bar_.reportHover(tool); });
    if (tool->type() == ControlType::Separator)
        action->setSeparator(true);
    if (tool->type() == ControlType::DropDown)
        action->setMenu(menu(tool->subBand()));
    actions_.insert(tool, action);
    toolActions_.insert(action);

    QAction* before = nullptr;
    if (index + 1 < band->count())
        before = actions_.value(band->at(index + 1));
    // Complete before it goes in: a menu of thousands of favourites takes
    // each entry once, not with every property that changes after.
    updateAction(tool);
    container->insertAction(before, action);
    if (auto* toolBar = qobject_cast<QToolBar*>(container)) {
        if (auto* button = qobject_cast<QToolButton*>(toolBar->widgetForAction(action))) {
            button->installEventFilter(this);
            buttonTools_.insert(button, tool);
            if (tool->type() == ControlType::DropDown)
                button->setPopupMode(QToolButton::InstantPopup);
        }
        // A tool bar's button exists only now, and takes its style from the tool.
        updateAction(tool);
    }
}

void CommandBarWidgets::removeAction(Band* band, int index)
{
    Tool* tool = band->at(index);
    QAction* action = actions_.take(tool);
    if (!action)
        return;
    toolActions_.remove(action);
    pendingStatus_.remove(tool);
    buttonTools_.removeIf([tool](const auto& entry) { return entry.value() == tool; });
    shortcuts_.remove(tool);
    if (auto* control = qobject_cast<QWidget*>(tool->control()))
        control->setParent(nullptr);
    // Later: a click on a menu entry may itself remove its menu (a favourite
    // found gone rebuilds the favourites), from within the entry's own signal.
    // All go together, as children of one object: ten thousand objects each
    // waiting for its own deletion would make every deletion search the
    // queue of all the others.
    if (auto* toolBar = qobject_cast<QToolBar*>(action->parent()))
        pacer_.changing(*toolBar);
    if (QWidget* container = qobject_cast<QWidget*>(action->parent()))
        container->removeAction(action);
    if (!removed_) {
        removed_ = new QObject(this);
        removed_->deleteLater();
    }
    action->setParent(removed_);
}

// Status captions change as fast as pages make them (a storm of blocked
// windows counts up hundreds a second). Their redraws are paced like every
// bar's; beyond that the status bands take a caption at most ten times a
// second (the first change after a quiet spell at once, later ones together),
// so that a storm does not lay the band out again for every window.
void CommandBarWidgets::toolChanged(Tool* tool)
{
    const QAction* action = actions_.value(tool);
    if (!action || !statusBars_.contains(action->parent())) {
        updateAction(tool);
    } else if (statusCalm_.isActive()) {
        pendingStatus_.insert(tool);
    } else {
        updateAction(tool);
        statusCalm_.start();
    }
}

void CommandBarWidgets::flushStatus()
{
    if (pendingStatus_.isEmpty()) {
        statusCalm_.stop();
        return;
    }
    const QSet<Tool*> pending = std::exchange(pendingStatus_, {});
    for (Tool* tool : pending)
        updateAction(tool);
}

void CommandBarWidgets::updateAction(Tool* tool)
{
    QAction* action = actions_.value(tool);
    if (!action)
        return;
    if (auto* toolBar = qobject_cast<QToolBar*>(action->parent()))
        pacer_.changing(*toolBar);
    // Menus show the shortcut after a tab; the key itself belongs to a
    // window-wide action, so it works whether or not its band is shown.
    const bool inMenu = qobject_cast<QMenu*>(action->parent()) != nullptr;
    action->setText(inMenu && !tool->shortcut().isEmpty()
                        ? tool->shownCaption() + QLatin1Char('\t') +
                              QKeySequence(tool->shortcut()).toString(QKeySequence::NativeText)
                        : tool->shownCaption());
    action->setToolTip(plainToolTip(tool->tooltip().isEmpty() ? tool->caption() : tool->tooltip()));
    action->setCheckable(tool->checkable());
    action->setChecked(tool->checked());
    action->setEnabled(tool->enabled());
    action->setVisible(tool->visible());
    action->setIcon(!tool->picture().isNull()    ? tool->picture()
                    : tool->iconName().isEmpty() ? QIcon()
                                                 : QIcon::fromTheme(tool->iconName()));
    shortcuts_.update(tool);
    if (auto* widgetAction = qobject_cast<QWidgetAction*>(action)) {
        auto* holder = static_cast<ControlHolder*>(widgetAction->defaultWidget());
        auto* control = qobject_cast<QWidget*>(tool->control());
        holder->hold(control);
        if (tool->width() > 0)
            holder->setFixedWidth(lines_.twipsToPixels(tool->width()));
        else if (control)
            holder->setSizePolicy(control->sizePolicy());
        return;
    }
    if (auto* toolBar = qobject_cast<QToolBar*>(action->parent())) {
        if (auto* button = qobject_cast<QToolButton*>(toolBar->widgetForAction(action))) {
            Qt::ToolButtonStyle style = Qt::ToolButtonIconOnly;
            if (tool->displayStyle() == DisplayStyle::PictureAndCaption) {
                style = Qt::ToolButtonTextBesideIcon;
                // Shown as given: page titles keep their " ..." (a button
                // would drop the dots of a text it makes from the caption).
                action->setIconText(tool->shownCaption());
            } else if (action->icon().isNull())
                style = Qt::ToolButtonTextOnly;
            button->setToolButtonStyle(style);
        }
    }
}

void CommandBarWidgets::updateBand(Band* band)
{
    QWidget* container = containers_.value(band);
    if (!container)
        return;
    if (auto* menu = qobject_cast<QMenu*>(container)) {
        // A drop-down tool's action stands for the menu once it opens it; the
        // title would overwrite that tool's own (translated) caption.
        if (!toolActions_.contains(menu->menuAction()))
            menu->setTitle(band->caption());
        return;
    }
    container->setWindowTitle(band->caption());
    if (QTabWidget* pages = sidePages_.value(band);
        pages && containers_.contains(bar_.band(band->currentChild())))
        pages->setCurrentWidget(containers_.value(bar_.band(band->currentChild())));
    if (band->kind() == BandKind::ChildBand) {
        if (QTabWidget* pages = sidePages_.value(bar_.band(band->parentKey())))
            pages->setTabText(pages->indexOf(container), band->caption());
        return;
    }
    if (auto* toolBar = qobject_cast<QToolBar*>(container);
        toolBar && toolBar->isWindow() != band->floating())
        lines_.setFloating(*band, *toolBar);
    container->setVisible(band->visible());
}

bool CommandBarWidgets::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ContextMenu) {
        showCustomizeMenu(static_cast<QContextMenuEvent*>(event)->globalPos());
        return true;
    }
    Tool* tool = buttonTools_.value(watched);
    if (!tool)
        return false;
    // Leaving a tool leaves no tool under the pointer; a popup opening over
    // it (the tab menu) is not the pointer leaving.
    if (event->type() == QEvent::Leave && !QApplication::activePopupWidget()) {
        bar_.reportHover(nullptr);
        return false;
    }
    if (event->type() == QEvent::MouseButtonDblClick &&
        static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
        bar_.reportSecondary(tool);
        return true;
    }
    if (event->type() == QEvent::MouseButtonRelease &&
        static_cast<QMouseEvent*>(event)->button() == Qt::MiddleButton) {
        bar_.reportSecondary(tool);
        return true;
    }
    return false;
}

void CommandBarWidgets::showCustomizeMenu(const QPoint& globalPos)
{
    if (!bar_.reportCustomize())
        return;
    QMenu menu(&window_);
    for (const auto& band : bar_.bands()) {
        const BandKind kind = band->kind();
        if (kind != BandKind::Toolbar && kind != BandKind::StatusBar && kind != BandKind::SideBar)
            continue;
        QAction* entry = menu.addAction(band->caption());
        entry->setCheckable(true);
        entry->setChecked(band->visible());
        Band* target = band.get();
        connect(entry, &QAction::toggled, this, [this, target](bool on) {
            target->setVisible(on);
            bar_.recalcLayout();
        });
    }
    menu.exec(globalPos);
}

void CommandBarWidgets::popUp(Band* band)
{
    if (auto* menu = qobject_cast<QMenu*>(containers_.value(band)))
        menu->popup(QCursor::pos());
}

} // namespace commandbar
