#include "Fetcher.h"

#include <QHostAddress>
#include <QNetworkProxyFactory>
#include <QNetworkReply>

namespace quicksaver {

namespace {

class ProxyButForThisComputer : public QNetworkProxyFactory
{
public:
    explicit ProxyButForThisComputer(const QNetworkProxy& proxy) : proxy_(proxy) {}

    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery& query) override
    {
        const QString host = query.peerHostName().toLower();
        const bool here = host == QLatin1String("localhost") ||
                          host.endsWith(QLatin1String(".localhost")) ||
                          QHostAddress(host).isLoopback();
        return {here ? QNetworkProxy(QNetworkProxy::NoProxy) : proxy_};
    }

private:
    QNetworkProxy proxy_;
};

} // namespace

void Fetcher::setProxy(const QNetworkProxy& proxy)
{
    network_.setProxyFactory(new ProxyButForThisComputer(proxy));
}

int Fetcher::fetch(const QList<QUrl>& urls)
{
    int queued = 0;
    for (const QUrl& url : urls) {
        if (stopped_ || asked_.size() >= maxRequests)
            break;
        if (asked_.contains(url))
            continue;
        asked_.insert(url);
        queue_ << url;
        ++queued;
    }
    startNext();
    return queued;
}

void Fetcher::stop()
{
    stopped_ = true;
    queue_.clear();
    for (QNetworkReply* reply : running_.keys())
        reply->abort();
}

void Fetcher::startNext()
{
    while (!stopped_ && running_.size() < maxParallel && !queue_.isEmpty()) {
        QNetworkRequest request(queue_.takeFirst());
        request.setTransferTimeout(transferTimeoutMs);
        QNetworkReply* reply = network_.get(request);
        running_.insert(reply, {});
        connect(reply, &QNetworkReply::readyRead, this, [this, reply] { read(reply); });
        connect(reply, &QNetworkReply::finished, this, [this, reply] { finish(reply); });
    }
}

void Fetcher::read(QNetworkReply* reply)
{
    QByteArray& data = running_[reply];
    const QByteArray chunk = reply->readAll();
    data += chunk;
    used_ += chunk.size();
    // Last: abort() finishes the reply at once, which drops its data.
    if (data.size() > maxResource || used_ > maxTotal)
        reply->abort();
}

void Fetcher::finish(QNetworkReply* reply)
{
    reply->deleteLater();
    const QByteArray tail = reply->isOpen() ? reply->readAll() : QByteArray();
    const QByteArray data = running_.take(reply) + tail;
    used_ += tail.size();
    if (reply->error() == QNetworkReply::NoError && data.size() <= maxResource && used_ <= maxTotal)
        got_.insert(
            reply->request().url(),
            {data, reply->header(QNetworkRequest::ContentTypeHeader).toByteArray(), reply->url()});
    else
        used_ -= data.size();
    startNext();
    if (running_.isEmpty() && queue_.isEmpty())
        emit drained();
}

} // namespace quicksaver
