#include "TabBand.h"
#include "core/Keys.h"
#include "core/ToolKeys.h"
#include "platform/commandbar/AddBandTool.h"
#include "platform/commandbar/CommandBar.h"

std::optional<platform::SkinError> TabBand::skinProblem(const platform::CommandBar& bar)
{
    const platform::Band* tabs = bar.band(key::tabsBar);
    if (!tabs)
        return platform::SkinError{0, QStringLiteral("band \"%1\" is missing").arg(key::tabsBar)};
    if (tabs->kind() != platform::BandKind::Toolbar)
        return platform::SkinError{
            tabs->sourceLine(), QStringLiteral("band \"%1\" must be a toolbar").arg(key::tabsBar)};
    if (tabs->count() > 0)
        return platform::SkinError{
            tabs->sourceLine(),
            QStringLiteral("band \"%1\" must declare no tools: the tabs are its tools")
                .arg(key::tabsBar)};
    return std::nullopt;
}

platform::Band& TabBand::band() const
{
    return *bar_.band(key::tabsBar);
}

int TabBand::count() const
{
    return band().count();
}

platform::Tool* TabBand::tool(int viewIndex) const
{
    return band().tool(keys::tabKey(viewIndex));
}

std::vector<int> TabBand::viewIndices() const
{
    std::vector<int> indices;
    const platform::Band& tabs = band();
    for (int i = 0; i < tabs.count(); ++i)
        if (keys::isTabKey(tabs.at(i)->key()))
            indices.push_back(keys::tabIndex(tabs.at(i)->key()));
    return indices;
}

void TabBand::add(int viewIndex, const QString& caption, bool withIcon)
{
    platform::Tool* tool = platform::AddBandTool(bar_, key::tabsBar, keys::tabKey(viewIndex),
                                                 keys::tabToolBaseId + viewIndex,
                                                 QStringLiteral("0"), caption, withIcon);
    tool->setDisplayStyle(3);
    tool->setCheckable(true);
    bar_.recalcLayout();
}

void TabBand::remove(int viewIndex)
{
    platform::Band& tabs = band();
    bar_.removeTool(tabs, tabs.indexOf(tool(viewIndex)));
    bar_.removeCollectionTool(keys::tabKey(viewIndex));
}

void TabBand::setChecked(int viewIndex, bool checked)
{
    if (platform::Tool* t = tool(viewIndex))
        t->setChecked(checked);
}

void TabBand::setCaption(int viewIndex, const QString& caption)
{
    platform::Tool* t = tool(viewIndex);
    if (t && t->caption() != caption) {
        t->setCaption(caption);
        bar_.recalcLayout();
    }
}

void TabBand::setPicture(int viewIndex, const QIcon& picture)
{
    if (platform::Tool* t = tool(viewIndex))
        t->setPicture(picture);
}
