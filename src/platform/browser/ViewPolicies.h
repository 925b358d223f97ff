#pragma once
// Decisions on what a page may do, made by the subsystem that owns the rule
// (the popup blocker, the kill rule, offline mode) rather than by whichever
// slot happens to run first. Until such a subsystem sets its own, everything
// is allowed.
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

class OpenEveryNewWindow : public NewWindowPolicy
{
public:
    Verdict decide(BrowserView&, const NewWindowRequest&) override { return Verdict::OpenInNewTab; }
};

} // namespace platform
