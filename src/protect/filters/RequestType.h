#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace filters {

// What a request fetches, as filter lists name it. Each is one bit of a
// filter's type mask.
enum class RequestType : uint8_t {
    Script,
    Image,
    Stylesheet,
    XmlHttpRequest,
    Subdocument,
    Media,
    Font,
    WebSocket,
    Ping,
    Object,
    Other,
    Document,
    Popup,
};

using TypeMask = uint16_t;

constexpr TypeMask typeBit(RequestType type)
{
    return TypeMask(1u << unsigned(type));
}

constexpr TypeMask allTypes = TypeMask((1u << (unsigned(RequestType::Popup) + 1)) - 1);
// A filter naming no type applies to every request a page makes itself, not
// to the page's own address or to a window it opens.
constexpr TypeMask defaultTypes =
    allTypes & TypeMask(~(typeBit(RequestType::Document) | typeBit(RequestType::Popup)));

// The type a filter option or a request line names, with the lists' usual
// short forms ("xhr", "css", "frame", "doc").
std::optional<RequestType> requestTypeNamed(std::string_view name);

} // namespace filters
