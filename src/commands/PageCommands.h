#pragma once
// The page-command object: the operations on a page that the old browser
// control left to a companion of the program. The start-up creates it and
// hands it the first tab's view; the commands that need it call it with the
// view they act on.
namespace platform {
class BrowserView;
}

class PageCommands
{
public:
    virtual ~PageCommands() = default;

    // The view the next operations act on.
    virtual void actOn(platform::BrowserView& view) = 0;
    virtual void setWorkOffline(bool offline) = 0;
    virtual void openAddressBook() = 0;
    virtual void showSource() = 0;
    virtual void openFind() = 0;
    virtual void organiseFavourites() = 0;
};
