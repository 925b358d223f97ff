#include "CheckedToolInView.h"
#include "commandbar/CommandBar.h"

#include <QEvent>
#include <QLayout>
#include <QMenu>
#include <QToolBar>
#include <QToolButton>

namespace commandbar {

CheckedToolInView::CheckedToolInView(QToolBar& toolBar, CommandBar& bar, const Band& band,
                                     const QHash<const Tool*, QAction*>& actions)
    : QObject(&toolBar), toolBar_(toolBar), bar_(bar), band_(band), actions_(actions)
{
    list_ = new QMenu(&toolBar);
    connect(list_, &QMenu::aboutToShow, this, &CheckedToolInView::fillList);
    // Made before any tool is added, so it stands first in the bar.
    auto* button = new QToolButton(&toolBar);
    button->setMenu(list_);
    button->setPopupMode(QToolButton::InstantPopup);
    button->setArrowType(Qt::LeftArrow);
    button->setToolTip(QStringLiteral("Show all"));
    listAction_ = toolBar.addWidget(button);
    listAction_->setVisible(false);

    pending_.setSingleShot(true);
    connect(&pending_, &QTimer::timeout, this, &CheckedToolInView::update);
    auto later = [this] { pending_.start(0); };
    connect(&bar, &CommandBar::toolChanged, this, [this, later](Tool* tool) {
        if (tool->band() == &band_)
            later();
    });
    connect(&bar, &CommandBar::toolInserted, this, [this, later](Band* changed, int) {
        if (changed == &band_)
            later();
    });
    connect(&bar, &CommandBar::toolAboutToBeRemoved, this, [this](Band* changed, int index) {
        if (changed != &band_)
            return;
        leftOut_.removeAll(actions_.value(band_.at(index)));
        pending_.start(0);
    });
    toolBar.installEventFilter(this);
}

bool CheckedToolInView::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == &toolBar_ && (event->type() == QEvent::Resize || event->type() == QEvent::Show))
        pending_.start(0);
    return QObject::eventFilter(watched, event);
}

void CheckedToolInView::update()
{
    QAction* checked = nullptr;
    for (int i = 0; i < band_.count() && !checked; ++i)
        if (band_.at(i)->checked() && band_.at(i)->visible())
            checked = actions_.value(band_.at(i));
    // Tabs change many times a second while pages load (their pictures and
    // captions); laying the bar out afresh for each change would redraw the
    // window without end. Only a change of what decides the layout counts.
    Layout now{checked, toolBar_.width(), band_.count(), 0};
    for (int i = 0; i < band_.count(); ++i)
        if (const QWidget* button = toolBar_.widgetForAction(actions_.value(band_.at(i))))
            now.widths += button->sizeHint().width();
    if (now == last_ && toolBar_.isVisible())
        return;
    last_ = toolBar_.isVisible() ? now : Layout{};
    for (QAction* action : std::exchange(leftOut_, {}))
        action->setVisible(true);
    listAction_->setVisible(false);
    if (!checked || !toolBar_.isVisible())
        return;
    auto shown = [this, checked] {
        toolBar_.layout()->activate();
        const QWidget* button = toolBar_.widgetForAction(checked);
        return button && button->isVisible();
    };
    if (shown())
        return;
    listAction_->setVisible(true);
    for (int i = 0; i < band_.count() && !shown(); ++i) {
        QAction* lead = actions_.value(band_.at(i));
        if (lead == checked)
            break;
        if (lead && lead->isVisible()) {
            lead->setVisible(false);
            leftOut_.append(lead);
        }
    }
}

void CheckedToolInView::fillList()
{
    list_->clear();
    for (int i = 0; i < band_.count(); ++i) {
        Tool* tool = band_.at(i);
        if (!tool->visible() || tool->caption().isEmpty())
            continue;
        QAction* entry = list_->addAction(tool->shownCaption());
        entry->setCheckable(true);
        entry->setChecked(tool->checked());
        connect(entry, &QAction::triggered, this, [this, tool] { bar_.reportClick(tool); });
    }
}

} // namespace commandbar
