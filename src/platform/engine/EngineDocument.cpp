#include "EngineDocument.h"
#include "PageAgent.h"

#include <QWebEnginePage>
#include <QWebEngineScript>

namespace platform {

EngineDocument::EngineDocument(QWebEnginePage& page, PageAgentBridge& agent, Liveness alive)
    : page_(page), alive_(std::move(alive))
{
    QObject::connect(&agent, &PageAgentBridge::linksReady, &page,
                     [this](int request, const PageLinks& links) { answer(request, links); });
    // A new document, or a dead renderer, will never answer what was asked.
    QObject::connect(&page, &QWebEnginePage::loadStarted, &page, [this] { answerAll(); });
    QObject::connect(&page, &QWebEnginePage::renderProcessTerminated, &page,
                     [this] { answerAll(); });
    QObject::connect(&page, &QWebEnginePage::urlChanged, &page, [this](const QUrl& url) {
        if (url.scheme() != QLatin1String("data"))
            written_ = false;
    });
}

void EngineDocument::ask(const QString& script, std::function<void(const QVariant&)> answer)
{
    page_.runJavaScript(script, QWebEngineScript::ApplicationWorld,
                        whileAlive(alive_, std::move(answer)));
}

void EngineDocument::collectLinks(std::function<void(const PageLinks&)> answer)
{
    const int request = ++lastRequest_;
    waiting_[request] = std::move(answer);
    // A document without the agent (a PDF, a page that never loaded) says so.
    const QString call = QStringLiteral("!!window.qubCollectLinks && (qubCollectLinks(%1), true)");
    page_.runJavaScript(call.arg(request), QWebEngineScript::ApplicationWorld,
                        whileAlive(alive_, [this, request](const QVariant& called) {
                            if (!called.toBool())
                                this->answer(request, {});
                        }));
}

void EngineDocument::write(const QString& html)
{
    written_ = true;
    page_.setHtml(html, QUrl(QStringLiteral("about:blank")));
}

void EngineDocument::removeContent(bool pictures, bool flash)
{
    setAgentRemoval(*page_.profile(), pictures, flash);
    const QString call = QStringLiteral("window.qubRemoveContent && qubRemoveContent(%1, %2)");
    page_.runJavaScript(call.arg(QLatin1String(pictures ? "true" : "false"),
                                 QLatin1String(flash ? "true" : "false")),
                        QWebEngineScript::ApplicationWorld);
}

void EngineDocument::answer(int request, const PageLinks& links)
{
    auto found = waiting_.find(request);
    if (found == waiting_.end())
        return;
    auto answer = std::move(found->second);
    waiting_.erase(found);
    answer(links);
}

void EngineDocument::answerAll()
{
    for (auto& [request, answer] : std::exchange(waiting_, {}))
        answer({});
}

} // namespace platform
