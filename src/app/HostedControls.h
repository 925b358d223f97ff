#pragma once
// The main window's own controls that live inside command-bar tools: the
// address combo cbo_Input, the page icon pic_ieicon, the status text
// txt_status on its holder pic_ST, and the progress display pic_progress. They
// stay hidden until the bar takes them into their tools.

class ProgressDisplay;
class QComboBox;
class QLabel;
class QLineEdit;
class QWidget;

namespace commandbar {
class CommandBar;
class CommandBarWidgets;
} // namespace commandbar

class HostedControls
{
public:
    explicit HostedControls(QWidget& window);

    // Puts each control into its tool, in the start-up order.
    void host(commandbar::CommandBar& bar, const commandbar::CommandBarWidgets& widgets);

    QComboBox* addressBox() const { return addressBox_; }
    QLabel* pageIcon() const { return pageIcon_; }
    QLineEdit* statusText() const { return statusText_; }
    ProgressDisplay* progress() const { return progress_; }

private:
    QComboBox* addressBox_;
    QLabel* pageIcon_;
    QWidget* statusHost_;
    QLineEdit* statusText_;
    ProgressDisplay* progress_;
};

// The tab band's buttons drawn as tabs.
void styleTabBand(QWidget& band);
