#pragma once
// The one owner of where tabs stand: the position of each view (kept in the
// view's tag, as decimal text), the view at each position, and the back and
// forward flags of each position, which move with their tab.
#include "TabState.h"

#include <functional>

namespace platform {
class BrowserView;
} // namespace platform

class TabPositions
{
public:
    using ViewLookup = std::function<platform::BrowserView*(int index)>;
    TabPositions(TabState& state, ViewLookup views) : state_(state), views_(std::move(views)) {}

    int last() const { return int(state_.tabView.size()) - 1; }
    // The view index at position, 0 for none.
    int viewAt(int position) const;
    // The position the view's tag names, 0 when it names none in the strip.
    int positionOf(const platform::BrowserView& view) const;

    // Places the view after the last tab; returns its position.
    int append(platform::BrowserView& view);
    // Every tab right of position moves one place left; the tag of the view
    // at position itself is lowered too, as the close rule expects.
    void removeAt(int position);
    // The view becomes the one tab, at position 1, keeping its flags.
    void keepOnly(platform::BrowserView& view);
    void clear();

    // command is BrowserView::CommandForward or CommandBack.
    void setCanGo(int position, int command, bool enable);

private:
    TabState& state_;
    ViewLookup views_;
};

// The position shown after the tab at closedPosition was closed and the rest
// moved left: the one the previous tab's tag now names, or, when that reads
// 0, the closed tab's left neighbour (position 1 for the first tab).
int positionShownAfterClose(int closedPosition, int previousTabPosition, int lastPosition);
