#include "FilterRequest.h"

#include "RegistrableDomain.h"

#include <algorithm>

namespace filters {

uint32_t tokenHash(std::string_view token)
{
    uint32_t hash = 2166136261u;
    for (const char c : token)
        hash = (hash ^ uint8_t(asciiLower(c))) * 16777619u;
    return hash;
}

std::optional<std::pair<size_t, size_t>> hostSpan(std::string_view url)
{
    const size_t scheme = url.find("://");
    if (scheme == std::string_view::npos || scheme == 0)
        return std::nullopt;
    size_t start = scheme + 3;
    size_t end = url.find_first_of("/?#", start);
    if (end == std::string_view::npos)
        end = url.size();
    // Credentials are not part of the host.
    const size_t at = url.substr(start, end - start).rfind('@');
    if (at != std::string_view::npos)
        start += at + 1;
    size_t hostEnd = end;
    if (start < end && url[start] == '[') {
        const size_t close = url.find(']', start);
        if (close == std::string_view::npos || close >= end)
            return std::nullopt;
        hostEnd = close + 1;
    } else {
        const size_t colon = url.substr(start, end - start).find(':');
        if (colon != std::string_view::npos)
            hostEnd = start + colon;
    }
    if (hostEnd == start)
        return std::nullopt;
    return std::pair{start, hostEnd};
}

// Hosts that share no more than their last label cannot share a registrable
// domain, which has two labels at least; only closer ones need the list.
bool FilterRequest::thirdParty() const
{
    if (!thirdParty_) {
        const std::string_view a = host();
        const std::string_view b = sourceHost_;
        size_t common = 0;
        while (common < a.size() && common < b.size() &&
               a[a.size() - 1 - common] == b[b.size() - 1 - common])
            ++common;
        if (b.empty() || a == b)
            thirdParty_ = false;
        else if (a.substr(a.size() - common).find('.', 1) == std::string_view::npos)
            thirdParty_ = true;
        else
            thirdParty_ = registrableDomain(a) != registrableDomain(b);
    }
    return *thirdParty_;
}

const QString& FilterRequest::text() const
{
    if (text_.isEmpty())
        text_ = QString::fromUtf8(url_.data(), qsizetype(url_.size()));
    return text_;
}

std::optional<FilterRequest> FilterRequest::make(std::string_view url, std::string_view source,
                                                 RequestType type)
{
    const auto span = hostSpan(url);
    if (!span)
        return std::nullopt;
    FilterRequest request;
    request.url_ = std::string(url);
    request.lowerUrl_ = request.url_;
    std::transform(request.lowerUrl_.begin(), request.lowerUrl_.end(), request.lowerUrl_.begin(),
                   asciiLower);
    request.hostStart_ = span->first;
    request.hostEnd_ = span->second;
    request.type_ = type;
    // A page is first-party to itself, whichever page it was opened from.
    if (type == RequestType::Document)
        source = url;
    if (const auto sourceSpan = hostSpan(source)) {
        request.sourceHost_ =
            std::string(source.substr(sourceSpan->first, sourceSpan->second - sourceSpan->first));
        std::transform(request.sourceHost_.begin(), request.sourceHost_.end(),
                       request.sourceHost_.begin(), asciiLower);
    }
    const std::string_view lower = request.lowerUrl_;
    request.tokens_.reserve(16);
    forEachTokenRun(lower, [&](size_t start, size_t end) {
        request.tokens_.push_back(tokenHash(lower.substr(start, end - start)));
    });
    std::sort(request.tokens_.begin(), request.tokens_.end());
    request.tokens_.erase(std::unique(request.tokens_.begin(), request.tokens_.end()),
                          request.tokens_.end());
    return request;
}

} // namespace filters
