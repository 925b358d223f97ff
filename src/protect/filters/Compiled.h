#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace filters {

// The engine's compiled form as bytes: numbers little-endian, texts with
// their length before them.
class CompiledWriter
{
public:
    void number(uint32_t value);
    void text(std::string_view value);
    const std::string& bytes() const { return bytes_; }

private:
    std::string bytes_;
};

// Reads what CompiledWriter wrote. Whatever the bytes, it never reads past
// their end: once anything is missing, good() is false and every later
// read gives zero or nothing.
class CompiledReader
{
public:
    explicit CompiledReader(std::string_view bytes) : bytes_(bytes) {}

    uint32_t number();
    std::string text();
    // A count of things each at least minimum bytes long: zero, and the
    // reader spent, when the bytes left cannot hold that many.
    uint32_t count(size_t minimum);
    bool good() const { return good_; }
    bool atEnd() const { return good_ && at_ == bytes_.size(); }

private:
    std::string_view bytes_;
    size_t at_ = 0;
    bool good_ = true;
};

} // namespace filters
