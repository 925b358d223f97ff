#pragma once
// What most of the program asks of the open tabs: their views and what is
// kept of each, and an address opened in a tab. TabStrip is the one implementation; a part that
// closes or moves tabs, or hears the strip's signals, takes the strip itself.
#include <QString>
#include <vector>

namespace platform {
class BrowserView;
} // namespace platform
class Tab;

class Tabs
{
public:
    virtual ~Tabs() = default;

    // The tab of the view index, the catch view 0 included; none once closed.
    virtual Tab* tab(int index) const = 0;
    virtual platform::BrowserView* view(int index) const = 0;
    virtual platform::BrowserView* currentView() const = 0;
    // The view of every tab, in strip order.
    virtual std::vector<platform::BrowserView*> tabViews() const = 0;
    // Returns the new view index, or 0 when no more views can be numbered.
    virtual int newTab(const QString& address, bool activate) = 0;
    // The address of a generated menu entry (a favourite, a blocked window):
    // in the current tab while it is still blank, else in a new tab.
    virtual void openEntry(const QString& address) = 0;
    // Closes the tab as when its page closes its own window.
    virtual void pageClosing(int index, bool isChildWindow) = 0;
};
