// The skin loader on any text: a skin or a clear error, never a crash.
#include "commandbar/CommandBar.h"
#include "commandbar/SkinLoader.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    commandbar::CommandBar bar;
    const auto error = commandbar::SkinLoader::loadText(
        bar, QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size)));
    if (error && error->message.isEmpty())
        abort();
    return 0;
}
