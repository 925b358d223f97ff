#include "Compiled.h"

namespace filters {

void CompiledWriter::number(uint32_t value)
{
    for (int shift = 0; shift < 32; shift += 8)
        bytes_ += char((value >> shift) & 0xff);
}

void CompiledWriter::text(std::string_view value)
{
    number(uint32_t(value.size()));
    bytes_ += value;
}

uint32_t CompiledReader::number()
{
    if (!good_ || bytes_.size() - at_ < 4) {
        good_ = false;
        return 0;
    }
    uint32_t value = 0;
    for (int i = 0; i < 4; ++i)
        value |= uint32_t(uint8_t(bytes_[at_ + size_t(i)])) << (8 * i);
    at_ += 4;
    return value;
}

std::string CompiledReader::text()
{
    const uint32_t size = number();
    if (!good_ || bytes_.size() - at_ < size) {
        good_ = false;
        return {};
    }
    std::string value(bytes_.substr(at_, size));
    at_ += size;
    return value;
}

uint32_t CompiledReader::count(size_t minimum)
{
    const uint32_t wanted = number();
    if (good_ && minimum > 0 && wanted > (bytes_.size() - at_) / minimum)
        good_ = false;
    return good_ ? wanted : 0;
}

} // namespace filters
