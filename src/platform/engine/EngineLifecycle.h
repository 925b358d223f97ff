#pragma once
// LifecycleFacet on the engine's own page lifecycle. The engine already keeps
// a page active while it is shown, loads or plays sound; a download under way,
// a print job and a form the user edited are told here.
#include "platform/browser/ViewFacets.h"

class QWebEnginePage;

namespace platform {

class DownloadManager;
class EnginePrinting;
class PageAgentBridge;

class EngineLifecycle : public LifecycleFacet
{
public:
    EngineLifecycle(QWebEnginePage& page, const PageAgentBridge& agent,
                    const DownloadManager& downloads, const EnginePrinting& printing);

    State state() const override;
    void rest(State deepest) override;

private:
    QWebEnginePage& page_;
    const PageAgentBridge& agent_;
    const DownloadManager& downloads_;
    const EnginePrinting& printing_;
};

} // namespace platform
