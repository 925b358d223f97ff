#include "EngineLifecycle.h"
#include "DownloadManager.h"
#include "EnginePrinting.h"
#include "PageAgent.h"

#include <QWebEnginePage>

namespace platform {

namespace {

using Engine = QWebEnginePage::LifecycleState;

LifecycleFacet::State stateOf(Engine state)
{
    switch (state) {
    case Engine::Active:
        return LifecycleFacet::State::Active;
    case Engine::Frozen:
        return LifecycleFacet::State::Frozen;
    case Engine::Discarded:
        return LifecycleFacet::State::Discarded;
    }
    return LifecycleFacet::State::Active;
}

} // namespace

EngineLifecycle::EngineLifecycle(QWebEnginePage& page, const PageAgentBridge& agent,
                                 const DownloadManager& downloads, const EnginePrinting& printing)
    : page_(page), agent_(agent), downloads_(downloads), printing_(printing)
{
}

LifecycleFacet::State EngineLifecycle::state() const
{
    return stateOf(page_.lifecycleState());
}

// The engine recommends no more than freezing an active page; once frozen,
// it tells whether discarding would lose anything it knows of.
void EngineLifecycle::rest(State deepest)
{
    if (deepest == State::Active || page_.isVisible() || downloads_.downloadsFrom(page_) ||
        printing_.busy())
        return;
    if (page_.lifecycleState() == Engine::Active && page_.recommendedState() != Engine::Active)
        page_.setLifecycleState(Engine::Frozen);
    if (deepest == State::Discarded && page_.lifecycleState() == Engine::Frozen &&
        page_.recommendedState() == Engine::Discarded && !agent_.formEdited())
        page_.setLifecycleState(Engine::Discarded);
}

} // namespace platform
