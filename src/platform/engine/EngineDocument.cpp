#include "EngineDocument.h"

#include <QWebEnginePage>
#include <QWebEngineScript>

namespace platform {

void EngineDocument::ask(const QString& script, std::function<void(const QVariant&)> answer)
{
    page_.runJavaScript(script, QWebEngineScript::ApplicationWorld,
                        whileAlive(alive_, std::move(answer)));
}

} // namespace platform
