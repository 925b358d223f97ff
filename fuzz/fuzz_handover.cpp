// Bytes on the program's socket, read as the running program reads a later
// start's message: no crash; a message taken is one line of text, and is
// exactly what a later start would send for its address.
#include "platform/instance/HandOver.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const std::optional<QString> address = platform::handover::addressOf(bytes);
    if (address && (address->contains(u'\n') || platform::handover::message(*address) != bytes))
        abort();
    return 0;
}
