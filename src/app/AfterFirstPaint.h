#pragma once
// Runs work once a window has drawn itself for the first time, so that what
// can wait does not hold back the first sight of the window.
#include <QWidget>

#include <functional>

void afterFirstPaint(QWidget& window, std::function<void()> work);
