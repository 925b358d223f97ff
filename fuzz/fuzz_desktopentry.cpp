// An application entry of the desktop, which any package may install, on any
// text: no crash, no line break in a read value, and no field code (%u, %F...)
// left in the command that is started, unless the entry wrote a literal "%%".
#include "platform/DesktopEntry.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size));
    const platform::DesktopEntry entry = platform::DesktopEntry::parse(text);
    if (entry.name.contains('\n'))
        abort();
    if (!text.contains(QLatin1String("%%")))
        for (const QString& word : entry.command)
            if (word.size() == 2 && word.startsWith('%'))
                abort();
    return 0;
}
