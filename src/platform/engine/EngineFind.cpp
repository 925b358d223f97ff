#include "EngineFind.h"

#include <QWebEngineFindTextResult>
#include <QWebEnginePage>

namespace platform {

void EngineFind::find(const QString& text, Options options, std::function<void(int)> answer)
{
    QWebEnginePage::FindFlags flags;
    if (options.backward)
        flags |= QWebEnginePage::FindBackward;
    if (options.caseSensitive)
        flags |= QWebEnginePage::FindCaseSensitively;
    page_.findText(
        text, flags,
        whileAlive(alive_, [answer = std::move(answer)](const QWebEngineFindTextResult& result) {
            answer(result.numberOfMatches());
        }));
}

void EngineFind::clear()
{
    page_.findText(QString());
}

} // namespace platform
