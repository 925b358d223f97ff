#include "ViewFacets.h"

namespace platform {

QString editCommandName(EditCommand command)
{
    switch (command) {
    case EditCommand::Undo:
        return QStringLiteral("undo");
    case EditCommand::Redo:
        return QStringLiteral("redo");
    case EditCommand::Cut:
        return QStringLiteral("cut");
    case EditCommand::Copy:
        return QStringLiteral("copy");
    case EditCommand::Paste:
        return QStringLiteral("paste");
    case EditCommand::Delete:
        return QStringLiteral("delete");
    case EditCommand::SelectAll:
        return QStringLiteral("selectall");
    }
    return {};
}

int lockLevel(const QUrl& url, bool weakened)
{
    if (url.scheme() != QLatin1String("https") && url.scheme() != QLatin1String("wss"))
        return 0;
    return weakened ? 1 : 2;
}

} // namespace platform
