#pragma once

#include "RequestType.h"

#include <QString>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace filters {

// One request as the filters see it: its address (as given and in lower
// case), its host, the host of the page it is made for, whether the two
// belong to different owners, and the address's tokens, by which the
// engine finds the few filters worth trying.
class FilterRequest
{
public:
    // Nothing for an address without a scheme and a host. An empty or
    // unreadable source means the request has no page behind it; a page's
    // own address (Document) is its own source.
    static std::optional<FilterRequest> make(std::string_view url, std::string_view source,
                                             RequestType type);

    const std::string& url() const { return url_; }
    const std::string& lowerUrl() const { return lowerUrl_; }
    size_t hostStart() const { return hostStart_; }
    size_t hostEnd() const { return hostEnd_; }
    std::string_view host() const
    {
        return std::string_view(lowerUrl_).substr(hostStart_, hostEnd_ - hostStart_);
    }
    const std::string& sourceHost() const { return sourceHost_; }
    RequestType type() const { return type_; }
    // Worked out when a filter first asks: few filters do.
    bool thirdParty() const;
    // The address for regular expressions, made when one first asks.
    const QString& text() const;
    const std::vector<uint32_t>& tokens() const { return tokens_; }

private:
    FilterRequest() = default;

    std::string url_;
    std::string lowerUrl_;
    size_t hostStart_ = 0;
    size_t hostEnd_ = 0;
    std::string sourceHost_;
    RequestType type_ = RequestType::Other;
    mutable std::optional<bool> thirdParty_;
    mutable QString text_;
    std::vector<uint32_t> tokens_;
};

// The characters a token is made of, and its hash, shared by the filters'
// tokens and the requests'.
constexpr bool isTokenChar(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '%' || (c >= 'A' && c <= 'Z');
}

uint32_t tokenHash(std::string_view token);

constexpr char asciiLower(char c)
{
    return (c >= 'A' && c <= 'Z') ? char(c - 'A' + 'a') : c;
}

// Calls found(start, end) for each run of token characters in text.
template <typename Found> void forEachTokenRun(std::string_view text, Found found)
{
    for (size_t i = 0; i < text.size();) {
        if (!isTokenChar(text[i])) {
            ++i;
            continue;
        }
        size_t end = i;
        while (end < text.size() && isTokenChar(text[end]))
            ++end;
        found(i, end);
        i = end;
    }
}

// Where an address's host lies: [start, end) in the text, or nothing when
// the address has no "scheme://host".
std::optional<std::pair<size_t, size_t>> hostSpan(std::string_view url);

} // namespace filters
