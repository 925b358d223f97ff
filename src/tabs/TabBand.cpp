#include "TabBand.h"
#include "commandbar/AddBandTool.h"
#include "commandbar/CommandBar.h"
#include "core/Keys.h"
#include "core/ToolKeys.h"

std::optional<commandbar::SkinError> TabBand::skinProblem(const commandbar::CommandBar& bar)
{
    const commandbar::Band* tabs = bar.band(key::tabsBar);
    if (!tabs)
        return commandbar::SkinError{0, QStringLiteral("band \"%1\" is missing").arg(key::tabsBar)};
    if (tabs->kind() != commandbar::BandKind::Toolbar)
        return commandbar::SkinError{
            tabs->sourceLine(), QStringLiteral("band \"%1\" must be a toolbar").arg(key::tabsBar)};
    if (tabs->count() > 0)
        return commandbar::SkinError{
            tabs->sourceLine(),
            QStringLiteral("band \"%1\" must declare no tools: the tabs are its tools")
                .arg(key::tabsBar)};
    return std::nullopt;
}

commandbar::Band& TabBand::band() const
{
    return *bar_.band(key::tabsBar);
}

int TabBand::count() const
{
    return band().count();
}

commandbar::Tool* TabBand::tool(int viewIndex) const
{
    return band().tool(keys::tabKey(viewIndex));
}

std::vector<int> TabBand::viewIndices() const
{
    std::vector<int> indices;
    const commandbar::Band& tabs = band();
    for (int i = 0; i < tabs.count(); ++i)
        if (keys::isTabKey(tabs.at(i)->key()))
            indices.push_back(keys::tabIndex(tabs.at(i)->key()));
    return indices;
}

void TabBand::add(int viewIndex, const QString& caption, bool withIcon)
{
    commandbar::Tool* tool = commandbar::AddBandTool(bar_, key::tabsBar, keys::tabKey(viewIndex),
                                                     keys::tabToolBaseId + viewIndex,
                                                     QStringLiteral("0"), caption, withIcon);
    tool->setDisplayStyle(commandbar::DisplayStyle::PictureAndCaption);
    tool->setCheckable(true);
    bar_.recalcLayout();
}

void TabBand::remove(int viewIndex)
{
    commandbar::Band& tabs = band();
    bar_.removeTool(tabs, tabs.indexOf(tool(viewIndex)));
    bar_.removeCollectionTool(keys::tabKey(viewIndex));
}

void TabBand::setChecked(int viewIndex, bool checked)
{
    if (commandbar::Tool* t = tool(viewIndex))
        t->setChecked(checked);
}

void TabBand::setCaption(int viewIndex, const QString& caption)
{
    commandbar::Tool* t = tool(viewIndex);
    if (t && t->caption() != caption) {
        t->setCaption(caption);
        bar_.recalcLayout();
    }
}

void TabBand::setPicture(int viewIndex, const QIcon& picture)
{
    if (commandbar::Tool* t = tool(viewIndex))
        t->setPicture(picture);
}
