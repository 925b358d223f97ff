#pragma once
// The keys of the tools: one window-wide action per tool copy that has a
// shortcut. The key clicks its tool (when enabled), or gives a hosted control
// the focus with its text selected to be typed over.
#include <QHash>
#include <QObject>

class QAction;
class QWidget;

namespace commandbar {

class CommandBar;
class Tool;

class ToolShortcuts : public QObject
{
    Q_OBJECT
public:
    ToolShortcuts(CommandBar& bar, QWidget& window);
    ~ToolShortcuts() override;

    // Makes, changes or removes the tool's key to match its shortcut.
    void update(Tool* tool);
    void remove(const Tool* tool);

private:
    void trigger(Tool* tool);

    CommandBar& bar_;
    QWidget& window_;
    QHash<const Tool*, QAction*> keys_;
};

} // namespace commandbar
