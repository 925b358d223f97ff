#pragma once
// Questions to the top document, evaluated in the page agent's script world.
#include "Liveness.h"
#include "platform/browser/ViewFacets.h"

class QWebEnginePage;

namespace platform {

class EngineDocument : public DocumentFacet
{
public:
    EngineDocument(QWebEnginePage& page, Liveness alive) : page_(page), alive_(std::move(alive)) {}
    void ask(const QString& script, std::function<void(const QVariant&)> answer) override;

private:
    QWebEnginePage& page_;
    Liveness alive_;
};

} // namespace platform
