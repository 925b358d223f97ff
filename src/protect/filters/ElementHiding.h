#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace filters {

class CompiledReader;
class CompiledWriter;

// The lists' element-hiding rules for the sites they name ("site##" and the
// exceptions "site#@#"), as a style sheet for a page's host. Rules for every
// site are read and counted but not kept: a sheet of their thousands in
// every document of every page would cost each page more than its ads.
class ElementHiding
{
public:
    // False for a rule this engine does not apply: a site given by a
    // pattern ("example.*"), a selector of a blocker's own language, or one
    // that would end its style rule.
    bool add(std::string_view line);
    void build();

    // One rule a selector, so a selector the page's engine does not know
    // costs only its own rule. Empty when nothing applies.
    std::string styleFor(std::string_view host) const;

    void write(CompiledWriter& out) const;
    bool read(CompiledReader& in);

private:
    // A site's selectors, and the selectors it is excepted from, by domain,
    // each selector ended by a line break. A rule for a domain holds for its
    // subdomains.
    std::unordered_map<std::string, std::string> bySite_;
    std::unordered_map<std::string, std::string> exceptedOn_;
    // Kept only while reading.
    std::vector<std::string> exceptedEverywhere_;
};

} // namespace filters
