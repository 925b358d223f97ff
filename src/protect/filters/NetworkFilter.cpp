#include "NetworkFilter.h"

#include "Compiled.h"
#include "FilterRequest.h"

#include <algorithm>

namespace filters {

namespace {

std::string lowered(std::string_view text)
{
    std::string out(text);
    std::transform(out.begin(), out.end(), out.begin(), asciiLower);
    return out;
}

// What '^' stands for: anything but a letter, a digit or "_-.%".
constexpr bool isSeparator(char c)
{
    return !((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
             c == '_' || c == '-' || c == '.' || c == '%');
}

// Whether segment matches url at pos; a '^' at the segment's end also
// matches the address's end.
bool segmentAt(std::string_view url, size_t pos, std::string_view segment)
{
    for (size_t i = 0; i < segment.size(); ++i) {
        if (pos + i >= url.size())
            return segment[i] == '^' && i + 1 == segment.size();
        const char c = url[pos + i];
        if (segment[i] == '^' ? !isSeparator(c) : c != segment[i])
            return false;
    }
    return true;
}

size_t consumed(std::string_view url, size_t pos, std::string_view segment)
{
    return std::min(segment.size(), url.size() - pos);
}

size_t findSegment(std::string_view url, size_t from, std::string_view segment)
{
    if (segment.empty())
        return from;
    for (size_t pos = from; pos < url.size(); ++pos) {
        if (segment[0] != '^') {
            pos = url.find(segment[0], pos);
            if (pos == std::string_view::npos)
                return pos;
        }
        if (segmentAt(url, pos, segment))
            return pos;
    }
    return segment == "^" ? url.size() : std::string_view::npos;
}

void splitInto(std::vector<std::string>& list, std::string_view values)
{
    while (!values.empty()) {
        const size_t bar = values.find('|');
        list.push_back(lowered(values.substr(0, bar)));
        values = bar == std::string_view::npos ? std::string_view() : values.substr(bar + 1);
    }
}

// The stretches of plain text every match of a regular expression holds,
// split wherever it has a class, a group, a wildcard or a repeat; none at
// all when it has alternatives.
std::vector<std::string> regexLiterals(std::string_view source)
{
    std::vector<std::string> stretches(1);
    if (source.find('|') != std::string_view::npos)
        return {};
    const auto cut = [&stretches] {
        if (!stretches.back().empty())
            stretches.emplace_back();
    };
    for (size_t i = 0; i < source.size(); ++i) {
        char c = source[i];
        if (c == '[' || c == '(') {
            const char close = c == '[' ? ']' : ')';
            int depth = 0;
            for (; i < source.size(); ++i) {
                if (source[i] == '\\')
                    ++i;
                else if (source[i] == c)
                    ++depth;
                else if (source[i] == close && --depth == 0)
                    break;
            }
            cut();
            continue;
        }
        if (c == '\\' && i + 1 < source.size()) {
            c = source[++i];
            if (isTokenChar(c)) {
                cut();
                continue;
            }
        } else if (std::string_view(".^$)?*+{}").find(c) != std::string_view::npos) {
            cut();
            continue;
        }
        const char next = i + 1 < source.size() ? source[i + 1] : '\0';
        if (next == '?' || next == '*' || next == '{') {
            cut();
            continue;
        }
        stretches.back() += asciiLower(c);
        if (next == '+')
            cut();
    }
    return stretches;
}

} // namespace

std::string_view trimmed(std::string_view line)
{
    const size_t first = line.find_first_not_of(" \t\r\n");
    if (first == std::string_view::npos)
        return {};
    return line.substr(first, line.find_last_not_of(" \t\r\n") - first + 1);
}

LineKind lineKind(std::string_view line)
{
    line = trimmed(line);
    if (line.empty() || line[0] == '!' || line[0] == '[')
        return LineKind::Comment;
    // An element rule's "#" comes after a list of sites, which holds none of
    // the characters an address pattern starts with ("*" only as in
    // "example.*", a site under any suffix).
    const size_t hash = line.find('#');
    if (hash != std::string_view::npos &&
        line.substr(0, hash).find_first_of("/|@\"!^$") == std::string_view::npos) {
        const std::string_view marker = line.substr(hash);
        if (marker.starts_with("##") || marker.starts_with("#@#"))
            return LineKind::Cosmetic;
        if (marker.starts_with("#?#") || marker.starts_with("#$#") || marker.starts_with("#@?#") ||
            marker.starts_with("#@$#") || marker.starts_with("#%#") || marker.starts_with("#@%#"))
            return LineKind::Unsupported;
    }
    return LineKind::Network;
}

std::optional<NetworkFilter> NetworkFilter::parse(std::string_view line)
{
    line = trimmed(line);
    if (lineKind(line) != LineKind::Network)
        return std::nullopt;
    NetworkFilter filter;
    filter.text_ = std::string(line);
    std::string_view rest = line;
    if (rest.starts_with("@@")) {
        filter.exception_ = true;
        rest.remove_prefix(2);
    }
    // Options follow the last '$', unless that '$' belongs to a regular
    // expression ("/ads$/").
    const size_t dollar = rest.rfind('$');
    if (dollar != std::string_view::npos) {
        const std::string_view options = rest.substr(dollar + 1);
        const bool inRegex = rest.starts_with('/') && options.find('/') != std::string_view::npos;
        if (!inRegex) {
            if (!filter.parseOptions(options))
                return std::nullopt;
            rest = rest.substr(0, dollar);
        }
    }
    if (rest.size() > 2 && rest.starts_with('/') && rest.ends_with('/')) {
        filter.regexFilter_ = true;
        filter.pattern_ = std::string(rest.substr(1, rest.size() - 2));
        if (!filter.compileRegex())
            return std::nullopt;
        return filter;
    }
    if (rest.starts_with("||")) {
        filter.hostAnchor_ = true;
        rest.remove_prefix(2);
    } else if (rest.starts_with('|')) {
        filter.leftAnchor_ = true;
        rest.remove_prefix(1);
    }
    if (rest.ends_with('|')) {
        filter.rightAnchor_ = true;
        rest.remove_suffix(1);
    }
    if (rest.starts_with('*')) {
        filter.hostAnchor_ = false;
        filter.leftAnchor_ = false;
    }
    if (rest.ends_with('*'))
        filter.rightAnchor_ = false;
    while (rest.starts_with('*'))
        rest.remove_prefix(1);
    while (rest.ends_with('*'))
        rest.remove_suffix(1);
    for (const char c : rest)
        if (c != '*' || filter.pattern_.empty() || filter.pattern_.back() != '*')
            filter.pattern_ += filter.matchCase_ ? c : asciiLower(c);
    std::string_view host = filter.pattern_;
    if (host.ends_with('^'))
        host.remove_suffix(1);
    const bool wholeHost =
        filter.hostAnchor_ && !host.empty() &&
        host.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789-.") == std::string_view::npos;
    // A whole host name ends where the host does ("||example.com" is not
    // "example.community"); one ending in a dot is meant to take any ending.
    if (wholeHost && host.size() == filter.pattern_.size() && !host.ends_with('.') &&
        !filter.rightAnchor_) {
        filter.pattern_ += '^';
    }
    filter.split();
    // A filter that names a whole site and no type keeps its pages from
    // opening too; one naming a part of an address does not, or a link to
    // an article under "/ads/" would not open.
    if (wholeHost && filter.types_ == defaultTypes)
        filter.types_ |= typeBit(RequestType::Document);
    return filter;
}

void NetworkFilter::split()
{
    segments_.clear();
    for (size_t start = 0; start < pattern_.size();) {
        size_t star = pattern_.find('*', start);
        if (star == std::string::npos)
            star = pattern_.size();
        segments_.emplace_back(uint32_t(start), uint32_t(star - start));
        start = star + 1;
    }
}

namespace {

constexpr uint32_t RegexFlag = 1u << 0;
constexpr uint32_t ExceptionFlag = 1u << 1;
constexpr uint32_t ImportantFlag = 1u << 2;
constexpr uint32_t MatchCaseFlag = 1u << 3;
constexpr uint32_t HostAnchorFlag = 1u << 4;
constexpr uint32_t LeftAnchorFlag = 1u << 5;
constexpr uint32_t RightAnchorFlag = 1u << 6;
constexpr int partyShift = 8;
constexpr int typesShift = 16;

} // namespace

void NetworkFilter::write(CompiledWriter& out) const
{
    const uint32_t flags = (regexFilter_ ? RegexFlag : 0u) | (exception_ ? ExceptionFlag : 0u) |
                           (important_ ? ImportantFlag : 0u) | (matchCase_ ? MatchCaseFlag : 0u) |
                           (hostAnchor_ ? HostAnchorFlag : 0u) |
                           (leftAnchor_ ? LeftAnchorFlag : 0u) |
                           (rightAnchor_ ? RightAnchorFlag : 0u) |
                           (uint32_t(party_) << partyShift) | (uint32_t(types_) << typesShift);
    out.number(flags);
    out.text(text_);
    out.text(pattern_);
    for (const auto* domains : {&includeDomains_, &excludeDomains_}) {
        out.number(uint32_t(domains->size()));
        for (const std::string& domain : *domains)
            out.text(domain);
    }
}

std::optional<NetworkFilter> NetworkFilter::read(CompiledReader& in)
{
    NetworkFilter filter;
    const uint32_t flags = in.number();
    filter.text_ = in.text();
    filter.pattern_ = in.text();
    for (auto* domains : {&filter.includeDomains_, &filter.excludeDomains_}) {
        const uint32_t count = in.count(4);
        domains->reserve(count);
        for (uint32_t i = 0; i < count && in.good(); ++i)
            domains->push_back(in.text());
        if (!std::is_sorted(domains->begin(), domains->end()))
            return std::nullopt;
    }
    const uint32_t party = (flags >> partyShift) & 0xff;
    filter.types_ = TypeMask(flags >> typesShift);
    if (!in.good() || party > uint32_t(Party::Third) || filter.types_ == 0 ||
        (filter.types_ & ~allTypes))
        return std::nullopt;
    filter.party_ = Party(party);
    filter.regexFilter_ = flags & RegexFlag;
    filter.exception_ = flags & ExceptionFlag;
    filter.important_ = flags & ImportantFlag;
    filter.matchCase_ = flags & MatchCaseFlag;
    filter.hostAnchor_ = flags & HostAnchorFlag;
    filter.leftAnchor_ = flags & LeftAnchorFlag;
    filter.rightAnchor_ = flags & RightAnchorFlag;
    if (filter.regexFilter_) {
        if (!filter.compileRegex())
            return std::nullopt;
    } else {
        filter.split();
    }
    return filter;
}

bool NetworkFilter::compileRegex()
{
    regex_.setPattern(QString::fromUtf8(pattern_.data(), qsizetype(pattern_.size())));
    if (!matchCase_)
        regex_.setPatternOptions(QRegularExpression::CaseInsensitiveOption);
    if (!regex_.isValid())
        return false;
    regex_.optimize();
    return true;
}

bool NetworkFilter::parseOptions(std::string_view options)
{
    TypeMask wanted = 0;
    TypeMask unwanted = 0;
    while (!options.empty()) {
        const size_t comma = options.find(',');
        std::string_view option = options.substr(0, comma);
        options = comma == std::string_view::npos ? std::string_view() : options.substr(comma + 1);
        const bool negated = option.starts_with('~');
        if (negated)
            option.remove_prefix(1);
        const size_t equals = option.find('=');
        const std::string name = lowered(option.substr(0, equals));
        const std::string_view value =
            equals == std::string_view::npos ? std::string_view() : option.substr(equals + 1);
        if (const auto type = requestTypeNamed(name); type && equals == std::string_view::npos) {
            (negated ? unwanted : wanted) |= typeBit(*type);
        } else if ((name == "third-party" || name == "3p") && value.empty()) {
            party_ = negated ? Party::First : Party::Third;
        } else if ((name == "first-party" || name == "1p") && value.empty()) {
            party_ = negated ? Party::Third : Party::First;
        } else if ((name == "domain" || name == "from") && !negated && !value.empty()) {
            std::vector<std::string> all;
            splitInto(all, value);
            for (std::string& domain : all) {
                const bool excluded = domain.starts_with('~');
                if (excluded)
                    domain.erase(0, 1);
                // Entities ("example.*") and patterns are not known here.
                if (domain.empty() || domain.ends_with(".*") || domain.starts_with('/'))
                    return false;
                (excluded ? excludeDomains_ : includeDomains_).push_back(std::move(domain));
            }
        } else if (name == "match-case" && !negated && value.empty()) {
            matchCase_ = true;
        } else if (name == "important" && !negated && value.empty()) {
            important_ = true;
        } else if (name == "badfilter" && !negated && value.empty()) {
            badfilter_ = true;
        } else {
            return false;
        }
    }
    types_ = TypeMask((wanted ? wanted : defaultTypes) & ~unwanted);
    std::sort(includeDomains_.begin(), includeDomains_.end());
    std::sort(excludeDomains_.begin(), excludeDomains_.end());
    return types_ != 0;
}

std::string NetworkFilter::cancelledText() const
{
    const size_t dollar = text_.rfind('$');
    if (dollar == std::string::npos)
        return text_;
    std::string options;
    std::string_view rest = std::string_view(text_).substr(dollar + 1);
    while (!rest.empty()) {
        const size_t comma = rest.find(',');
        const std::string_view option = rest.substr(0, comma);
        rest = comma == std::string_view::npos ? std::string_view() : rest.substr(comma + 1);
        if (lowered(option) == "badfilter")
            continue;
        options += options.empty() ? "" : ",";
        options += option;
    }
    return text_.substr(0, options.empty() ? dollar : dollar + 1) + options;
}

std::vector<uint32_t> NetworkFilter::tokens() const
{
    std::vector<uint32_t> found;
    if (regexFilter_) {
        // Only runs with plain text on both sides: the address's token could
        // go on past a cut.
        for (const std::string& stretch : regexLiterals(pattern_))
            forEachTokenRun(stretch, [&](size_t start, size_t end) {
                if (start > 0 && end < stretch.size())
                    found.push_back(
                        tokenHash(std::string_view(stretch).substr(start, end - start)));
            });
        return found;
    }
    const std::string_view pattern = pattern_;
    forEachTokenRun(pattern, [&](size_t start, size_t end) {
        // A run the address's token could extend past is no token of it.
        const bool startsToken =
            start == 0 ? (hostAnchor_ || leftAnchor_) : pattern[start - 1] != '*';
        const bool endsToken = end == pattern.size() ? rightAnchor_ : pattern[end] != '*';
        if (startsToken && endsToken)
            found.push_back(tokenHash(pattern.substr(start, end - start)));
    });
    return found;
}

// The party last: it is the one question that may need the suffix list.
bool NetworkFilter::matches(const FilterRequest& request) const
{
    if (!(types_ & typeBit(request.type())))
        return false;
    if ((!includeDomains_.empty() || !excludeDomains_.empty()) &&
        !matchesDomain(request.sourceHost()))
        return false;
    return matchesAddress(request) &&
           (party_ == Party::Any || (party_ == Party::Third) == request.thirdParty());
}

// The most particular of the page's host and its parents that the option
// names decides; a filter naming only exceptions applies everywhere else.
bool NetworkFilter::matchesDomain(std::string_view host) const
{
    while (!host.empty()) {
        if (std::binary_search(excludeDomains_.begin(), excludeDomains_.end(), host, std::less<>()))
            return false;
        if (std::binary_search(includeDomains_.begin(), includeDomains_.end(), host, std::less<>()))
            return true;
        const size_t dot = host.find('.');
        host = dot == std::string_view::npos ? std::string_view() : host.substr(dot + 1);
    }
    return includeDomains_.empty();
}

std::string_view NetworkFilter::segment(size_t index) const
{
    return std::string_view(pattern_).substr(segments_[index].first, segments_[index].second);
}

bool NetworkFilter::matchesAddress(const FilterRequest& request) const
{
    const std::string_view url = matchCase_ ? request.url() : request.lowerUrl();
    if (regexFilter_)
        return regex_.match(request.text()).hasMatch();
    if (leftAnchor_)
        return matchesFrom(url, 0, true);
    if (!hostAnchor_)
        return matchesFrom(url, 0, false);
    // "||" starts at the host or at one of its labels.
    for (size_t start = request.hostStart(); start < request.hostEnd(); ++start)
        if ((start == request.hostStart() || url[start - 1] == '.') &&
            matchesFrom(url, start, true))
            return true;
    return false;
}

// Segments one after another, each at its leftmost place: every segment is
// of fixed length, so the leftmost leaves the most room for the rest.
bool NetworkFilter::matchesFrom(std::string_view url, size_t start, bool anchored) const
{
    size_t pos = start;
    for (size_t k = 0; k < segments_.size(); ++k) {
        const std::string_view part = segment(k);
        const bool last = k + 1 == segments_.size();
        if (last && rightAnchor_) {
            if (k == 0 && anchored)
                return segmentAt(url, pos, part) && pos + part.size() == url.size();
            if (part.size() > url.size() || url.size() - part.size() < pos)
                return false;
            return segmentAt(url, url.size() - part.size(), part);
        }
        if (k == 0 && anchored) {
            if (!segmentAt(url, pos, part))
                return false;
        } else {
            pos = findSegment(url, pos, part);
            if (pos == std::string_view::npos)
                return false;
        }
        pos += consumed(url, pos, part);
    }
    return !(rightAnchor_ && segments_.empty() && pos != url.size());
}

} // namespace filters
