#include "CertificateGate.h"
#include "PageNotice.h"

#include <QWebEngineHistory>
#include <QWebEnginePage>

namespace platform {

CertificateGate::CertificateGate(QWebEnginePage& page, PageNotice& notice)
    : QObject(&page), page_(page), notice_(notice)
{
    connect(&page, &QWebEnginePage::certificateError, this, &CertificateGate::arrived);
    connect(&page, &QWebEnginePage::loadFinished, this, [this](bool ok) {
        if (std::exchange(backAfterRefusal_, false) && !ok && page_.history()->canGoBack())
            page_.triggerAction(QWebEnginePage::Back);
    });
}

CertificateGate::~CertificateGate()
{
    if (pending_)
        pending_->rejectCertificate();
}

void CertificateGate::arrived(const QWebEngineCertificateError& error)
{
    const QString host = error.url().host().toHtmlEscaped();
    const QString why = error.description().toHtmlEscaped();
    if (!error.isOverridable()) {
        notice_.set(QStringLiteral("This site cannot be trusted"),
                    QStringLiteral("The certificate of %1 is not valid: %2").arg(host, why),
                    QStringLiteral("Go back"));
        emit noticeShown({});
        return; // refused when this returns
    }
    if (pending_)
        pending_->rejectCertificate();
    pending_ = error;
    pending_->defer();
    notice_.set(QStringLiteral("This connection is not private"),
                QStringLiteral("The certificate of %1 is not trusted: %2<br>Someone may be "
                               "trying to read or change what you send to this site.")
                    .arg(host, why),
                QStringLiteral("Go back"), QStringLiteral("Proceed anyway"));
    emit noticeShown(QStringLiteral("Certificate not trusted"));
}

void CertificateGate::goBack()
{
    emit pageShown();
    if (pending_) {
        backAfterRefusal_ = true;
        std::exchange(pending_, std::nullopt)->rejectCertificate();
    } else if (page_.history()->canGoBack()) {
        page_.triggerAction(QWebEnginePage::Back);
    }
}

void CertificateGate::proceed()
{
    if (!pending_)
        return;
    overriddenHosts_.insert(pending_->url().host());
    std::exchange(pending_, std::nullopt)->acceptCertificate();
    emit pageShown();
}

void CertificateGate::leave()
{
    backAfterRefusal_ = false;
    if (pending_) {
        std::exchange(pending_, std::nullopt)->rejectCertificate();
        emit pageShown();
    }
}

} // namespace platform
