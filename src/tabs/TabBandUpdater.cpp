#include "TabBandUpdater.h"
#include "Ellipsis.h"
#include "EveryTabSignals.h"
#include "LoadingPictures.h"
#include "TabStrip.h"
#include "commandbar/CommandBar.h"

#include <cmath>

using platform::BrowserView;

namespace {

// Kept with each tab: how far its page has loaded.
struct LoadingPercent
{
    int percent = 0;
};

} // namespace

TabBandUpdater::TabBandUpdater(commandbar::CommandBar& bar, TabStrip& tabs) : bar_(bar), tabs_(tabs)
{
}

int TabBandUpdater::loadingPercent(int progress, int maximum)
{
    if (progress < maximum && maximum >= 1)
        return int(std::nearbyint(progress * 100.0 / maximum));
    return progress != 0 ? 100 : 0;
}

void TabBandUpdater::follow(const EveryTabSignals& every)
{
    // The catch view 0 is never a tab.
    connect(&every, &EveryTabSignals::progressChanged, this,
            [this](BrowserView* view, int progress, int maximum) {
                if (view->index() != 0)
                    progressChange(view, progress, maximum);
            });
    connect(&every, &EveryTabSignals::commandStateChanged, this,
            [this](BrowserView* view, int command, bool enable) {
                if (view->index() != 0)
                    commandStateChange(view, command, enable);
            });
    connect(&every, &EveryTabSignals::titleChanged, this,
            [this](BrowserView* view, const QString& title) {
                if (view->index() != 0 && !title.isEmpty())
                    setCaption(view->index(), title);
            });
}

void TabBandUpdater::progressChange(BrowserView* view, int progress, int maximum)
{
    const int percent = loadingPercent(progress, maximum);
    if (Tab* tab = tabs_.tab(view->index()))
        tab->data<LoadingPercent>().percent = percent;
    const int position = tabs_.positions().positionOf(*view);
    const int band = loadingBand(percent);
    if (position == 0 || band == 0)
        return;
    tabs_.band().setPicture(tabs_.positions().viewAt(position),
                            loadingPicture(band, bar_.pagePicture()));
}

void TabBandUpdater::commandStateChange(BrowserView* view, int command, bool enable)
{
    const int position = tabs_.positions().positionOf(*view);
    if (position == 0)
        return;
    tabs_.positions().setCanGo(position, command, enable);
    emit navigationChanged();
}

void TabBandUpdater::setCaption(int index, const QString& title)
{
    tabs_.band().setCaption(index, ellipsis(title, tabCaptionWidth));
}

int TabBandUpdater::percentOf(int index) const
{
    Tab* tab = tabs_.tab(index);
    return tab ? tab->data<LoadingPercent>().percent : 0;
}
