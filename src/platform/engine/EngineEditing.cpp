#include "EngineEditing.h"

#include <QWebEnginePage>
#include <QWebEngineScript>

namespace platform {

void EngineEditing::run(EditCommand command)
{
    switch (command) {
    case EditCommand::Undo:
        return page_.triggerAction(QWebEnginePage::Undo);
    case EditCommand::Redo:
        return page_.triggerAction(QWebEnginePage::Redo);
    case EditCommand::Cut:
        return page_.triggerAction(QWebEnginePage::Cut);
    case EditCommand::Copy:
        return page_.triggerAction(QWebEnginePage::Copy);
    case EditCommand::Paste:
        return page_.triggerAction(QWebEnginePage::Paste);
    case EditCommand::SelectAll:
        return page_.triggerAction(QWebEnginePage::SelectAll);
    case EditCommand::Delete:
        // The engine has no action of its own for deleting the selection.
        page_.runJavaScript(QStringLiteral("document.execCommand('delete')"),
                            QWebEngineScript::ApplicationWorld);
        return;
    }
}

void EngineEditing::queryEnabled(EditCommand command, std::function<void(bool)> answer)
{
    const QString script =
        QStringLiteral("document.queryCommandEnabled('%1')").arg(editCommandName(command));
    page_.runJavaScript(script, QWebEngineScript::ApplicationWorld,
                        whileAlive(alive_, [answer = std::move(answer)](const QVariant& value) {
                            answer(value.toBool());
                        }));
}

} // namespace platform
