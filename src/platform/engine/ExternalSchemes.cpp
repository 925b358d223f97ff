#include "ExternalSchemes.h"
#include "platform/Dialogs.h"
#include "platform/Shell.h"

#include <QUrl>

namespace platform {

bool isPageScheme(const QUrl& url)
{
    static constexpr QLatin1String pageSchemes[] = {
        QLatin1String("http"),     QLatin1String("https"),       QLatin1String("file"),
        QLatin1String("data"),     QLatin1String("blob"),        QLatin1String("about"),
        QLatin1String("qrc"),      QLatin1String("view-source"), QLatin1String("chrome"),
        QLatin1String("devtools"), QLatin1String("filesystem")};
    const QString scheme = url.scheme();
    for (const QLatin1String known : pageSchemes)
        if (scheme == known)
            return true;
    return false;
}

bool openExternally(const QUrl& url, Shell& shell, Dialogs& dialogs)
{
    const QString program = shell.handlerName(url.scheme());
    if (program.isEmpty())
        return false;
    // The address is the page's to choose: shown whole up to a sane length.
    const QString address = url.toDisplayString().left(300);
    const QString question =
        QStringLiteral("This page wants to open %1 with %2.\n\nOpen it?").arg(address, program);
    if (dialogs.message(question, Dialogs::Buttons::OkCancel, Dialogs::Icon::Question,
                        QStringLiteral("Open %1?").arg(program)) != Dialogs::Answer::Ok)
        return false;
    return shell.open(url.toString(QUrl::FullyEncoded));
}

} // namespace platform
