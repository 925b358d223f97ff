#include "SessionRecorder.h"
#include "platform/browser/BrowserView.h"
#include "tabs/EveryTabSignals.h"
#include "tabs/TabStrip.h"

SessionRecorder::SessionRecorder(const QString& folder, TabStrip& tabs, EveryTabSignals& every)
    : tabs_(tabs), writer_(std::make_unique<SessionWriter>(folder))
{
    writer_->moveToThread(&thread_);
    thread_.setObjectName(QStringLiteral("session writer"));
    thread_.start(QThread::LowPriority);
    timer_.setSingleShot(true);
    timer_.setInterval(delayMs);
    connect(&timer_, &QTimer::timeout, this, &SessionRecorder::save);
    connect(&tabs, &TabStrip::changed, this, &SessionRecorder::changed);
    // The catch view 0 is no tab.
    const auto tabChanged = [this](platform::BrowserView* view) {
        if (view->index() != 0)
            changed();
    };
    connect(&every, &EveryTabSignals::titleChanged, this, tabChanged);
    connect(&every, &EveryTabSignals::loadStarted, this, tabChanged);
    connect(&every, &EveryTabSignals::documentComplete, this, tabChanged);
}

SessionRecorder::~SessionRecorder()
{
    thread_.quit();
    thread_.wait();
}

void SessionRecorder::resume()
{
    held_ = false;
    changed();
}

void SessionRecorder::changed()
{
    // Not restarted by later changes: the first one is written in time.
    if (!held_ && !finished_ && !timer_.isActive())
        timer_.start();
}

SessionState SessionRecorder::snapshot() const
{
    SessionState state;
    const platform::BrowserView* current = tabs_.currentView();
    for (const platform::BrowserView* view : tabs_.tabViews()) {
        if (view == current)
            state.current = int(state.tabs.size());
        state.tabs.append({view->locationUrl(), view->title()});
    }
    return state;
}

void SessionRecorder::save()
{
    // A bulk close is written once it is over.
    if (tabs_.tabViews().empty())
        return changed();
    const QByteArray text = sessionText(snapshot());
    if (text == written_)
        return;
    written_ = text;
    QMetaObject::invokeMethod(writer_.get(),
                              [writer = writer_.get(), text] { writer->write(text); });
}

void SessionRecorder::finish()
{
    timer_.stop();
    thread_.quit();
    thread_.wait();
    if (held_ || finished_)
        return;
    finished_ = true;
    SessionState state = snapshot();
    state.cleanExit = true;
    writer_->write(sessionText(state));
}
