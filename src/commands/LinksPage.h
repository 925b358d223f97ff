#pragma once
// The links page: a new tab listing, numbered, every element of a page and of
// its frames whose "href" holds a filter ("://" unless View Special gave one
// ending for the next list). The page is of the program's own making, so
// nothing in it may run: every text from the source page is escaped, and a
// policy at its head forbids script, plug-ins and frames.
#include "platform/browser/ViewFacets.h"

class CommandDispatcher;
class Tabs;

namespace platform {
class BrowserView;
class Dialogs;
} // namespace platform

QString linksPageMarkup(const QString& address, const platform::PageLinks& documents,
                        const QString& filter);

class LinksPage
{
public:
    LinksPage(Tabs& tabs, platform::Dialogs& dialogs, CommandDispatcher& commands);

    // Opens the page of source's links in a new tab, with the filter kept.
    void show(platform::BrowserView& source);

private:
    Tabs& tabs_;
    // Set by View Special, used by the next list only.
    QString filter_;
};
