#pragma once
// Alt+letter opens a menu by its underlined letter (the menu bar's own
// shortcuts); Alt alone and F10 take the keyboard into the menus of window.
class QMainWindow;
class QMenuBar;

namespace commandbar {

void enableMenuKeys(QMenuBar& menuBar, QMainWindow& window);

} // namespace commandbar
