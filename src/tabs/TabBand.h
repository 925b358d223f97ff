#pragma once
// The tab band tb_Tabs as a mirror of the open tabs: one tool "tabs-" + view
// index per tab, in strip order, checked for the active tab only, captioned
// with its page's short title. The one place that adds, removes and changes
// tab tools.
#include "platform/commandbar/SkinLoader.h"

#include <QString>
#include <optional>
#include <vector>

class QIcon;

namespace platform {
class Band;
class CommandBar;
class Tool;
} // namespace platform

class TabBand
{
public:
    explicit TabBand(platform::CommandBar& bar) : bar_(bar) {}

    // What the tab band of a skin lacks for the strip to work.
    static std::optional<platform::SkinError> skinProblem(const platform::CommandBar& bar);

    platform::Band& band() const;
    int count() const;
    platform::Tool* tool(int viewIndex) const;
    // The view index of every tab tool, in strip order.
    std::vector<int> viewIndices() const;

    // Appends the tool of a new tab and has the bar laid out again.
    void add(int viewIndex, const QString& caption, bool withIcon);
    // Tab keys are never used again, so the bar's collection lets them go too.
    void remove(int viewIndex);
    void setChecked(int viewIndex, bool checked);
    // Lays the bar out again only when the caption changes.
    void setCaption(int viewIndex, const QString& caption);
    void setPicture(int viewIndex, const QIcon& picture);

private:
    platform::CommandBar& bar_;
};
