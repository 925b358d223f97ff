#pragma once
// The encryption level of the view's page, from the address of each load that
// ended, the answers given at its certificate gate and the engine's warnings
// of mixed content; the view signals each change.
#include "platform/browser/ViewFacets.h"

#include <QObject>

class QWebEngineLoadingInfo;

namespace platform {

class BrowserView;
class CertificateGate;
class WebEnginePage;

class EngineSecurity : public QObject, public SecurityFacet
{
    Q_OBJECT
public:
    EngineSecurity(WebEnginePage& page, const CertificateGate& gate, BrowserView& view);
    int lockLevel() const override { return level_; }

private:
    void loadingChanged(const QWebEngineLoadingInfo& info);
    void setLevel(int level);

    const CertificateGate& gate_;
    BrowserView& view_;
    int level_ = 0;
    bool mixed_ = false;
};

} // namespace platform
