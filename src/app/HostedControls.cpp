#include "HostedControls.h"
#include "ProgressDisplay.h"
#include "commandbar/CommandBar.h"
#include "commandbar/widgets/CommandBarWidgets.h"
#include "core/Keys.h"
#include "tabs/LoadingPictures.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

HostedControls::HostedControls(QWidget& window)
    : addressBox_(new QComboBox(&window)), pageIcon_(new QLabel(&window)),
      statusHost_(new QWidget(&window)), statusText_(new QLineEdit(statusHost_)),
      progress_(new ProgressDisplay(&window))
{
    for (QWidget* control : {static_cast<QWidget*>(addressBox_), static_cast<QWidget*>(pageIcon_),
                             statusHost_, static_cast<QWidget*>(progress_)})
        control->hide();
    addressBox_->setObjectName(QStringLiteral("cbo_Input"));
    addressBox_->setInsertPolicy(QComboBox::NoInsert);
    pageIcon_->setObjectName(QStringLiteral("pic_ieicon"));
    pageIcon_->setPixmap(defaultPagePicture().pixmap(16, 16));
    pageIcon_->setContentsMargins(4, 0, 4, 0);

    statusHost_->setObjectName(QStringLiteral("pic_ST"));
    statusText_->setObjectName(QStringLiteral("txt_status"));
    statusText_->setReadOnly(true);
    statusText_->setFrame(false);
    auto* statusLayout = new QVBoxLayout(statusHost_);
    statusLayout->setContentsMargins(0, 0, 0, 0);
    statusLayout->addWidget(statusText_, 0, Qt::AlignVCenter);
}

void HostedControls::host(commandbar::CommandBar& bar, const commandbar::CommandBarWidgets& widgets)
{
    auto put = [&bar](QLatin1String band, QLatin1String tool, QWidget* control) {
        if (commandbar::Tool* t = bar.tool(band, tool))
            t->setControl(control);
    };
    put(key::statusBar, key::statusTextTool, statusHost_);
    put(key::addressBar, key::addressTool, addressBox_);
    put(key::addressBar, key::pageIconTool, pageIcon_);
    if (commandbar::Tool* progress = bar.tool(key::statusBar, key::progressTool)) {
        progress->setWidth(widgets.lines().pixelsToTwips(progress_->width()));
        progress->setControl(progress_);
    }
}

void styleTabBand(QWidget& band)
{
    // The active tab white and raised. Bold would widen a caption past the
    // size its button was given, and clip it.
    band.setStyleSheet(QStringLiteral(R"(
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
)"));
}
