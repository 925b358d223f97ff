#pragma once

#include "ElementHiding.h"
#include "NetworkFilter.h"

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace filters {

class CompiledReader;
class CompiledWriter;
class FilterRequest;

// What the lists say of one request: blocked by a filter, let through by an
// exception to one, or not named at all (filter null).
struct Decision
{
    bool block = false;
    const NetworkFilter* filter = nullptr;
};

// The network filters of any number of lists, indexed by token so a request
// is tried against the few filters that could match it.
class FilterEngine
{
public:
    struct Counts
    {
        int network = 0;
        int cosmetic = 0;
        int skipped = 0;
    };

    // Reads a list's text line by line; lines it does not understand are
    // skipped and counted. Call build() once all lists are in.
    void addList(std::string_view text);
    void build();

    Decision decide(const FilterRequest& request) const;
    const Counts& counts() const { return counts_; }
    const ElementHiding& hiding() const { return hiding_; }

    // The built engine as bytes, and back: a start reads this instead of
    // the lists' text. Nothing from bytes this version did not write whole.
    std::string compiled() const;
    static std::optional<FilterEngine> fromCompiled(std::string_view bytes);

private:
    // Filters that share the token the engine picked for each.
    class Index
    {
    public:
        enum class Kind { Important, Blocking, Exception };

        void build(std::vector<NetworkFilter> filters);
        const NetworkFilter* firstMatch(const FilterRequest& request) const;
        void write(CompiledWriter& out) const;
        bool read(CompiledReader& in, Kind kind);

    private:
        void fold();

        std::vector<NetworkFilter> filters_;
        // One bit per token hash (folded): most of an address's tokens name
        // no filter, and the bit says so without a lookup.
        std::vector<bool> anyFor_;
        std::unordered_map<uint32_t, std::vector<uint32_t>> byToken_;
        std::vector<uint32_t> untokened_;
    };

    std::vector<NetworkFilter> pending_;
    Counts counts_;
    Index important_;
    Index blocking_;
    Index exceptions_;
    ElementHiding hiding_;
};

} // namespace filters
