#include "RegistrableDomain.h"

#include <libpsl.h>
#include <string>
#include <unordered_map>

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

// Where the registrable part starts in a host name. The list's lookup costs
// thousands of instructions, and a page asks about the same few hosts again
// and again, so answers are kept (a few thousand, per thread).
size_t registrableStart(const std::string& host)
{
    thread_local std::unordered_map<std::string, size_t> known;
    if (const auto found = known.find(host); found != known.end())
        return found->second;
    const char* found = suffixes() ? psl_registrable_domain(suffixes(), host.c_str()) : nullptr;
    const size_t start = found ? size_t(found - host.c_str()) : 0;
    if (known.size() >= 4096)
        known.clear();
    known.emplace(host, start);
    return start;
}

// An address (IPv4, or IPv6 in brackets) has no owner's part: the list
// would take "1.1" of "10.0.1.1" for one.
bool isAddress(std::string_view host)
{
    return host.starts_with('[') || host.find_first_not_of("0123456789.") == std::string_view::npos;
}

} // namespace

std::string_view registrableDomain(std::string_view host)
{
    if (host.empty() || isAddress(host))
        return host;
    thread_local std::string terminated;
    terminated.assign(host);
    return host.substr(registrableStart(terminated));
}

} // namespace filters
