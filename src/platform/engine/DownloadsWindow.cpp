#include "DownloadsWindow.h"

#include <QDesktopServices>
#include <QDir>
#include <QGridLayout>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollArea>
#include <QUrl>
#include <QWebEngineDownloadRequest>

namespace platform {

namespace {

QString stateText(const QWebEngineDownloadRequest& download)
{
    const QString path =
        QDir::toNativeSeparators(download.downloadDirectory() + u'/' + download.downloadFileName());
    switch (download.state()) {
    case QWebEngineDownloadRequest::DownloadCompleted:
        return QStringLiteral("Saved to %1").arg(path);
    case QWebEngineDownloadRequest::DownloadCancelled:
        return QStringLiteral("Cancelled");
    case QWebEngineDownloadRequest::DownloadInterrupted:
        return QStringLiteral("Failed: %1").arg(download.interruptReasonString());
    default:
        break;
    }
    const QLocale locale;
    if (download.totalBytes() > 0)
        return QStringLiteral("%1 of %2")
            .arg(locale.formattedDataSize(download.receivedBytes()),
                 locale.formattedDataSize(download.totalBytes()));
    return locale.formattedDataSize(download.receivedBytes());
}

} // namespace

DownloadsWindow::DownloadsWindow()
{
    setObjectName(QStringLiteral("frm_Downloads"));
    setWindowTitle(QStringLiteral("Downloads - QUB-BROWSER"));
    setWindowFlag(Qt::Tool);
    resize(460, 220);
    auto* inner = new QWidget;
    rows_ = new QVBoxLayout(inner);
    rows_->addStretch();
    auto* scroll = new QScrollArea(this);
    scroll->setWidgetResizable(true);
    scroll->setWidget(inner);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(scroll);
}

int DownloadsWindow::count() const
{
    return rows_->count() - 1;
}

void DownloadsWindow::add(QWebEngineDownloadRequest* download)
{
    auto* row = new QWidget;
    auto* grid = new QGridLayout(row);
    auto* name = new QLabel(download->downloadFileName(), row);
    QFont bold = name->font();
    bold.setBold(true);
    name->setFont(bold);
    auto* bar = new QProgressBar(row);
    auto* state = new QLabel(row);
    state->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto* button = new QPushButton(QStringLiteral("Cancel"), row);
    grid->addWidget(name, 0, 0);
    grid->addWidget(button, 0, 1, 2, 1);
    grid->addWidget(bar, 1, 0);
    grid->addWidget(state, 2, 0, 1, 2);
    rows_->insertWidget(0, row);

    auto update = [download, bar, state, button] {
        const bool done = download->isFinished();
        bar->setRange(0, download->totalBytes() > 0 ? 100 : (done ? 100 : 0));
        if (download->totalBytes() > 0 || done)
            bar->setValue(done ? 100
                               : int(download->receivedBytes() * 100 / download->totalBytes()));
        state->setText(stateText(*download));
        if (done) {
            const bool saved = download->state() == QWebEngineDownloadRequest::DownloadCompleted;
            button->setText(QStringLiteral("Open Folder"));
            button->setVisible(saved);
            bar->setVisible(saved);
        }
    };
    connect(download, &QWebEngineDownloadRequest::receivedBytesChanged, row, update);
    connect(download, &QWebEngineDownloadRequest::stateChanged, row, update);
    connect(download, &QWebEngineDownloadRequest::isFinishedChanged, row, update);
    connect(button, &QPushButton::clicked, row, [download] {
        if (!download->isFinished())
            download->cancel();
        else
            QDesktopServices::openUrl(QUrl::fromLocalFile(download->downloadDirectory()));
    });
    update();
}

} // namespace platform
