#include "StatusText.h"

namespace platform {

// The engine's code for a navigation that the program or the user called off.
static constexpr int abortedByUser = -3;

QString statusText(const LoadReport& report)
{
    switch (report.phase) {
    case LoadReport::Phase::Started:
        return QStringLiteral("Opening %1 ...").arg(report.url.toDisplayString());
    case LoadReport::Phase::Succeeded:
        return QStringLiteral("Done");
    case LoadReport::Phase::Stopped:
        return QStringLiteral("Stopped");
    case LoadReport::Phase::Failed:
        // Neither a called-off load nor a server's own error page is an error here.
        if (report.errorCode == abortedByUser || report.httpStatus)
            return QStringLiteral("Done");
        return QStringLiteral("Cannot open %1: %2")
            .arg(report.url.toDisplayString(), report.errorText);
    }
    return {};
}

} // namespace platform
