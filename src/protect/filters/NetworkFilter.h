#pragma once

#include "RequestType.h"

#include <QRegularExpression>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace filters {

class CompiledReader;
class CompiledWriter;
class FilterRequest;

// One line of a filter list that says which requests to block, or (an
// exception, "@@") which to let through: an address pattern with its
// anchors, wildcards and separators, or a regular expression, and the
// options that narrow it.
class NetworkFilter
{
public:
    enum class Party : uint8_t { Any, First, Third };

    // Nothing for a line that is not a network filter or that uses what
    // this engine does not know (an option it would otherwise ignore and so
    // block too much).
    static std::optional<NetworkFilter> parse(std::string_view line);
    // The compiled form; nothing from bytes that do not make a filter.
    void write(CompiledWriter& out) const;
    static std::optional<NetworkFilter> read(CompiledReader& in);

    bool matches(const FilterRequest& request) const;

    const std::string& text() const { return text_; }
    bool exception() const { return exception_; }
    bool important() const { return important_; }
    bool badfilter() const { return badfilter_; }
    // The line as the filter it cancels would be written (badfilter only).
    std::string cancelledText() const;
    // The tokens every address it matches must hold, in hashes; empty when
    // it names none (a regular expression, a pattern of wildcards).
    std::vector<uint32_t> tokens() const;

private:
    bool matchesAddress(const FilterRequest& request) const;
    std::string_view segment(size_t index) const;
    bool matchesFrom(std::string_view url, size_t start, bool anchored) const;
    bool matchesDomain(std::string_view host) const;
    bool parseOptions(std::string_view options);
    void split();
    bool compileRegex();

    std::string text_;
    std::string pattern_;
    // pattern_ split at '*', as offsets and lengths, so a copy stays valid
    std::vector<std::pair<uint32_t, uint32_t>> segments_;
    QRegularExpression regex_;
    std::vector<std::string> includeDomains_; // sorted
    std::vector<std::string> excludeDomains_; // sorted
    TypeMask types_ = defaultTypes;
    Party party_ = Party::Any;
    bool regexFilter_ = false;
    bool exception_ = false;
    bool important_ = false;
    bool badfilter_ = false;
    bool matchCase_ = false;
    bool hostAnchor_ = false;
    bool leftAnchor_ = false;
    bool rightAnchor_ = false;
};

// How a list's line reads: nothing to do (blank, a comment, the header), a
// network filter, an element-hiding rule, or a line skipped as not
// understood.
enum class LineKind { Comment, Network, Cosmetic, Unsupported };
LineKind lineKind(std::string_view line);

// A line without the white space around it.
std::string_view trimmed(std::string_view line);

} // namespace filters
