#pragma once
// The page offered at a start after the program did not end cleanly: the
// tabs of the last session, each with a check box, "Restore" and "Start
// new", and links to the backups. It is written by the program, so nothing
// in it runs; its links and its form come back as navigations of its own
// view, which this policy answers itself. Any other navigation of that view,
// or its tab's closing, counts as "Start new".
#include "SessionState.h"
#include "platform/browser/ViewPolicies.h"

#include <QPointer>
#include <QUrlQuery>
#include <array>
#include <functional>

class TabStrip;
struct TabChange;

namespace platform {
class BrowserView;
} // namespace platform

class RestorePage : public platform::NavigationPolicy
{
public:
    // The latest version first, then the backups; empty where none was read.
    using Versions = std::array<std::optional<SessionState>, 4>;
    // A caption of the language file, or the fallback given.
    using Text = std::function<QString(const QString& key, const QString& fallback)>;

    RestorePage(TabStrip& tabs, Text text, std::function<void()> decided);

    // Opens the page in the first tab while it is blank, else in a new one.
    void offer(Versions versions);
    bool pending() const { return !view_.isNull(); }
    bool allows(platform::BrowserView& view, const platform::NavigationRequest& request) override;

private:
    void show(int version);
    void restore(int version, const QUrlQuery& query);
    void decide();
    void tabChanged(const TabChange& change);

    TabStrip& tabs_;
    Text text_;
    std::function<void()> decided_;
    Versions versions_;
    QPointer<platform::BrowserView> view_;
};

// The page's markup, showing versions[shown]; the links name the others.
QString restorePageMarkup(const RestorePage::Versions& versions, int shown,
                          const RestorePage::Text& text);
