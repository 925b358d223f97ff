#include "WindowDisplay.h"
#include "ProgressDisplay.h"

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
    address_.setEditText(text);
}

void WindowDisplay::focusAddress()
{
    if (address_.isVisible())
        address_.setFocus();
}

void WindowDisplay::setStatusText(const QString& text)
{
    status_.setText(text);
    status_.setCursorPosition(0);
}

void WindowDisplay::setProgress(int percent)
{
    progress_.setPercent(percent);
}

void WindowDisplay::clearInfo()
{
    progress_.info()->clear();
}
