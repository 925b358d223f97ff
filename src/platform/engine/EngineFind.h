#pragma once
// Find in page on the engine.
#include "Liveness.h"
#include "platform/browser/ViewFacets.h"

class QWebEnginePage;

namespace platform {

class EngineFind : public FindFacet
{
public:
    EngineFind(QWebEnginePage& page, Liveness alive) : page_(page), alive_(std::move(alive)) {}
    void find(const QString& text, Options options, std::function<void(int)> answer) override;
    void clear() override;

private:
    QWebEnginePage& page_;
    Liveness alive_;
};

} // namespace platform
