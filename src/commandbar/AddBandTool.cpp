#include "AddBandTool.h"
#include "CommandBar.h"

namespace commandbar {

static ControlType controlTypeOf(const QString& text)
{
    switch (text.trimmed().toInt()) {
    case int(ControlType::DropDown):
        return ControlType::DropDown;
    case int(ControlType::Hosted):
        return ControlType::Hosted;
    case int(ControlType::Label):
        return ControlType::Label;
    case int(ControlType::Separator):
        return ControlType::Separator;
    default:
        return ControlType::Button;
    }
}

Tool* AddBandTool(CommandBar& bar, const QString& bandKey, const QString& toolKey, int id,
                  const QString& controlType, const QString& caption, bool withIcon)
{
    Band* band = bar.band(bandKey);
    if (!band)
        return nullptr;
    Tool* tool = bar.addTool(toolKey, id, controlTypeOf(controlType));
    tool->setCaption(caption);
    if (withIcon)
        tool->setPicture(bar.pagePicture());
    return bar.insertTool(*band, *tool);
}

} // namespace commandbar
