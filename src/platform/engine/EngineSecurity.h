#pragma once
// The encryption level of the view's page, from the address of each load that
// ended and the answers given at its certificate gate; the view signals each
// change.
#include "platform/browser/ViewFacets.h"

#include <QObject>

class QWebEngineLoadingInfo;
class QWebEnginePage;

namespace platform {

class BrowserView;
class CertificateGate;

class EngineSecurity : public QObject, public SecurityFacet
{
    Q_OBJECT
public:
    EngineSecurity(QWebEnginePage& page, const CertificateGate& gate, BrowserView& view);
    int lockLevel() const override { return level_; }

private:
    void loadingChanged(const QWebEngineLoadingInfo& info);

    const CertificateGate& gate_;
    BrowserView& view_;
    int level_ = 0;
};

} // namespace platform
