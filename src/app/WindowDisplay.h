#pragma once
// The main window's widgets as the active tab's display.
#include "tabs/ActiveTabDisplay.h"

class QComboBox;
class QLineEdit;
class QWidget;
class ProgressDisplay;

namespace commandbar {
class RedrawPacer;
} // namespace commandbar

class WindowDisplay : public ActiveTabDisplay
{
public:
    WindowDisplay(QWidget& window, QComboBox& address, QLineEdit& status, ProgressDisplay& progress,
                  commandbar::RedrawPacer& pacer)
        : window_(window), address_(address), status_(status), progress_(progress), pacer_(pacer)
    {
    }

    void setCaption(const QString& caption) override;
    QString addressText() const override;
    void setAddressText(const QString& text) override;
    void focusAddress() override;
    void setStatusText(const QString& text) override;
    void setProgress(int percent) override;
    void clearInfo() override;

private:
    QWidget& window_;
    QComboBox& address_;
    QLineEdit& status_;
    ProgressDisplay& progress_;
    commandbar::RedrawPacer& pacer_;
};
