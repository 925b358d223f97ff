// The skin loader on any text: a skin or a clear error, never a crash.
#include "platform/commandbar/CommandBar.h"
#include "platform/commandbar/SkinLoader.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    platform::CommandBar bar;
    const auto error = platform::SkinLoader::loadText(
        bar, QString::fromUtf8(reinterpret_cast<const char*>(data), qsizetype(size)));
    if (error && error->message.isEmpty())
        abort();
    return 0;
}
