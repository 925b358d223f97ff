#include "FindBar.h"
#include "platform/browser/BrowserView.h"
#include "tabs/ActiveTabSignals.h"
#include "tabs/TabStrip.h"

#include <QCheckBox>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

FindBar::FindBar(TabStrip& tabs, ActiveTabSignals& active, QWidget* parent)
    : QWidget(parent), tabs_(tabs), text_(new QLineEdit(this)),
      matchCase_(new QCheckBox(QStringLiteral("Match case"), this)), matches_(new QLabel(this))
{
    setObjectName(QStringLiteral("FindBar"));
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(4, 2, 4, 2);
    auto* label = new QLabel(QStringLiteral("Find:"), this);
    label->setBuddy(text_);
    text_->setClearButtonEnabled(true);
    text_->setMaximumWidth(300);
    auto button = [this](const QString& icon, const QString& tip) {
        auto* b = new QToolButton(this);
        b->setIcon(QIcon::fromTheme(icon));
        b->setToolTip(tip);
        b->setAutoRaise(true);
        return b;
    };
    QToolButton* previous = button(QStringLiteral("go-up"), QStringLiteral("Previous match"));
    QToolButton* next = button(QStringLiteral("go-down"), QStringLiteral("Next match"));
    QToolButton* closer = button(QStringLiteral("window-close"), QStringLiteral("Close"));
    row->addWidget(label);
    row->addWidget(text_);
    row->addWidget(previous);
    row->addWidget(next);
    row->addWidget(matchCase_);
    row->addWidget(matches_);
    row->addStretch();
    row->addWidget(closer);

    connect(text_, &QLineEdit::textEdited, this, [this] { find(false); });
    connect(text_, &QLineEdit::returnPressed, this,
            [this] { find(QGuiApplication::keyboardModifiers() & Qt::ShiftModifier); });
    connect(previous, &QToolButton::clicked, this, [this] { find(true); });
    connect(next, &QToolButton::clicked, this, [this] { find(false); });
    // The engine takes the same text again as a step to the next match, in
    // the case it had: a new case is a new search.
    connect(matchCase_, &QCheckBox::toggled, this, [this] {
        clearMarks();
        find(false);
    });
    connect(closer, &QToolButton::clicked, this, &FindBar::close);
    connect(&active, &ActiveTabSignals::loadStarted, this, [this] {
        ++searching_;
        matches_->clear();
    });
    connect(&tabs, &TabStrip::changed, this, [this](const TabChange& change) {
        if (change.kind == TabChange::Kind::Activated && change.left)
            clearMarks();
    });
    hide();
}

void FindBar::open()
{
    show();
    text_->setFocus();
    text_->selectAll();
}

void FindBar::close()
{
    clearMarks();
    hide();
    if (platform::BrowserView* view = tabs_.currentView())
        view->focusPage();
}

void FindBar::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape)
        close();
    else
        QWidget::keyPressEvent(event);
}

QString FindBar::matchesText() const
{
    return matches_->text();
}

void FindBar::clearMarks()
{
    ++searching_;
    matches_->clear();
    if (platform::BrowserView* view = tabs_.currentView())
        view->finder().clear();
}

void FindBar::find(bool backward)
{
    platform::BrowserView* view = tabs_.currentView();
    if (!view)
        return;
    const int searching = ++searching_;
    if (text_->text().isEmpty()) {
        view->finder().clear();
        matches_->clear();
        return;
    }
    view->finder().find(
        text_->text(), {backward, matchCase_->isChecked()}, [this, searching](int count) {
            if (searching != searching_)
                return;
            matches_->setText(count == 0   ? QStringLiteral("No matches")
                              : count == 1 ? QStringLiteral("1 match")
                                           : QStringLiteral("%1 matches").arg(count));
        });
}
