#pragma once
// The program's own options dialog: the home page; the popup and silent
// switches; deleting cookies, temporary files and history; the picture and
// Flash switches; the proxy list. The switches show the checks of their tools and change
// through the same commands as the menus, so each does one thing one way.
#include "core/Commands.h"

#include <QDialog>
#include <QList>
#include <vector>

class CommandDispatcher;
class QCheckBox;
class QLineEdit;
class QTabWidget;

namespace commandbar {
class CommandBar;
} // namespace commandbar

class OptionsDialog : public QDialog
{
    Q_OBJECT
public:
    // Page numbers, in the order of the tabs.
    enum Page { General, Security, Privacy, Content, Connections, PageCount };

    OptionsDialog(const QString& homePage, const commandbar::CommandBar& bar,
                  CommandDispatcher& commands, QWidget* parent);

    void showPage(int page);
    int page() const;
    QString homePage() const;
    // The switches whose box differs from their tool's check.
    QList<cmd::Command> changedSwitches() const;

private:
    QWidget* generalPage();
    QWidget* switchesPage(std::initializer_list<cmd::Command> switches);
    QWidget* privacyPage();
    QWidget* connectionsPage();
    QString captionOf(cmd::Command command) const;

    const commandbar::CommandBar& bar_;
    CommandDispatcher& commands_;
    QTabWidget* pages_;
    QLineEdit* homePage_;
    std::vector<std::pair<cmd::Command, QCheckBox*>> switches_;
};
