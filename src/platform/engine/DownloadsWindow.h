#pragma once
// A small tool window listing this run's downloads: the file, a progress bar,
// its state, and a button to cancel it or to open the folder it went to.
#include <QWidget>

class QVBoxLayout;
class QWebEngineDownloadRequest;

namespace platform {

class DownloadsWindow : public QWidget
{
    Q_OBJECT
public:
    DownloadsWindow();

    void add(QWebEngineDownloadRequest* download);
    int count() const;

private:
    QVBoxLayout* rows_;
};

} // namespace platform
