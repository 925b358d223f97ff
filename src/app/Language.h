#pragma once
// The language file "lng.ini" beside the program: captions and tooltips of the
// command bar, the window title template and the messages, all in section
// "QUB_Main". A missing key or empty value keeps the caption in force, so a
// language applied over another replaces every text it has.
#include "platform/ProgramFolder.h"

#include <QString>

#include <optional>

namespace commandbar {
class CommandBar;
} // namespace commandbar

class Language
{
public:
    explicit Language(platform::ProgramFolder folder) : folder_(std::move(folder)) {}

    QString fileName() const { return folder_.read(QStringLiteral("lng.ini")); }
    // A message or caption by key; empty when the file has none.
    QString text(const QString& key) const;
    // Captions every band (but menus) and tool, and returns the window title
    // made from "QUB_TITLE" with "{V}" as version and "{N}" as the name. Can
    // run again after lng.ini changed: the security labels are rebuilt from
    // the skin's, not appended a second time.
    QString apply(commandbar::CommandBar& bar, const QString& version);

private:
    platform::ProgramFolder folder_;
    std::optional<QString> skinSecurityLabel_;
};
