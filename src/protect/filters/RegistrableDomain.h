#pragma once

#include <string_view>

namespace filters {

// The part of a host name that one owner registered ("example.co.uk" of
// "ads.example.co.uk"), from the Public Suffix List the system keeps. A host
// with no such part (an address, a bare suffix) is its own.
std::string_view registrableDomain(std::string_view host);

} // namespace filters
