#pragma once
// Small probes of engine tests: a titled page, whether a view has loaded it,
// and a question to a page answered synchronously.
#include "platform/browser/BrowserView.h"

#include <QTest>
#include <optional>

inline QByteArray titled(const QByteArray& title, const QByteArray& body = {})
{
    return "<html><head><title>" + title + "</title></head><body>" + body + "</body></html>";
}

inline bool loaded(platform::BrowserView* view, const QString& title)
{
    return view && view->title() == title && view->readyState() == platform::BrowserView::Complete;
}

// Runs script in the page and waits for its answer.
inline QVariant ask(platform::BrowserView* view, const QString& script)
{
    std::optional<QVariant> answer;
    view->document().ask(script, [&](const QVariant& value) { answer = value; });
    if (!QTest::qWaitFor([&] { return answer.has_value(); }, 20000))
        return QStringLiteral("no answer");
    return *answer;
}

// Waits until the page has drawn two frames from now: it is on screen, laid
// out and hit-tested, so input sent to it reaches its content.
inline bool drawn(platform::BrowserView* view)
{
    ask(view, QStringLiteral("window.qubFrames = 0; requestAnimationFrame(() =>"
                             " requestAnimationFrame(() => { window.qubFrames = 2; })); 0"));
    return QTest::qWaitFor(
        [&] { return ask(view, QStringLiteral("window.qubFrames")).toInt() == 2; }, 20000);
}
