#pragma once
// The engine's "--host-resolver-rules" (its "MAP pattern target" rules), read
// from the program's arguments and QTWEBENGINE_CHROMIUM_FLAGS. Once pages go
// through the program's own proxy the engine looks up no names itself, so the
// proxy applies the same rules where it connects directly.
#include <QRegularExpression>
#include <QStringList>

#include <vector>

namespace proxy {

class HostRules
{
public:
    static HostRules fromArguments(const QStringList& arguments);
    // The words of QTWEBENGINE_CHROMIUM_FLAGS as the engine reads them:
    // split at spaces outside double quotes, the quotes themselves dropped.
    static QStringList splitFlags(const QString& flags);

    // The host to connect to for host: a rule's target, or host itself.
    QString map(const QString& host) const;

private:
    struct Rule
    {
        QRegularExpression pattern;
        QString target;
    };
    std::vector<Rule> rules_;
};

} // namespace proxy
