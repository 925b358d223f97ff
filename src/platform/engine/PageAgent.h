#pragma once
// The page agent: a script that runs in every frame of every page, in a world
// of its own that page scripts cannot see, and pushes mouse-down and click
// records, the start and end of drags, and the first edit of a form, to the program over a web
// channel. Subframes hand their records to the top frame, which alone holds the channel. See
// docs/page-agent.md.
#include "platform/browser/PageClick.h"
#include "platform/browser/ViewFacets.h"

#include <QObject>
#include <QVariantMap>

class QWebEnginePage;
class QWebEngineProfile;

namespace platform {

class PageAgentBridge : public QObject
{
    Q_OBJECT
public:
    explicit PageAgentBridge(QWebEnginePage& page);

    // Called by the agent in the page.
    Q_INVOKABLE void report(const QVariantMap& record);
    Q_INVOKABLE void linksCollected(int request, const QVariantList& documents);
    Q_INVOKABLE void dragStart(const QString& address) { emit dragStarted(address); }
    Q_INVOKABLE void dragEnd() { emit dragEnded(); }
    Q_INVOKABLE void setFormEdited(bool edited) { formEdited_ = edited; }

    // The user typed into or changed a form field of the document shown, or
    // of one of its frames.
    bool formEdited() const { return formEdited_; }

signals:
    void pageMouseDown(const platform::PageClick& click);
    void pageClicked(const platform::PageClick& click);
    void linksReady(int request, const platform::PageLinks& links);
    // A drag began in the top frame, carrying a picture's own address or the
    // dragged text; and it ended, wherever that was.
    void dragStarted(const QString& address);
    void dragEnded();

private:
    bool formEdited_ = false;
};

// Puts the agent script into the profile's scripts; once per profile.
void installPageAgent(QWebEngineProfile& profile);
// Whether the agent of each frame that loads from now on takes the pictures
// or the Flash movies out of its own document.
void setAgentRemoval(QWebEngineProfile& profile, bool pictures, bool flash);

} // namespace platform
