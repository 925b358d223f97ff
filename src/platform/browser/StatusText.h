#pragma once
// What the status bar says about a load of the page, the way the old browser
// control put it.
#include <QString>
#include <QUrl>

namespace platform {

struct LoadReport
{
    enum class Phase { Started, Succeeded, Stopped, Failed };
    Phase phase = Phase::Started;
    QUrl url;
    int errorCode = 0;
    // The server answered with an HTTP error status and its own page.
    bool httpStatus = false;
    QString errorText;
};

QString statusText(const LoadReport& report);

} // namespace platform
