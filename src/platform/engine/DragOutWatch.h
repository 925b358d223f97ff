#pragma once
// Tells when a drag that began in a page ended outside it: the page agent
// says what the drag carries and when it ends, the view's drag events
// whether the pointer was last inside the page. A drop the page did not take
// still ends inside it.
#include <QObject>

class QWebEngineView;

namespace platform {

class PageAgentBridge;

class DragOutWatch : public QObject
{
    Q_OBJECT
public:
    DragOutWatch(QWebEngineView& view, PageAgentBridge& agent);

signals:
    void draggedOut(const QString& address);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QString carried_;
    bool inside_ = true;
};

} // namespace platform
