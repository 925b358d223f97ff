#pragma once
// Editing commands on the engine, and the document's own answer whether each
// can run now (queryCommandEnabled, asked in the page agent's world). The
// engine answers cut, copy and paste to a script only when pages may use the
// clipboard, which no page may here; those three are read from the document's
// selection and whether text can go in where it is, and paste also needs
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
