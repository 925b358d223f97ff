#pragma once
// Decisions on what a page may do, made by the subsystem that owns the rule
// (the popup blocker, the kill rule, offline mode, the filter lists) rather
// than by whichever slot happens to run first. Until such a subsystem sets
// its own, everything is allowed.
#include "BrowserView.h"

namespace platform {

class NavigationPolicy
{
public:
    virtual ~NavigationPolicy() = default;
    // False cancels the navigation before anything is fetched.
    virtual bool allows(BrowserView& view, const NavigationRequest& request) = 0;
};

class NewWindowPolicy
{
public:
    enum class Verdict {
        OpenInNewTab,
        // Into the hidden catch view 0, so the page's script still gets a window.
        Catch,
        Refuse,
    };
    virtual ~NewWindowPolicy() = default;
    virtual Verdict decide(BrowserView& opener, const NewWindowRequest& request) = 0;
};

// A request a page makes, its own address included, before it is sent.
struct PageRequest
{
    enum class Kind {
        Document,
        Subdocument,
        Script,
        Image,
        Stylesheet,
        Font,
        Media,
        Object,
        XmlHttpRequest,
        Ping,
        WebSocket,
        Other,
    };
    QUrl url;
    // The address of the page in the view: the first party.
    QUrl page;
    Kind kind = Kind::Other;
};

// What of a page's content is kept out: requests refused before they are
// sent, and elements hidden by a style sheet put into the page's documents
// before their own scripts run.
class ContentPolicy
{
public:
    virtual ~ContentPolicy() = default;
    virtual bool blocks(BrowserView& view, const PageRequest& request) = 0;
    // For the documents of the page the view is going to; empty for none.
    virtual QString styleFor(BrowserView& view, const QUrl& page) = 0;
};

class OpenEveryNewWindow : public NewWindowPolicy
{
public:
    Verdict decide(BrowserView&, const NewWindowRequest&) override { return Verdict::OpenInNewTab; }
};

} // namespace platform
