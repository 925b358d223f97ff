#pragma once
// Ad and tracker blocking from the filter lists the user chose: the content
// policy of every view. A request a list blocks is refused before it is sent
// and counted on its tab, whose count the status tool "b_filtered" shows for
// the tab in front; a page gets the lists' element-hiding rules for its site
// as a style sheet. Nothing is filtered on a site the user allowed ("Allow on
// This Site"). The lists are read on another thread, from the compiled form
// the last run kept or from their text, once the first page from the network
// is on its way (a page of the computer's own needs none of their memory).
// A request that comes before they are read waits for them; the first page's
// style sheet and a window it opens meanwhile do not.
#include "FilterListChoice.h"
#include "SiteList.h"
#include "platform/browser/ViewPolicies.h"

#include <QObject>
#include <functional>
#include <future>
#include <memory>

class CommandDispatcher;
class EveryTabSignals;
class TabStrip;
struct MainState;

namespace filters {
class FilterEngine;
} // namespace filters
namespace platform {
class BrowserViewFactory;
class Dialogs;
} // namespace platform
namespace commandbar {
class CommandBar;
} // namespace commandbar

class ContentFilters : public platform::ContentPolicy
{
public:
    // The language's text for a key, else the fallback.
    using Captions = std::function<QString(const QString& key, const QString& fallback)>;

    ContentFilters(const MainState& state, commandbar::CommandBar& bar, TabStrip& tabs,
                   const EveryTabSignals& every, platform::BrowserViewFactory& views,
                   platform::Dialogs& dialogs, Captions captions, CommandDispatcher& commands);
    ~ContentFilters() override;

    bool blocks(platform::BrowserView& view, const platform::PageRequest& request) override;
    QString styleFor(platform::BrowserView& view, const QUrl& page) override;
    // A window the page at opener asks for, at an address a "popup" filter names.
    bool blocksWindow(const QUrl& url, const QUrl& opener);
    // The tab in front's count and site switch, in the status band and menu.
    void showCurrent();

private:
    // Waits for the lists when they are being read.
    const filters::FilterEngine& engine();
    // Null while they are being read.
    const filters::FilterEngine* engineIfRead();
    void startReading();
    void readLists();
    bool allowed(const QUrl& page) const;
    void chooseLists(platform::Dialogs& dialogs);

    const MainState& state_;
    commandbar::CommandBar& bar_;
    TabStrip& tabs_;
    platform::BrowserViewFactory& views_;
    Captions captions_;
    FilterListChoice lists_;
    SiteList allowedSites_;
    std::future<std::shared_ptr<const filters::FilterEngine>> reading_;
    std::shared_ptr<const filters::FilterEngine> engine_;
    bool read_ = false;
    QObject context_;
};
