#pragma once
// Editing commands on the engine, and whether each can run now. Undo, redo
// and select all are the document's own answer (queryCommandEnabled, asked in
// the page agent's world). The document answers the others only while the
// page has the focus, which the open menu has taken, and cut, copy and paste
// only to pages allowed to use the clipboard, which no page is here: those
// are read from the focused element and the selection, and paste also needs
// something on the clipboard.
#include "Liveness.h"
#include "platform/browser/ViewFacets.h"

class QWebEnginePage;

namespace platform {

class EngineEditing : public EditingFacet
{
public:
    EngineEditing(QWebEnginePage& page, Liveness alive) : page_(page), alive_(std::move(alive)) {}
    void run(EditCommand command) override;
    void queryEnabled(EditCommand command, std::function<void(bool)> answer) override;

private:
    QWebEnginePage& page_;
    Liveness alive_;
};

} // namespace platform
