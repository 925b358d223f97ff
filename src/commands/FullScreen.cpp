#include "FullScreen.h"
#include "commandbar/CommandBar.h"
#include "commandbar/Tool.h"
#include "core/CommandDispatcher.h"
#include "core/Keys.h"
#include "platform/browser/BrowserView.h"
#include "tabs/ActiveTabPresenter.h"
#include "tabs/Tabs.h"

#include <QShortcut>
#include <QUrl>
#include <QWidget>

namespace {
constexpr int floatingWidthTwips = 3000;
} // namespace

FullScreen::FullScreen(QWidget& window, commandbar::CommandBar& bar, Tabs& tabs,
                       ActiveTabPresenter& events, CommandDispatcher& commands)
    : window_(window), bar_(bar), tabs_(tabs),
      leavePage_(new QShortcut(QKeySequence(Qt::Key_Escape), &window)), notice_(window)
{
    leavePage_->setEnabled(false);
    connect(leavePage_, &QShortcut::activated, this, [this] {
        if (platform::BrowserView* view = tabs_.currentView())
            view->exitFullScreen();
    });
    commands.on(cmd::Command::FullScreen, [this](const CommandContext&) { toggle(); });
    connect(&events, &ActiveTabPresenter::pageFullScreen, this, &FullScreen::pageFullScreen);
}

bool FullScreen::active() const
{
    return bar_.isChecked(key::viewMenu, key::fullScreen);
}

void FullScreen::toggle()
{
    if (active())
        leave();
    else
        enter();
}

void FullScreen::pageFullScreen(bool on)
{
    if (on && !active()) {
        enter();
        forPage_ = true;
        leavePage_->setEnabled(true);
        if (platform::BrowserView* view = tabs_.currentView()) {
            const QUrl page(view->locationUrl());
            notice_.show(page.host().isEmpty() ? page.toDisplayString(QUrl::RemoveUserInfo)
                                               : page.host());
        }
    } else if (!on && active() && forPage_) {
        forPage_ = false; // the page is out already
        leave();
    }
}

void FullScreen::setChecked(bool checked)
{
    for (const QLatin1String band : {key::viewMenu, key::mainBar})
        if (commandbar::Tool* tool = bar_.tool(band, key::fullScreen))
            tool->setChecked(checked);
}

void FullScreen::enter()
{
    setChecked(true);
    if (window_.isMaximized()) {
        saved_ = {-1, 0, 0, 0};
    } else {
        const QRect place = window_.geometry();
        saved_ = {place.x(), place.y(), place.width(), place.height()};
    }
    for (const QLatin1String key : {key::menuBar, key::statusBar})
        if (commandbar::Band* band = bar_.band(key))
            band->setVisible(false);
    if (commandbar::Band* main = bar_.band(key::mainBar))
        main->setFloating(true, floatingWidthTwips);
    // Covers the desktop's panels as well: there is no task bar to hide.
    window_.showFullScreen();
    bar_.recalcLayout();
    focusPage();
}

void FullScreen::leave()
{
    // A page still in full screen leaves it with the window.
    if (platform::BrowserView* view = tabs_.currentView(); view && forPage_)
        view->exitFullScreen();
    forPage_ = false;
    leavePage_->setEnabled(false);
    notice_.hide();
    setChecked(false);
    if (commandbar::Band* menu = bar_.band(key::menuBar))
        menu->setVisible(true);
    if (commandbar::Band* main = bar_.band(key::mainBar))
        main->setFloating(false);
    for (const QLatin1String key : {key::addressBar, key::statusBar})
        if (commandbar::Band* band = bar_.band(key))
            band->setVisible(true);
    if (commandbar::Band* address = bar_.band(key::addressBar))
        bar_.dockOnItsLine(address);
    // Straight back: a trip through the minimised state is two requests a
    // window manager may take in either order, and it can leave the window
    // minimised.
    if (saved_.left == -1) {
        window_.showMaximized();
    } else {
        window_.showNormal();
        window_.setGeometry(saved_.left, saved_.top, saved_.width, saved_.height);
    }
    saved_ = {};
    bar_.recalcLayout();
    focusPage();
}

void FullScreen::focusPage()
{
    if (platform::BrowserView* view = tabs_.currentView())
        view->focusPage();
}
