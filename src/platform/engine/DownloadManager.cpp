#include "DownloadManager.h"
#include "DownloadsWindow.h"
#include "platform/Dialogs.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QWebEngineDownloadRequest>
#include <QWebEngineProfile>

namespace platform {

DownloadManager::DownloadManager(QWebEngineProfile& profile, Dialogs& dialogs) : dialogs_(dialogs)
{
    connect(&profile, &QWebEngineProfile::downloadRequested, this, &DownloadManager::requested);
}

DownloadManager::~DownloadManager()
{
    delete window_;
}

void DownloadManager::requested(QWebEngineDownloadRequest* download)
{
    // The dialog opens in the downloads folder only if it exists.
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::DownloadLocation);
    QDir().mkpath(folder);
    const QString path = dialogs_.saveFileName(QStringLiteral("Save File"),
                                               QDir(folder).filePath(download->downloadFileName()));
    if (path.isEmpty()) {
        download->cancel();
        return;
    }
    const QFileInfo target(path);
    download->setDownloadDirectory(target.absolutePath());
    download->setDownloadFileName(target.fileName());
    connect(download, &QWebEngineDownloadRequest::isFinishedChanged, this, [this, download, path] {
        emit finished(path, download->state() == QWebEngineDownloadRequest::DownloadCompleted);
    });
    download->accept();
    if (!window_)
        window_ = new DownloadsWindow;
    window_->add(download);
    window_->show();
    window_->raise();
    emit started(path);
}

} // namespace platform
