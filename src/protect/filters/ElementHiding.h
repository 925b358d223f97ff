#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace filters {

class CompiledReader;
class CompiledWriter;

// The lists' element-hiding rules ("##" and the exceptions "#@#"): which of a
// page's elements to hide, for every site or for the sites a rule names, as
// a style sheet for a page's host.
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
    // Generic rules, each "selector{...}" on a line of its own; genericAt_
    // holds where each starts.
    std::string generic_;
    std::vector<uint32_t> genericAt_;
    // A site's own selectors, and the selectors it is excepted from, by
    // domain. A rule for a domain holds for its subdomains.
    std::unordered_map<std::string, std::vector<std::string>> bySite_;
    std::unordered_map<std::string, std::vector<std::string>> exceptedOn_;
    // Kept only while reading.
    std::vector<std::string> genericPending_;
    std::vector<std::string> exceptedEverywhere_;
};

} // namespace filters
