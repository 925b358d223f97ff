#include "ProgressDisplay.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>

class ProgressDisplay::Bar : public QWidget
{
public:
    explicit Bar(QWidget* parent) : QWidget(parent)
    {
        setObjectName(QStringLiteral("pic_PBimg"));
        setFixedHeight(10);
    }
    int percent = 0;

protected:
    void paintEvent(QPaintEvent*) override
    {
        QPainter painter(this);
        const QRect frame = rect().adjusted(0, 0, -1, -1);
        painter.setPen(palette().color(QPalette::Mid));
        painter.setBrush(palette().color(QPalette::Base));
        painter.drawRect(frame);
        if (percent <= 0)
            return;
        QRect filled = frame.adjusted(1, 1, 0, 0);
        filled.setWidth(filled.width() * std::min(percent, 100) / 100);
        painter.fillRect(filled, palette().color(QPalette::Highlight));
    }
};

ProgressDisplay::ProgressDisplay(QWidget* parent)
    : QWidget(parent), info_(new QLabel(this)), bar_(new Bar(this))
{
    setObjectName(QStringLiteral("pic_progress"));
    info_->setObjectName(QStringLiteral("lbl_Inf"));
    info_->setMinimumWidth(fontMetrics().horizontalAdvance(QStringLiteral("100%")) + 4);
    info_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setFixedWidth(150);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(2, 0, 4, 0);
    layout->addWidget(info_);
    layout->addWidget(bar_, 1, Qt::AlignVCenter);
}

void ProgressDisplay::setPercent(int percent)
{
    percent_ = percent;
    // A finished page leaves nothing to show.
    bar_->percent = percent >= 100 ? 0 : percent;
    info_->setText(percent > 0 && percent < 100 ? QStringLiteral("%1%").arg(percent) : QString());
    bar_->update();
}
