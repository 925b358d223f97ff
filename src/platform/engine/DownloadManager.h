#pragma once
// Downloads of the profile: asks where to save each file (nothing is written
// when the user cancels; a saved page comes with its path), then lists it in
// the downloads window with its progress and, when done, where it went. A
// page cannot bury the user in save dialogs: one is open at a time, and after
// a page's first download the next ones come only from the tab in view and
// within the dialog limit of script dialogs; the rest are refused unasked.
#include "DownloadsWindow.h"
#include "platform/browser/ScriptDialogLimit.h"

#include <QElapsedTimer>
#include <QHash>
#include <QList>
#include <QObject>
#include <QPointer>

class QWebEngineDownloadRequest;
class QWebEnginePage;
class QWebEngineProfile;

namespace platform {

class Dialogs;

class DownloadManager : public QObject
{
    Q_OBJECT
public:
    DownloadManager(QWebEngineProfile& profile, Dialogs& dialogs);
    ~DownloadManager() override;

    // The window, once a download has started; nullptr before.
    DownloadsWindow* window() const { return window_; }
    // Whether a download that page started is still under way.
    bool downloadsFrom(const QWebEnginePage& page) const;

signals:
    // ok is false when the download failed or was cancelled.
    void finished(const QString& path, bool ok);

private:
    void requested(QWebEngineDownloadRequest* download);
    // Empty when the user cancelled or the page may not ask now.
    QString askPath(const QWebEngineDownloadRequest& download);
    bool mayAsk(QWebEnginePage* page);
    QString askUser(const QWebEngineDownloadRequest& download);

    Dialogs& dialogs_;
    bool asking_ = false;
    // Each page's save dialogs since it last loaded; a page not listed has
    // asked for no download yet.
    QHash<const QWebEnginePage*, ScriptDialogLimit> pages_;
    QElapsedTimer clock_;
    QPointer<DownloadsWindow> window_;
    QList<QPointer<QWebEngineDownloadRequest>> running_;
};

} // namespace platform
