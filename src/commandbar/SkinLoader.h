#pragma once
// Loads a command-bar layout ("skin") from its text file into a CommandBar.
// The format is described in docs/skin-format.md. Nothing is added to the bar
// unless the whole file is valid.
#include <QString>
#include <optional>

namespace commandbar {

class CommandBar;

struct SkinError
{
    int line = 0; // 0: the file as a whole
    QString message;
    QString text(const QString& fileName) const;
};

class SkinLoader
{
public:
    static std::optional<SkinError> loadFile(CommandBar& bar, const QString& path);
    static std::optional<SkinError> loadText(CommandBar& bar, const QString& text);
};

} // namespace commandbar
