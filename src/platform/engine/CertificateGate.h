#pragma once
// Stands between a page and a certificate the engine does not trust. An
// overridable one waits, with the page's load on hold, for the user to go
// back or to proceed; any other is refused with an explanation. Going
// anywhere else while the question waits refuses the certificate.
#include <QObject>
#include <QSet>
#include <QWebEngineCertificateError>
#include <optional>

class QWebEnginePage;

namespace platform {

class PageNotice;

class CertificateGate : public QObject
{
    Q_OBJECT
public:
    CertificateGate(QWebEnginePage& page, PageNotice& notice);
    ~CertificateGate() override;

    bool waiting() const { return pending_.has_value(); }
    // The user answered the notice.
    void goBack();
    void proceed();
    // The user went elsewhere (a new address, stop, reload, back, forward).
    void leave();
    // Hosts whose untrusted certificate the user let through in this run.
    bool overridden(const QString& host) const { return overriddenHosts_.contains(host); }

signals:
    void noticeShown(const QString& status);
    void pageShown();

private:
    void arrived(const QWebEngineCertificateError& error);

    QWebEnginePage& page_;
    PageNotice& notice_;
    std::optional<QWebEngineCertificateError> pending_;
    QSet<QString> overriddenHosts_;
    // The refused page ends in the engine's error page, left for the page before.
    bool backAfterRefusal_ = false;
};

} // namespace platform
