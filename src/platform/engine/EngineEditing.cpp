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

// What the focused element allows, read from the element itself: the
// document's own answers change once the menu has taken the focus.
constexpr QLatin1String fieldState{R"((() => {
  const e = document.activeElement;
  const field = !!e && (e.tagName === 'TEXTAREA' || e.tagName === 'INPUT');
  const typed = field && !e.readOnly && !e.disabled &&
      !/^(button|checkbox|color|file|hidden|image|radio|range|reset|submit)$/.test(e.type);
  return {
    editable: document.designMode === 'on' || !!(e && e.isContentEditable) || typed,
    selected: field && typeof e.selectionStart === 'number'
        ? e.selectionStart !== e.selectionEnd : getSelection().type === 'Range',
    secret: field && e.type === 'password'
  };
})())"};

QString enabledScript(EditCommand command)
{
    const auto given = [](const char* test) {
        return QStringLiteral("(s => %1)(%2)").arg(QLatin1String(test), fieldState);
    };
    switch (command) {
    case EditCommand::Cut:
        // A password is never copied out of its field.
        return given("s.selected && !s.secret && s.editable");
    case EditCommand::Copy:
        return given("s.selected && !s.secret");
    case EditCommand::Paste:
    case EditCommand::Delete:
        return given("s.editable");
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
