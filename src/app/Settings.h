#pragma once
// The program's settings: the checked states of eight command-bar tools and
// the chosen proxy, kept in "Browser.ini". Read once at start, written once
// at exit; in between the tools' checked states are the only copy.
#include <QString>

namespace platform {
class CommandBar;
class ConnectionHelper;
} // namespace platform

class Settings
{
public:
    Settings(QString appDir, platform::CommandBar& bar, platform::ConnectionHelper& connection);

    void load();
    // False when the file could not be written.
    bool save() const;

    QString fileName() const { return appDir_ + QStringLiteral("Browser.ini"); }

private:
    QString appDir_;
    platform::CommandBar& bar_;
    platform::ConnectionHelper& connection_;
};
