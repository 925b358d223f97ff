// A filter list of any content, and its first line also read as a request's
// address and a site: no crash or hang; every decision names a filter of the
// list, an exception exactly when the request is let through; every filter
// that parses reads back the same from its own text; every element rule
// stays a style rule of its own.
#include "protect/filters/FilterEngine.h"
#include "protect/filters/FilterRequest.h"

#include <array>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    filters::FilterEngine engine;
    engine.addList(text);
    engine.build();
    const filters::FilterEngine::Counts& counts = engine.counts();
    if (counts.network < 0 || counts.cosmetic < 0 || counts.skipped < 0)
        abort();

    std::string_view rest = text;
    while (!rest.empty()) {
        const size_t end = rest.find('\n');
        const std::string_view line = rest.substr(0, end);
        rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
        if (const auto filter = filters::NetworkFilter::parse(line)) {
            const auto again = filters::NetworkFilter::parse(filter->text());
            if (!again || again->text() != filter->text() || again->tokens() != filter->tokens())
                abort();
            filter->cancelledText();
        }
    }

    const std::string first(text.substr(0, text.find('\n')));
    // A sheet's rules stay whole: one rule a line, each its own braces.
    for (const std::string_view host : {std::string_view(first), std::string_view("example.com")}) {
        const std::string style = engine.hiding().styleFor(host);
        size_t lines = 0, opens = 0, closes = 0;
        for (const char c : style) {
            lines += c == '\n' ? 1 : 0;
            opens += c == '{' ? 1 : 0;
            closes += c == '}' ? 1 : 0;
        }
        if (opens != lines || closes != lines || (!style.empty() && style.back() != '\n'))
            abort();
    }
    const std::array<std::string, 4> urls{first, "https://ads.example.com/banner/ad.js?x=1",
                                          "http://[::1]:8080/a^b*c|d", "https://u:p@h.test/"};
    for (const std::string& url : urls)
        for (const char* type : {"script", "image", "document", "popup"}) {
            const auto request = filters::FilterRequest::make(url, "https://page.example.co.uk/",
                                                              *filters::requestTypeNamed(type));
            if (!request)
                continue;
            const filters::Decision decision = engine.decide(*request);
            if (decision.filter && decision.block == decision.filter->exception())
                abort();
            if (decision.filter && text.find(decision.filter->text()) == std::string_view::npos)
                abort();
        }
    return 0;
}
