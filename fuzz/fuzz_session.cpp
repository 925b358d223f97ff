// A session file as the next start reads it: no crash; what is read keeps
// within its limits, names a shown tab that is there, and reads back the
// same once written.
#include "session/SessionState.h"

#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const std::optional<SessionState> state = readSession(bytes);
    if (!state)
        return 0;
    if (state->tabs.size() > SessionState::maxTabs || state->current < -1 ||
        state->current >= state->tabs.size())
        abort();
    for (const SessionTab& tab : state->tabs)
        if (tab.address.size() > SessionState::maxAddress ||
            tab.title.size() > SessionState::maxTitle)
            abort();
    if (readSession(sessionText(*state)) != state)
        abort();
    return 0;
}
