#pragma once
// Questions to the top document, evaluated in the page agent's script world;
// the links of its frames come back from the agent over its channel.
#include "Liveness.h"
#include "PageAgent.h"
#include "platform/browser/ViewFacets.h"

#include <map>

class QWebEnginePage;

namespace platform {

class EngineDocument : public DocumentFacet
{
public:
    EngineDocument(QWebEnginePage& page, PageAgentBridge& agent, Liveness alive);
    void ask(const QString& script, std::function<void(const QVariant&)> answer) override;
    void collectLinks(std::function<void(const PageLinks&)> answer) override;
    void write(const QString& html) override;
    void removeContent(bool pictures, bool flash) override;
    // The page shows what write() made, which the engine holds as a data: address.
    bool showsWritten() const { return written_; }

private:
    void answer(int request, const PageLinks& links);
    void answerAll();

    QWebEnginePage& page_;
    Liveness alive_;
    int lastRequest_ = 0;
    bool written_ = false;
    std::map<int, std::function<void(const PageLinks&)>> waiting_;
};

} // namespace platform
