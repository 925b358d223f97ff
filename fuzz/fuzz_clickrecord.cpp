// A click record as a hostile page could shape the JSON the page agent sends:
// no crash, and nothing relayed from a subframe is ever taken as the user's.
#include "platform/browser/PageClick.h"

#include <QJsonDocument>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QJsonDocument json = QJsonDocument::fromJson(
        QByteArray::fromRawData(reinterpret_cast<const char*>(data), qsizetype(size)));
    const QVariantMap record = json.toVariant().toMap();
    const platform::PageClick click = platform::pageClickFromRecord(record);
    if (click.trusted && click.inSubframe)
        abort();
    return 0;
}
