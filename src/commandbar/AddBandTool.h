#pragma once
// The one routine that adds a generated tool (tab, proxy, favourite,
// translation entry...): a tool in the bar's collection with that key and
// identifier, and its copy at the end of the band. controlType is the type's
// number as text ("0" button, "5" separator); anything else is a button.
// withIcon gives it the bar's page picture. Returns the band's copy, or
// nullptr when the band does not exist.
#include <QString>

namespace commandbar {

class CommandBar;
class Tool;

Tool* AddBandTool(CommandBar& bar, const QString& bandKey, const QString& toolKey, int id,
                  const QString& controlType, const QString& caption, bool withIcon);

} // namespace commandbar
