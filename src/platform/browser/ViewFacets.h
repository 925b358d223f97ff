#pragma once
// The parts of a browser view that only some commands need, each a small
// interface of its own. The engine implements each in a file of its own;
// tests use fakes of the same shape.
#include <QList>
#include <QString>
#include <QUrl>
#include <QVariant>
#include <functional>

namespace platform {

// Five text sizes, from the smallest (0) to the biggest (4); 2 is normal.
class ZoomFacet
{
public:
    static constexpr int levelCount = 5;
    virtual ~ZoomFacet() = default;
    // The level the page shows now, or -1 when its zoom is none of the five.
    virtual int level() const = 0;
    virtual void setLevel(int level) = 0;
};

enum class EditCommand { Undo, Redo, Cut, Copy, Paste, Delete, SelectAll };

// The document's own name of an editing command ("undo", "selectall", ...).
QString editCommandName(EditCommand command);

// Answers arrive later, from the page's process. An answer is dropped when its
// view is retired or gone by then, so a caller never hears from a closed tab.
class EditingFacet
{
public:
    virtual ~EditingFacet() = default;
    virtual void run(EditCommand command) = 0;
    virtual void queryEnabled(EditCommand command, std::function<void(bool)> answer) = 0;
};

class FindFacet
{
public:
    struct Options
    {
        bool backward = false;
        bool caseSensitive = false;
    };
    virtual ~FindFacet() = default;
    // Marks the next match; answer gets the number of matches in the page.
    virtual void find(const QString& text, Options options, std::function<void(int)> answer) = 0;
    // Removes the marks of the last find.
    virtual void clear() = 0;
};

class PrintingFacet
{
public:
    enum class SaveFormat { CompleteHtml, SingleHtml, WebArchive };
    virtual ~PrintingFacet() = default;
    // Each asks the user in a dialog of its own first; a cancelled dialog prints nothing.
    virtual void print() = 0;
    virtual void printPreview() = 0;
    // The paper and margins every later print of the window uses.
    virtual void pageSetup() = 0;
    // Saves the page to a path already chosen by the user.
    virtual void saveAs(const QString& path, SaveFormat format) = 0;
};

// An element of a document that has an "href" attribute: its tag name and
// the attribute as written.
struct PageLink
{
    QString tag;
    QString href;
    bool operator==(const PageLink&) const = default;
};
// The links of the top document first, then those of each of its frames that
// has a document, in frame order.
using PageLinks = QList<QList<PageLink>>;

// Questions to the page's document, asked in the page agent's own script
// world, so that page scripts can neither see nor answer them.
class DocumentFacet
{
public:
    virtual ~DocumentFacet() = default;
    // Evaluates script in the top document; answer gets its value.
    virtual void ask(const QString& script, std::function<void(const QVariant&)> answer) = 0;
    // Every element with an "href" in the top document and its frames, also
    // frames of other origins. Answers once, also when a frame never does.
    virtual void collectLinks(std::function<void(const PageLinks&)> answer) = 0;
    // Replaces the page with a document of the program's own making, shown at
    // "about:blank".
    virtual void write(const QString& html) = 0;
    // Takes the pictures, or the Flash movies (an EMBED whose source names
    // "swf", an OBJECT whose inner markup does), out of the page and its
    // frames of the same origin as they are now, and out of every frame that
    // loads from now on, in any tab; false for both leaves frames as they load.
    virtual void removeContent(bool pictures, bool flash) = 0;
};

// The encryption level of the page, in the numbers of the lock icon: 0 not
// secure, 1 mixed, 2 secure. Changes come as the view's lockLevelChanged.
class SecurityFacet
{
public:
    virtual ~SecurityFacet() = default;
    virtual int lockLevel() const = 0;
};

// How much of its work a page out of sight keeps. Frozen: its timers and
// scripts stand still. Discarded: its page process's work is released, and it
// loads again when shown, with its address, title and back/forward list. A
// view that is shown is active again by itself.
class LifecycleFacet
{
public:
    enum class State { Active, Frozen, Discarded };
    virtual ~LifecycleFacet() = default;
    virtual State state() const = 0;
    // Goes as far towards deepest as the page can go without the user losing
    // anything: never while it is shown, loads, plays sound or is downloaded
    // from, and no further than frozen while it holds a form the user edited.
    virtual void rest(State deepest) = 0;
};

// Only an https page can be secure; it is mixed when it is weakened: the user
// let an untrusted certificate of its host through, or it asked for content
// over an unencrypted connection. Every other page is not secure.
int lockLevel(const QUrl& url, bool weakened);

// Whether the whole browser works offline: no request leaves the machine.
class ConnectionState
{
public:
    virtual ~ConnectionState() = default;
    virtual bool offline() const = 0;
    virtual void setOffline(bool offline) = 0;
};

// What the browser keeps of the user's browsing, cleared on request for
// every view at once.
class PrivateData
{
public:
    enum Kind { Cookies = 1, Cache = 2, History = 4 };
    virtual ~PrivateData() = default;
    virtual void clear(int kinds) = 0;
};

} // namespace platform
