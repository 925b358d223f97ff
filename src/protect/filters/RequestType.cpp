#include "RequestType.h"

#include <array>
#include <utility>

namespace filters {

std::optional<RequestType> requestTypeNamed(std::string_view name)
{
    using T = RequestType;
    static constexpr std::array<std::pair<std::string_view, RequestType>, 18> names{{
        {"script", T::Script},
        {"image", T::Image},
        {"stylesheet", T::Stylesheet},
        {"css", T::Stylesheet},
        {"xmlhttprequest", T::XmlHttpRequest},
        {"xhr", T::XmlHttpRequest},
        {"subdocument", T::Subdocument},
        {"frame", T::Subdocument},
        {"media", T::Media},
        {"font", T::Font},
        {"websocket", T::WebSocket},
        {"ping", T::Ping},
        {"beacon", T::Ping},
        {"object", T::Object},
        {"other", T::Other},
        {"document", T::Document},
        {"doc", T::Document},
        {"popup", T::Popup},
    }};
    for (const auto& [text, type] : names)
        if (text == name)
            return type;
    return std::nullopt;
}

} // namespace filters
