// A compiled filter file of any content: no crash; an engine is made only
// from bytes that hold one whole, it writes itself back the same after one
// round, and every decision names a filter of its kind.
#include "protect/filters/FilterEngine.h"
#include "protect/filters/FilterRequest.h"

#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const auto engine = filters::FilterEngine::fromCompiled(
        std::string_view(reinterpret_cast<const char*>(data), size));
    if (!engine)
        return 0;
    const std::string once = engine->compiled();
    const auto again = filters::FilterEngine::fromCompiled(once);
    if (!again || again->compiled() != once)
        abort();
    for (const char* host : {"www.a.test", "b.test", ""})
        engine->hiding().styleFor(host);
    for (const char* url :
         {"https://ads.example.com/banner/ad.js?x=1", "http://a.test/", "https://b.test/x/y?z"})
        for (const char* type : {"script", "image", "document"}) {
            const auto request = filters::FilterRequest::make(url, "https://page.test/",
                                                              *filters::requestTypeNamed(type));
            const filters::Decision decision = engine->decide(*request);
            if (decision.filter && decision.block == decision.filter->exception())
                abort();
        }
    return 0;
}
