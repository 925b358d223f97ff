#pragma once
// Full-screen mode: the window without its frame, menu and status bands, the
// main toolbar floating over the page. The check of the View menu's tool is
// the mode. Leaving it brings every band back and the window to where it
// was. A page's own full screen (a video's button) goes through the same
// toggle, and Esc then leaves it; a notice names the site and says so.
#include "FullScreenNotice.h"

#include <QObject>

class CommandDispatcher;
class QShortcut;
class QWidget;
class Tabs;
class ActiveTabPresenter;

namespace commandbar {
class CommandBar;
} // namespace commandbar

class FullScreen : public QObject
{
    Q_OBJECT
public:
    FullScreen(QWidget& window, commandbar::CommandBar& bar, Tabs& tabs, ActiveTabPresenter& events,
               CommandDispatcher& commands);

    bool active() const;
    void toggle();

private:
    void enter();
    void leave();
    void setChecked(bool checked);
    void focusPage();
    void pageFullScreen(bool on);

    // Where the window was: left, top, width, height; left -1 when it was
    // maximised; all 0 outside full screen.
    struct Placement
    {
        int left = 0, top = 0, width = 0, height = 0;
    };

    QWidget& window_;
    commandbar::CommandBar& bar_;
    Tabs& tabs_;
    Placement saved_;
    // The page asked for full screen, so its Esc leaves it.
    bool forPage_ = false;
    QShortcut* leavePage_;
    FullScreenNotice notice_;
};
