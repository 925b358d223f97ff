#include "WindowDisplay.h"
#include "ProgressDisplay.h"
#include "commandbar/widgets/RedrawPacer.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>

void WindowDisplay::setCaption(const QString& caption)
{
    window_.setWindowTitle(caption);
}

QString WindowDisplay::addressText() const
{
    return address_.currentText();
}

void WindowDisplay::setAddressText(const QString& text)
{
    pacer_.changing(address_);
    address_.setEditText(text);
}

void WindowDisplay::focusAddress()
{
    if (address_.isVisible())
        address_.setFocus();
}

void WindowDisplay::setStatusText(const QString& text)
{
    pacer_.changing(status_);
    status_.setText(text);
    status_.setCursorPosition(0);
}

void WindowDisplay::setProgress(int percent)
{
    pacer_.changing(progress_);
    progress_.setPercent(percent);
}

void WindowDisplay::clearInfo()
{
    pacer_.changing(progress_);
    progress_.info()->clear();
}
