#include "RegistrableDomain.h"

#include <libpsl.h>
#include <string>

namespace filters {

namespace {

// The system's list when it has one, else the copy built into the library.
const psl_ctx_t* suffixes()
{
    static const psl_ctx_t* const list = [] {
        const psl_ctx_t* latest = psl_latest(nullptr);
        return latest ? latest : psl_builtin();
    }();
    return list;
}

} // namespace

std::string_view registrableDomain(std::string_view host)
{
    if (host.empty() || !suffixes())
        return host;
    const std::string terminated(host);
    const char* found = psl_registrable_domain(suffixes(), terminated.c_str());
    if (!found)
        return host;
    return host.substr(size_t(found - terminated.c_str()));
}

} // namespace filters
