#pragma once
// Text size on the engine: the five levels as zoom factors of the page.
#include "platform/browser/ViewFacets.h"

class QWebEnginePage;

namespace platform {

class EngineZoom : public ZoomFacet
{
public:
    explicit EngineZoom(QWebEnginePage& page) : page_(page) {}
    int level() const override;
    void setLevel(int level) override;

private:
    QWebEnginePage& page_;
};

} // namespace platform
