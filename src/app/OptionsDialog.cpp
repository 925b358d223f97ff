#include "OptionsDialog.h"
#include "commandbar/CommandBar.h"
#include "commandbar/Tool.h"
#include "core/CommandDispatcher.h"
#include "core/Switches.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

using cmd::Command;

OptionsDialog::OptionsDialog(const QString& homePage, const commandbar::CommandBar& bar,
                             CommandDispatcher& commands, QWidget* parent)
    : QDialog(parent), bar_(bar), commands_(commands), pages_(new QTabWidget(this)),
      homePage_(new QLineEdit(homePage, this))
{
    setWindowTitle(QStringLiteral("Internet Options"));
    pages_->addTab(generalPage(), QStringLiteral("General"));
    pages_->addTab(switchesPage({Command::StopPopups, Command::KillPopups, Command::Silent}),
                   QStringLiteral("Security"));
    pages_->addTab(privacyPage(), QStringLiteral("Privacy"));
    pages_->addTab(switchesPage({Command::RemoveImages, Command::RemoveFlash}),
                   QStringLiteral("Content"));
    pages_->addTab(connectionsPage(), QStringLiteral("Connections"));

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(pages_);
    layout->addWidget(buttons);
    resize(480, 360);
}

QWidget* OptionsDialog::generalPage()
{
    auto* page = new QWidget(this);
    auto* form = new QFormLayout(page);
    homePage_->setPlaceholderText(QStringLiteral("about:blank"));
    form->addRow(QStringLiteral("Home page:"), homePage_);
    return page;
}

// Captioned as the menus are, in the language of the menus.
QString OptionsDialog::captionOf(cmd::Command command) const
{
    const commandbar::Tool* tool = bar_.collectionTool(QLatin1String(cmd::keyOf(command)));
    return tool ? QString(tool->caption()).remove(u'&') : QString();
}

QWidget* OptionsDialog::switchesPage(std::initializer_list<cmd::Command> switches)
{
    auto* page = new QWidget(this);
    auto* column = new QVBoxLayout(page);
    for (cmd::Command command : switches) {
        auto* box = new QCheckBox(captionOf(command), page);
        box->setChecked(switches::isOn(bar_, command));
        box->setEnabled(bar_.collectionTool(QLatin1String(cmd::keyOf(command))) != nullptr);
        column->addWidget(box);
        switches_.emplace_back(command, box);
    }
    column->addStretch();
    return page;
}

QWidget* OptionsDialog::privacyPage()
{
    auto* page = new QWidget(this);
    auto* column = new QVBoxLayout(page);
    for (Command command :
         {Command::DeleteCookies, Command::DeleteTemporaryFiles, Command::DeleteHistory}) {
        auto* row = new QHBoxLayout;
        auto* button = new QPushButton(captionOf(command), page);
        button->setAutoDefault(false);
        auto* done = new QLabel(page);
        connect(button, &QPushButton::clicked, this, [this, command, done] {
            commands_.run(command);
            done->setText(QStringLiteral("Deleted."));
        });
        row->addWidget(button);
        row->addWidget(done, 1);
        column->addLayout(row);
    }
    column->addStretch();
    return page;
}

// The proxy list opens in its own editor; the Proxy menu follows a save.
QWidget* OptionsDialog::connectionsPage()
{
    auto* page = new QWidget(this);
    auto* column = new QVBoxLayout(page);
    auto* button = new QPushButton(captionOf(Command::CompanionSetup), page);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this,
            [this] { commands_.run(Command::CompanionSetup); });
    auto* row = new QHBoxLayout;
    row->addWidget(button);
    row->addStretch();
    column->addLayout(row);
    column->addStretch();
    return page;
}

void OptionsDialog::showPage(int page)
{
    pages_->setCurrentIndex(page >= 0 && page < PageCount ? page : General);
}

int OptionsDialog::page() const
{
    return pages_->currentIndex();
}

QString OptionsDialog::homePage() const
{
    return homePage_->text().trimmed();
}

QList<cmd::Command> OptionsDialog::changedSwitches() const
{
    QList<cmd::Command> changed;
    for (const auto& [command, box] : switches_)
        if (box->isEnabled() && switches::isOn(bar_, command) != box->isChecked())
            changed << command;
    return changed;
}
