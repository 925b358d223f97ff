#include "CommandDispatcher.h"
#include "app/Keys.h"
#include "history/AddressBar.h"
#include "platform/commandbar/CommandBar.h"
#include "tabs/ActiveTabDisplay.h"
#include "tabs/TabStrip.h"

using platform::BrowserView;

CommandDispatcher::CommandDispatcher(MainState& state, platform::CommandBar& bar, TabStrip& tabs,
                                     ActiveTabDisplay& display, AddressBar& addressBar)
    : state_(state), bar_(bar), tabs_(tabs), display_(display), addressBar_(addressBar)
{
}

std::vector<BrowserView*> CommandDispatcher::tabViews() const
{
    std::vector<BrowserView*> views;
    const platform::Band* band = bar_.band(key::tabsBar);
    for (int i = 0; band && i < band->count(); ++i)
        if (BrowserView* view = tabs_.view(band->at(i)->key().mid(5).toInt()))
            views.push_back(view);
    return views;
}

// The tab chosen through the tab strip counts for commands of the tab's own
// menu; everywhere else a command acts on the tab that is shown.
int CommandDispatcher::targetTab(const platform::Tool* tool) const
{
    const bool fromTabMenu = tool->band() && tool->band()->key() == QLatin1String(key::tabMenu);
    if (fromTabMenu && state_.targetTab >= 1 && tabs_.view(state_.targetTab))
        return state_.targetTab;
    return state_.currentTab;
}

void CommandDispatcher::toggle(platform::Tool* tool)
{
    tool->setChecked(!tool->checked());
}

void CommandDispatcher::toggleBand(platform::Tool* tool, const char* bandKey)
{
    platform::Band* band = bar_.band(bandKey);
    if (!band)
        return;
    band->setVisible(!tool->checked());
    toggle(tool);
    bar_.recalcLayout();
}

void CommandDispatcher::dispatch(platform::Tool* tool)
{
    if (!tool)
        return;
    const QString& name = tool->key();
    BrowserView* current = tabs_.currentView();
    if (name == QLatin1String(key::newTab)) {
        tabs_.newTab({}, true);
    } else if (name == QLatin1String(key::newTabHome)) {
        if (const int index = tabs_.newTab({}, true))
            tabs_.view(index)->goHome();
    } else if (name == QLatin1String(key::duplicateTab)) {
        if (current)
            tabs_.newTab(current->locationUrl(), true);
    } else if (name == QLatin1String(key::back)) {
        if (current)
            current->goBack();
    } else if (name == QLatin1String(key::forward)) {
        if (current)
            current->goForward();
    } else if (name == QLatin1String(key::stop)) {
        if (current) {
            current->stop();
            tabs_.refreshActiveTab();
            // After the refresh, which shows the tab's last percent.
            display_.setProgress(0);
        }
    } else if (name == QLatin1String(key::stopAll)) {
        for (BrowserView* view : tabViews())
            view->stop();
        display_.clearInfo();
    } else if (name == QLatin1String(key::refresh)) {
        if (current)
            current->refresh();
    } else if (name == QLatin1String(key::home)) {
        if (current)
            current->goHome();
    } else if (name == QLatin1String(key::closeTab)) {
        if (const platform::Band* tabs = bar_.band(key::tabsBar); tabs && tabs->count() >= 1)
            tabs_.closeTab(targetTab(tool));
    } else if (name == QLatin1String(key::quit)) {
        emit quitRequested();
    } else if (name == QLatin1String(key::closeOthers)) {
        tabs_.closeOtherTabs(targetTab(tool));
    } else if (name == QLatin1String(key::closeAll)) {
        tabs_.closeAllTabs();
    } else if (name == QLatin1String(key::go)) {
        addressBar_.navigateFromAddressBar(false);
    } else if (name == QLatin1String(key::showMainBar)) {
        toggleBand(tool, key::mainBar);
    } else if (name == QLatin1String(key::showAddressBar)) {
        toggleBand(tool, key::addressBar);
    } else if (name == QLatin1String(key::showStatusBar)) {
        toggleBand(tool, key::statusBar);
    } else if (name == QLatin1String(key::refreshAll)) {
        for (BrowserView* view : tabViews())
            if (!view->locationUrl().isEmpty())
                view->refresh();
    } else if (name == QLatin1String(key::killPopups) || name == QLatin1String(key::stopPopups)) {
        toggle(tool);
    } else if (name.left(3) == QLatin1String("tab")) {
        tabs_.activateTab(name.mid(5).toInt());
    }
}

void CommandDispatcher::secondaryAction(platform::Tool* tool)
{
    if (!tool || tool->key().left(3) != QLatin1String("tab"))
        return;
    // 0 would mean the active tab; a name without a number closes nothing.
    if (const int index = tool->key().mid(5).toInt(); index >= 1)
        tabs_.closeTab(index);
}
