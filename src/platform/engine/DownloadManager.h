#pragma once
// Downloads of the profile: asks where to save each file (nothing is written
// when the user cancels; a saved page comes with its path), then lists it in the downloads window
// with its progress and, when done, where it went.
#include "DownloadsWindow.h"

#include <QObject>
#include <QPointer>

class QWebEngineDownloadRequest;
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

signals:
    // ok is false when the download failed or was cancelled.
    void finished(const QString& path, bool ok);

private:
    void requested(QWebEngineDownloadRequest* download);
    // Empty when the user cancelled.
    QString askPath(const QWebEngineDownloadRequest& download);

    Dialogs& dialogs_;
    QPointer<DownloadsWindow> window_;
};

} // namespace platform
