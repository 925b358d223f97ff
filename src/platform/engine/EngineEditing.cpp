#include "EngineEditing.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
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

namespace {

QString enabledScript(EditCommand command)
{
    // A password is never copied out of its field.
    const QString copyable = QStringLiteral(
        "getSelection().type === 'Range' && document.activeElement?.type !== 'password'");
    const QString editable = QStringLiteral("document.queryCommandEnabled('insertText')");
    switch (command) {
    case EditCommand::Cut:
        return copyable + QStringLiteral(" && ") + editable;
    case EditCommand::Copy:
        return copyable;
    case EditCommand::Paste:
        return editable;
    default:
        return QStringLiteral("document.queryCommandEnabled('%1')").arg(editCommandName(command));
    }
}

} // namespace

void EngineEditing::queryEnabled(EditCommand command, std::function<void(bool)> answer)
{
    const bool needsClipboard = command == EditCommand::Paste;
    page_.runJavaScript(
        enabledScript(command), QWebEngineScript::ApplicationWorld,
        whileAlive(alive_, [answer = std::move(answer), needsClipboard](const QVariant& value) {
            const QMimeData* clip = QGuiApplication::clipboard()->mimeData();
            answer(value.toBool() && (!needsClipboard || (clip && !clip->formats().isEmpty())));
        }));
}

} // namespace platform
