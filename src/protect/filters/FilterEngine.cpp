#include "FilterEngine.h"

#include "FilterRequest.h"

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
            ++counts_.cosmetic;
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
    anyFor_.assign(foldedSize, false);
    for (const auto& [token, filtered] : byToken_)
        anyFor_[token % foldedSize] = true;
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
