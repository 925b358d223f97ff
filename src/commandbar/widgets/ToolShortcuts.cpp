#include "ToolShortcuts.h"
#include "commandbar/CommandBar.h"

#include <QAction>
#include <QComboBox>
#include <QLineEdit>

namespace commandbar {

ToolShortcuts::ToolShortcuts(CommandBar& bar, QWidget& window) : bar_(bar), window_(window) {}

ToolShortcuts::~ToolShortcuts()
{
    qDeleteAll(keys_);
}

void ToolShortcuts::update(Tool* tool)
{
    if (tool->shortcut().isEmpty()) {
        remove(tool);
        return;
    }
    QAction* key = keys_.value(tool);
    if (!key) {
        key = new QAction(&window_);
        key->setShortcutContext(Qt::WindowShortcut);
        window_.addAction(key);
        connect(key, &QAction::triggered, this, [this, tool] { trigger(tool); });
        keys_.insert(tool, key);
    }
    key->setShortcut(QKeySequence(tool->shortcut()));
}

void ToolShortcuts::remove(const Tool* tool)
{
    delete keys_.take(tool);
}

void ToolShortcuts::trigger(Tool* tool)
{
    if (tool->type() != ControlType::Hosted) {
        if (tool->enabled())
            bar_.reportClick(tool);
        return;
    }
    auto* control = qobject_cast<QWidget*>(tool->control());
    if (!control)
        return;
    // A hosted control has no click: its key gives it the focus.
    control->setFocus(Qt::ShortcutFocusReason);
    auto* edit = qobject_cast<QLineEdit*>(control);
    if (auto* combo = qobject_cast<QComboBox*>(control))
        edit = combo->lineEdit();
    if (edit)
        edit->selectAll();
}

} // namespace commandbar
