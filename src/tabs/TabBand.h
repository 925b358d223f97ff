#pragma once
// The tab band tb_Tabs as a mirror of the open tabs: one tool "tabs-" + view
// index per tab, in strip order, checked for the active tab only, captioned
// with its page's short title. The one place that adds, removes and changes
// tab tools.
#include "commandbar/SkinLoader.h"

#include <QString>
#include <optional>
#include <vector>

class QIcon;

namespace commandbar {
class Band;
class CommandBar;
class Tool;
} // namespace commandbar

class TabBand
{
public:
    explicit TabBand(commandbar::CommandBar& bar) : bar_(bar) {}

    // What the tab band of a skin lacks for the strip to work.
    static std::optional<commandbar::SkinError> skinProblem(const commandbar::CommandBar& bar);

    commandbar::Band& band() const;
    int count() const;
    commandbar::Tool* tool(int viewIndex) const;
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
    commandbar::CommandBar& bar_;
};
