#include "PageNotice.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace platform {

PageNotice::PageNotice(QWidget* parent)
    : QWidget(parent), heading_(new QLabel(this)), text_(new QLabel(this)),
      primary_(new QPushButton(this)), secondary_(new QPushButton(this))
{
    setObjectName(QStringLiteral("pageNotice"));
    setAutoFillBackground(true);
    QFont big = heading_->font();
    big.setPointSizeF(big.pointSizeF() * 1.6);
    big.setBold(true);
    heading_->setFont(big);
    heading_->setWordWrap(true);
    text_->setWordWrap(true);
    text_->setTextInteractionFlags(Qt::TextSelectableByMouse);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(primary_);
    buttons->addWidget(secondary_);
    buttons->addStretch();

    auto* column = new QVBoxLayout;
    column->addWidget(heading_);
    column->addSpacing(12);
    column->addWidget(text_);
    column->addSpacing(18);
    column->addLayout(buttons);
    auto* page = new QHBoxLayout(this);
    page->addStretch(1);
    auto* centred = new QVBoxLayout;
    centred->addStretch(1);
    centred->addLayout(column);
    centred->addStretch(2);
    page->addLayout(centred, 3);
    page->addStretch(1);

    connect(primary_, &QPushButton::clicked, this, &PageNotice::primaryClicked);
    connect(secondary_, &QPushButton::clicked, this, &PageNotice::secondaryClicked);
}

void PageNotice::set(const QString& heading, const QString& text, const QString& primary,
                     const QString& secondary)
{
    heading_->setText(heading);
    text_->setText(text);
    primary_->setText(primary);
    primary_->setVisible(!primary.isEmpty());
    secondary_->setText(secondary);
    secondary_->setVisible(!secondary.isEmpty());
}

QString PageNotice::heading() const
{
    return heading_->text();
}

} // namespace platform
