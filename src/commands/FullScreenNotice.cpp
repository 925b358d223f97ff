#include "FullScreenNotice.h"

#include <QEvent>
#include <QLabel>
#include <QMainWindow>
#include <QWidget>

FullScreenNotice::FullScreenNotice(QWidget& window) : window_(window), label_(new QLabel(&window))
{
    label_->setObjectName(QStringLiteral("fullScreenNotice"));
    // The site's name is the page's to choose: never read as markup.
    label_->setTextFormat(Qt::PlainText);
    label_->setAttribute(Qt::WA_TransparentForMouseEvents);
    label_->setStyleSheet(QStringLiteral("background: rgba(32, 32, 32, 220); color: white; "
                                         "padding: 10px 18px; border-radius: 6px;"));
    label_->hide();
    timer_.setSingleShot(true);
    timer_.setInterval(shownMs);
    connect(&timer_, &QTimer::timeout, this, &FullScreenNotice::hide);
    // The window grows to the screen after the notice is up.
    window.installEventFilter(this);
}

bool FullScreenNotice::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize && label_->isVisible())
        place();
    return QObject::eventFilter(watched, event);
}

void FullScreenNotice::place()
{
    // Over the page, clear of the bands above it.
    const auto* main = qobject_cast<QMainWindow*>(&window_);
    const int top = main && main->centralWidget() ? main->centralWidget()->geometry().top() : 0;
    label_->move((window_.width() - label_->width()) / 2, top + 24);
    label_->raise();
}

void FullScreenNotice::show(const QString& site)
{
    label_->setText(tr("%1 is now full screen. Press Esc to leave.").arg(site.left(200)));
    label_->adjustSize();
    label_->show();
    place();
    timer_.start();
}

void FullScreenNotice::hide()
{
    timer_.stop();
    label_->hide();
}
