#pragma once
// Editing commands on the engine, and the document's own answer whether each
// can run now (queryCommandEnabled, asked in the page agent's world).
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
