#pragma once
// What changed in the tab strip, told to its observers in one record. Tabs
// never move on their own: closing one moves the tabs to its right one place
// left, which the Removed record implies.
namespace platform {
class BrowserView;
} // namespace platform

struct TabChange
{
    enum class Kind {
        // A view was made: a new tab, or the catch view at position 0.
        Inserted,
        // A tab is being closed; its view is still alive for the call.
        Removed,
        // A tab came to the front, or was shown once more where it was.
        Activated,
    };
    // Why a tab was removed: only a tab closed by itself is listed among the
    // closed windows, not one of a bulk close or a page that closed itself in
    // the background.
    enum class Cause { CloseTab, Bulk, PageInBackground };

    Kind kind;
    // Alive for the call; its index() names the tab for good.
    platform::BrowserView* view;
    // Where the tab stands now; for Removed, where it stood.
    int position = 0;
    Cause cause = Cause::CloseTab;
    // Activated: the tab was opened just now, blank.
    bool opened = false;
    // Activated by a switch: the tab shown until then, alive for the call.
    platform::BrowserView* left = nullptr;
};
