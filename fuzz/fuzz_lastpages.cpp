// The reader of "LastPages.ini" on any text: no crash, no empty entry, no
// entry with a line break or a comma in it.
#include "app/LastPages.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    for (const QString& entry : LastPages::entries(text))
        if (entry.isEmpty() || entry.contains('\n') || entry.contains('\r') || entry.contains(','))
            abort();
    return 0;
}
