#include "FilterEngine.h"

#include "Compiled.h"
#include "FilterRequest.h"

#include <algorithm>
#include <unordered_set>

namespace filters {

void FilterEngine::addList(std::string_view text)
{
    while (!text.empty()) {
        const size_t end = text.find('\n');
        const std::string_view line = text.substr(0, end);
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
        switch (lineKind(line)) {
        case LineKind::Comment:
            break;
        case LineKind::Cosmetic:
            ++(hiding_.add(line) ? counts_.cosmetic : counts_.skipped);
            break;
        case LineKind::Unsupported:
            ++counts_.skipped;
            break;
        case LineKind::Network:
            if (auto filter = NetworkFilter::parse(line)) {
                pending_.push_back(std::move(*filter));
                ++counts_.network;
            } else {
                ++counts_.skipped;
            }
            break;
        }
    }
}

void FilterEngine::build()
{
    std::unordered_set<std::string> cancelled;
    for (const NetworkFilter& filter : pending_)
        if (filter.badfilter())
            cancelled.insert(filter.cancelledText());
    std::vector<NetworkFilter> important, blocking, exceptions;
    for (NetworkFilter& filter : pending_) {
        if (filter.badfilter() || cancelled.contains(filter.text()))
            continue;
        auto& into = filter.exception() ? exceptions : filter.important() ? important : blocking;
        into.push_back(std::move(filter));
    }
    pending_.clear();
    important_.build(std::move(important));
    blocking_.build(std::move(blocking));
    exceptions_.build(std::move(exceptions));
    hiding_.build();
}

namespace {

// Changes whenever the compiled form does.
constexpr std::string_view compiledMagic = "QUB-FILTERS 3\n";

} // namespace

std::string FilterEngine::compiled() const
{
    CompiledWriter out;
    out.text(compiledMagic);
    out.number(uint32_t(counts_.network));
    out.number(uint32_t(counts_.cosmetic));
    out.number(uint32_t(counts_.skipped));
    important_.write(out);
    blocking_.write(out);
    exceptions_.write(out);
    hiding_.write(out);
    return out.bytes();
}

std::optional<FilterEngine> FilterEngine::fromCompiled(std::string_view bytes)
{
    CompiledReader in(bytes);
    if (in.text() != compiledMagic)
        return std::nullopt;
    FilterEngine engine;
    engine.counts_.network = int(in.number() & 0x7fffffff);
    engine.counts_.cosmetic = int(in.number() & 0x7fffffff);
    engine.counts_.skipped = int(in.number() & 0x7fffffff);
    if (!engine.important_.read(in, Index::Kind::Important) ||
        !engine.blocking_.read(in, Index::Kind::Blocking) ||
        !engine.exceptions_.read(in, Index::Kind::Exception) || !engine.hiding_.read(in) ||
        !in.atEnd())
        return std::nullopt;
    return engine;
}

// An important filter blocks whatever the exceptions say; any other blocks
// unless an exception lets the request through.
Decision FilterEngine::decide(const FilterRequest& request) const
{
    if (const NetworkFilter* filter = important_.firstMatch(request))
        return {true, filter};
    const NetworkFilter* filter = blocking_.firstMatch(request);
    if (!filter)
        return {};
    if (const NetworkFilter* exception = exceptions_.firstMatch(request))
        return {false, exception};
    return {true, filter};
}

namespace {

// Tokens nearly every address holds: a filter filed under one would be tried
// on nearly every request, so any other of its tokens is better.
constexpr std::string_view everywhere[] = {"http",   "https",  "www", "com",    "net", "org", "js",
                                           "html",   "php",    "png", "jpg",    "gif", "css", "img",
                                           "images", "static", "cdn", "assets", "api"};

constexpr uint32_t foldedSize = 1u << 20;

} // namespace

// Each filter goes under the token of its own that the fewest filters hold,
// so the lists a request looks through stay short.
void FilterEngine::Index::build(std::vector<NetworkFilter> filters)
{
    filters_ = std::move(filters);
    byToken_.clear();
    untokened_.clear();
    std::vector<std::vector<uint32_t>> tokens(filters_.size());
    std::unordered_map<uint32_t, uint32_t> often;
    for (size_t i = 0; i < filters_.size(); ++i) {
        tokens[i] = filters_[i].tokens();
        for (const uint32_t token : tokens[i])
            ++often[token];
    }
    for (const std::string_view token : everywhere)
        often[tokenHash(token)] += uint32_t(filters_.size());
    for (size_t i = 0; i < filters_.size(); ++i) {
        if (tokens[i].empty()) {
            untokened_.push_back(uint32_t(i));
            continue;
        }
        uint32_t best = tokens[i].front();
        for (const uint32_t token : tokens[i])
            if (often[token] < often[best])
                best = token;
        byToken_[best].push_back(uint32_t(i));
    }
    fold();
}

void FilterEngine::Index::fold()
{
    anyFor_.assign(foldedSize, false);
    for (const auto& [token, filtered] : byToken_)
        anyFor_[token % foldedSize] = true;
}

void FilterEngine::Index::write(CompiledWriter& out) const
{
    out.number(uint32_t(filters_.size()));
    for (const NetworkFilter& filter : filters_)
        filter.write(out);
    // In token order, so the same lists always make the same bytes.
    std::vector<uint32_t> tokens;
    tokens.reserve(byToken_.size());
    for (const auto& entry : byToken_)
        tokens.push_back(entry.first);
    std::sort(tokens.begin(), tokens.end());
    out.number(uint32_t(tokens.size()));
    for (const uint32_t token : tokens) {
        const std::vector<uint32_t>& filtered = byToken_.at(token);
        out.number(token);
        out.number(uint32_t(filtered.size()));
        for (const uint32_t i : filtered)
            out.number(i);
    }
    out.number(uint32_t(untokened_.size()));
    for (const uint32_t i : untokened_)
        out.number(i);
}

// Every filter must be of the index's kind and every place must name one,
// or a damaged file would block what an exception lets through.
bool FilterEngine::Index::read(CompiledReader& in, Kind kind)
{
    filters_.clear();
    byToken_.clear();
    untokened_.clear();
    const uint32_t count = in.count(20);
    filters_.reserve(count);
    for (uint32_t i = 0; i < count; ++i) {
        auto filter = NetworkFilter::read(in);
        if (!filter || filter->exception() != (kind == Kind::Exception) ||
            (!filter->exception() && filter->important() != (kind == Kind::Important)))
            return false;
        filters_.push_back(std::move(*filter));
    }
    const auto places = [&in, count](std::vector<uint32_t>& into) {
        const uint32_t size = in.count(4);
        into.reserve(size);
        for (uint32_t i = 0; i < size; ++i) {
            const uint32_t place = in.number();
            if (!in.good() || place >= count)
                return false;
            into.push_back(place);
        }
        return in.good();
    };
    const uint32_t tokens = in.count(8);
    byToken_.reserve(tokens);
    for (uint32_t i = 0; i < tokens; ++i)
        if (!places(byToken_[in.number()]))
            return false;
    if (!places(untokened_))
        return false;
    fold();
    return true;
}

const NetworkFilter* FilterEngine::Index::firstMatch(const FilterRequest& request) const
{
    for (const uint32_t token : request.tokens()) {
        if (!anyFor_[token % foldedSize])
            continue;
        const auto found = byToken_.find(token);
        if (found == byToken_.end())
            continue;
        for (const uint32_t i : found->second)
            if (filters_[i].matches(request))
                return &filters_[i];
    }
    for (const uint32_t i : untokened_)
        if (filters_[i].matches(request))
            return &filters_[i];
    return nullptr;
}

} // namespace filters
