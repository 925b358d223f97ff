#include "DownloadManager.h"
#include "DownloadsWindow.h"
#include "platform/Dialogs.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QWebEngineDownloadRequest>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineView>
#include <algorithm>

namespace platform {

DownloadManager::DownloadManager(QWebEngineProfile& profile, Dialogs& dialogs) : dialogs_(dialogs)
{
    clock_.start();
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
    running_.append(download);
    connect(download, &QWebEngineDownloadRequest::isFinishedChanged, this, [this, download, path] {
        running_.removeAll(download);
        emit finished(path, download->state() == QWebEngineDownloadRequest::DownloadCompleted);
    });
    if (!window_)
        window_ = new DownloadsWindow;
    window_->add(download);
    window_->show();
    window_->raise();
}

bool DownloadManager::mayAsk(QWebEnginePage* page)
{
    if (asking_)
        return false;
    if (!page)
        return true;
    if (!pages_.contains(page)) {
        // The first is the page's to ask for, even from a tab opened behind
        // (a link to a file opened in a new tab).
        pages_.insert(page, {});
        connect(page, &QWebEnginePage::loadStarted, this, [this, page] { pages_[page].reset(); });
        connect(page, &QObject::destroyed, this, [this, page] { pages_.remove(page); });
        return true;
    }
    const QWebEngineView* view = QWebEngineView::forPage(page);
    return view && view->isVisible() && pages_[page].allows();
}

bool DownloadManager::downloadsFrom(const QWebEnginePage& page) const
{
    return std::any_of(running_.begin(), running_.end(), [&page](const auto& download) {
        return download && download->page() == &page && !download->isFinished();
    });
}

QString DownloadManager::askPath(const QWebEngineDownloadRequest& download)
{
    QWebEnginePage* page = download.page();
    if (!mayAsk(page))
        return {};
    const QPointer<QWebEnginePage> asked(page);
    const qint64 shown = clock_.elapsed();
    asking_ = true;
    QString path = askUser(download);
    asking_ = false;
    if (asked)
        pages_[asked].answered(shown, clock_.elapsed());
    return path;
}

QString DownloadManager::askUser(const QWebEngineDownloadRequest& download)
{
    // The dialog opens in the downloads folder only if it exists.
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::DownloadLocation);
    QDir().mkpath(folder);
    return dialogs_.saveFileName(QStringLiteral("Save File"),
                                 QDir(folder).filePath(download.downloadFileName()));
}

} // namespace platform
