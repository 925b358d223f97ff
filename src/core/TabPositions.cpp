#include "TabPositions.h"
#include "platform/browser/BrowserView.h"

#include <algorithm>

int TabPositions::viewAt(int position) const
{
    return position >= 1 && position <= last() ? state_.tabView[size_t(position)] : 0;
}

int TabPositions::positionOf(const platform::BrowserView& view) const
{
    const int position = view.tag().toInt();
    return position >= 1 && position <= last() ? position : 0;
}

int TabPositions::append(platform::BrowserView& view)
{
    const int position = last() + 1;
    view.setTag(QString::number(position));
    state_.tabView.push_back(view.index());
    state_.canGoForward.push_back(false);
    state_.canGoBack.push_back(false);
    return position;
}

void TabPositions::removeAt(int position)
{
    const int end = last();
    for (int q = position; q <= end; ++q) {
        if (platform::BrowserView* view = views_(state_.tabView[size_t(q)]))
            view->setTag(QString::number(view->tag().toInt() - 1));
        if (q < end) {
            state_.tabView[size_t(q)] = state_.tabView[size_t(q) + 1];
            state_.canGoForward[size_t(q)] = state_.canGoForward[size_t(q) + 1];
            state_.canGoBack[size_t(q)] = state_.canGoBack[size_t(q) + 1];
        }
    }
    if (end >= 1) {
        state_.tabView.pop_back();
        state_.canGoForward.pop_back();
        state_.canGoBack.pop_back();
    }
}

void TabPositions::keepOnly(platform::BrowserView& view)
{
    const int position = positionOf(view);
    const bool forward = position && state_.canGoForward[size_t(position)];
    const bool back = position && state_.canGoBack[size_t(position)];
    state_.tabView = {0, view.index()};
    state_.canGoForward = {false, forward};
    state_.canGoBack = {false, back};
    view.setTag(QStringLiteral("1"));
}

void TabPositions::clear()
{
    state_.tabView.assign(1, 0);
    state_.canGoForward.assign(1, false);
    state_.canGoBack.assign(1, false);
}

void TabPositions::setCanGo(int position, int command, bool enable)
{
    if (position < 1 || position > last())
        return;
    if (command == platform::BrowserView::CommandForward)
        state_.canGoForward[size_t(position)] = enable;
    else if (command == platform::BrowserView::CommandBack)
        state_.canGoBack[size_t(position)] = enable;
}

int positionShownAfterClose(int closedPosition, int previousTabPosition, int lastPosition)
{
    const int fallback = closedPosition > 1 ? closedPosition - 1 : 1;
    const int shown = previousTabPosition == 0 ? fallback : previousTabPosition;
    return std::clamp(shown, 1, std::max(1, lastPosition));
}
