#pragma once
// The parts of the main window that show the active tab: the window caption,
// the address box, the status text and the progress display.
#include <QString>

class ActiveTabDisplay
{
public:
    virtual ~ActiveTabDisplay() = default;
    virtual void setCaption(const QString& caption) = 0;
    virtual QString addressText() const = 0;
    virtual void setAddressText(const QString& text) = 0;
    // Gives the address box the keyboard focus when it is shown.
    virtual void focusAddress() = 0;
    virtual void setStatusText(const QString& text) = 0;
    virtual void setProgress(int percent) = 0;
    // Empties the information label beside the progress display.
    virtual void clearInfo() = 0;
};
