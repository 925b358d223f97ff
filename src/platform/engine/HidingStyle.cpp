#include "HidingStyle.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QPointer>
#include <QWebEnginePage>
#include <QWebEngineScript>
#include <QWebEngineScriptCollection>

namespace platform {

namespace {

QString scriptName()
{
    return QStringLiteral("qub-hiding-style");
}

// The sheet goes in as text of a string (JSON is a JavaScript literal), so
// nothing in it runs; both go in at once, so a "%2" of a selector stays as it
// is. put() replaces the document's sheet; when the document
// has no root element yet, it waits for one.
QString putScript(const QString& style, int version)
{
    const QByteArray literal = QJsonDocument(QJsonArray{style}).toJson(QJsonDocument::Compact);
    return QStringLiteral("(function () {"
                          "const put = () => {"
                          "document.querySelectorAll('style[data-qub-hiding]')"
                          ".forEach((old) => old.remove());"
                          "const style = %1[0];"
                          "if (!style) return;"
                          "const sheet = document.createElement('style');"
                          "sheet.dataset.qubHiding = '%2';"
                          "sheet.textContent = style;"
                          "document.documentElement.appendChild(sheet);"
                          "};"
                          "if (document.documentElement) { put(); return; }"
                          "new MutationObserver((changes, observer) => {"
                          "if (!document.documentElement) return;"
                          "observer.disconnect();"
                          "put();"
                          "}).observe(document, {childList: true});"
                          "})();")
        .arg(QString::fromUtf8(literal), QString::number(version));
}

} // namespace

void HidingStyle::set(const QString& style)
{
    if (style == style_ && version_ > 0)
        return;
    style_ = style;
    ++version_;
    QWebEngineScriptCollection& scripts = page_.scripts();
    for (const QWebEngineScript& old : scripts.find(scriptName()))
        scripts.remove(old);
    if (style.isEmpty())
        return;
    QWebEngineScript script;
    script.setName(scriptName());
    script.setInjectionPoint(QWebEngineScript::DocumentCreation);
    script.setWorldId(QWebEngineScript::ApplicationWorld);
    script.setRunsOnSubFrames(true);
    script.setSourceCode(putScript(style, version_));
    scripts.insert(script);
}

void HidingStyle::mend()
{
    if (version_ == 0)
        return;
    const QString latest = QString::number(style_.isEmpty() ? 0 : version_);
    QPointer<QWebEnginePage> page(&page_);
    page_.runJavaScript(
        QStringLiteral("(document.querySelector('style[data-qub-hiding]') || "
                       "{dataset: {qubHiding: '0'}}).dataset.qubHiding"),
        QWebEngineScript::ApplicationWorld,
        [this, page, latest, style = style_, version = version_](const QVariant& held) {
            if (page && held.toString() != latest && version == version_)
                page->runJavaScript(putScript(style, version), QWebEngineScript::ApplicationWorld);
        });
}

} // namespace platform
