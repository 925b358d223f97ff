#pragma once
// Fetches the resources of a page for the quick saver, within caps that keep
// a hostile page from making it hang or fill the memory.
#include "SavedPage.h"

#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QObject>
#include <QSet>

class QNetworkReply;

namespace quicksaver {

class Fetcher : public QObject
{
    Q_OBJECT
public:
    static constexpr qint64 maxResource = 20 << 20;
    static constexpr qint64 maxTotal = 100 << 20;
    static constexpr int maxParallel = 6;
    static constexpr int maxRequests = 1000;
    static constexpr int transferTimeoutMs = 20000;

    // Everything but this computer's own addresses goes through proxy, as
    // the browser's engine sends them.
    void setProxy(const QNetworkProxy& proxy);
    // Queues the addresses not asked for before and starts them; how many.
    int fetch(const QList<QUrl>& urls);
    // Aborts what is under way and takes no more.
    void stop();
    const Resources& got() const { return got_; }

signals:
    // Nothing queued and nothing under way.
    void drained();

private:
    void startNext();
    void read(QNetworkReply* reply);
    void finish(QNetworkReply* reply);

    QNetworkAccessManager network_;
    QList<QUrl> queue_;
    QSet<QUrl> asked_;
    QHash<QNetworkReply*, QByteArray> running_;
    Resources got_;
    qint64 used_ = 0; // bytes held, finished and under way
    bool stopped_ = false;
};

} // namespace quicksaver
