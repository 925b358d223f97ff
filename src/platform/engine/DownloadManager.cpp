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
    QString path;
    if (download->isSavePageDownload()) {
        // A saved page comes accepted, with the path the user already chose.
        path = QDir(download->downloadDirectory()).filePath(download->downloadFileName());
    } else {
        path = askPath(*download);
        if (path.isEmpty()) {
            download->cancel();
            return;
        }
        const QFileInfo target(path);
        download->setDownloadDirectory(target.absolutePath());
        download->setDownloadFileName(target.fileName());
        download->accept();
    }
    connect(download, &QWebEngineDownloadRequest::isFinishedChanged, this, [this, download, path] {
        emit finished(path, download->state() == QWebEngineDownloadRequest::DownloadCompleted);
    });
    if (!window_)
        window_ = new DownloadsWindow;
    window_->add(download);
    window_->show();
    window_->raise();
}

QString DownloadManager::askPath(const QWebEngineDownloadRequest& download)
{
    // The dialog opens in the downloads folder only if it exists.
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::DownloadLocation);
    QDir().mkpath(folder);
    return dialogs_.saveFileName(QStringLiteral("Save File"),
                                 QDir(folder).filePath(download.downloadFileName()));
}

} // namespace platform
