#include "ElementHiding.h"

#include "Compiled.h"
#include "NetworkFilter.h"

#include <algorithm>
#include <unordered_set>

namespace filters {

namespace {

constexpr std::string_view hide = "{display:none!important}\n";

// What blockers add to selectors; a page's engine would not know them.
constexpr std::string_view ownLanguage[] = {
    ":-abp-",     ":has-text(",     ":xpath(",       ":matches-css", ":upward(",
    ":remove(",   ":style(",        ":min-text-len", ":watch-attr(", ":others(",
    ":contains(", ":matches-path(", ":matches-attr", ":remove-attr", ":remove-class"};

// A selector that stays inside its own rule: no brace, comment or trailing
// escape, and its quotes and brackets closed, else the style sheet's reader
// would carry it into the rules after it.
bool keepsToItsRule(std::string_view selector)
{
    if (selector.empty() || selector.find_first_of("{}") != std::string_view::npos ||
        selector.find("/*") != std::string_view::npos || selector.back() == '\\')
        return false;
    std::string open;
    char quote = 0;
    for (size_t i = 0; i < selector.size(); ++i) {
        const char c = selector[i];
        if (c == '\\') {
            ++i;
        } else if (quote) {
            if (c == quote)
                quote = 0;
        } else if (c == '"' || c == '\'') {
            quote = c;
        } else if (c == '(' || c == '[') {
            open += c == '(' ? ')' : ']';
        } else if (c == ')' || c == ']') {
            if (open.empty() || open.back() != c)
                return false;
            open.pop_back();
        }
    }
    return !quote && open.empty();
}

// The host and each domain it belongs to, most particular first.
std::vector<std::string_view> domainsOf(std::string_view host)
{
    std::vector<std::string_view> domains;
    while (!host.empty()) {
        domains.push_back(host);
        const size_t dot = host.find('.');
        host = dot == std::string_view::npos ? std::string_view() : host.substr(dot + 1);
    }
    return domains;
}

} // namespace

bool ElementHiding::add(std::string_view line)
{
    line = trimmed(line);
    const size_t mark = line.find('#');
    if (mark == std::string_view::npos)
        return false;
    const bool exception = line.substr(mark).starts_with("#@#");
    const std::string_view selector = line.substr(mark + (exception ? 3 : 2));
    if (selector.starts_with('^') || selector.starts_with("+js(") || !keepsToItsRule(selector) ||
        std::any_of(std::begin(ownLanguage), std::end(ownLanguage),
                    [selector](std::string_view word) {
                        return selector.find(word) != std::string_view::npos;
                    }))
        return false;
    std::vector<std::string> sites, notSites;
    std::string_view list = line.substr(0, mark);
    while (!list.empty()) {
        const size_t comma = list.find(',');
        std::string_view site = trimmed(list.substr(0, comma));
        list = comma == std::string_view::npos ? std::string_view() : list.substr(comma + 1);
        const bool negated = site.starts_with('~');
        if (negated)
            site.remove_prefix(1);
        if (site.empty() || site.ends_with(".*") || site.find('/') != std::string_view::npos)
            return false;
        std::string lower(site);
        std::transform(lower.begin(), lower.end(), lower.begin(),
                       [](char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; });
        (negated ? notSites : sites).push_back(std::move(lower));
    }
    const std::string text = std::string(selector) + '\n';
    if (exception) {
        if (sites.empty())
            exceptedEverywhere_.push_back(text);
        for (const std::string& site : sites)
            exceptedOn_[site] += text;
        return true;
    }
    for (const std::string& site : sites)
        bySite_[site] += text;
    // "~site" leaves a site out of the rule, as an exception there would.
    for (const std::string& site : notSites)
        exceptedOn_[site] += text;
    return true;
}

namespace {

// Calls found(selector) for each selector of a list ended by line breaks.
template <typename Found> void forEachSelector(std::string_view list, Found found)
{
    for (size_t at = 0, end = 0; at < list.size(); at = end + 1) {
        end = list.find('\n', at);
        if (end == std::string_view::npos)
            end = list.size();
        found(list.substr(at, end - at));
    }
}

std::string without(std::string_view list, const std::vector<std::string_view>& excepted)
{
    std::string kept;
    forEachSelector(list, [&](std::string_view selector) {
        if (std::find(excepted.begin(), excepted.end(), selector) == excepted.end()) {
            kept += selector;
            kept += '\n';
        }
    });
    return kept;
}

} // namespace

// Exceptions only matter where a site's rule names their selector.
void ElementHiding::build()
{
    std::vector<std::string_view> everywhere;
    for (const std::string& selector : exceptedEverywhere_)
        everywhere.push_back(std::string_view(selector).substr(0, selector.size() - 1));
    std::unordered_set<std::string_view> named;
    for (auto& [site, selectors] : bySite_) {
        selectors = without(selectors, everywhere);
        forEachSelector(selectors, [&named](std::string_view selector) { named.insert(selector); });
    }
    for (auto& [site, selectors] : exceptedOn_) {
        std::string kept;
        forEachSelector(selectors, [&](std::string_view selector) {
            if (named.contains(selector)) {
                kept += selector;
                kept += '\n';
            }
        });
        selectors = std::move(kept);
    }
    std::erase_if(bySite_, [](const auto& entry) { return entry.second.empty(); });
    std::erase_if(exceptedOn_, [](const auto& entry) { return entry.second.empty(); });
    exceptedEverywhere_ = {};
}

std::string ElementHiding::styleFor(std::string_view host) const
{
    std::vector<std::string_view> excepted;
    std::vector<std::string_view> own;
    for (const std::string_view domain : domainsOf(host)) {
        const std::string key(domain);
        if (const auto found = exceptedOn_.find(key); found != exceptedOn_.end())
            forEachSelector(found->second, [&excepted](std::string_view selector) {
                excepted.push_back(selector);
            });
        if (const auto found = bySite_.find(key); found != bySite_.end())
            own.push_back(found->second);
    }
    std::string style;
    for (const std::string_view selectors : own)
        forEachSelector(without(selectors, excepted), [&style](std::string_view selector) {
            style += selector;
            style += hide;
        });
    return style;
}

void ElementHiding::write(CompiledWriter& out) const
{
    // Sites in order, so the same rules always give the same bytes.
    for (const auto* map : {&bySite_, &exceptedOn_}) {
        std::vector<const std::string*> sites;
        sites.reserve(map->size());
        for (const auto& entry : *map)
            sites.push_back(&entry.first);
        std::sort(sites.begin(), sites.end(),
                  [](const std::string* a, const std::string* b) { return *a < *b; });
        out.number(uint32_t(sites.size()));
        for (const std::string* site : sites) {
            out.text(*site);
            out.text(map->at(*site));
        }
    }
}

bool ElementHiding::read(CompiledReader& in)
{
    for (auto* map : {&bySite_, &exceptedOn_}) {
        const uint32_t sites = in.count(8);
        for (uint32_t i = 0; i < sites && in.good(); ++i) {
            std::string site = in.text();
            std::string selectors = in.text();
            // Each selector is ended by a line break, and none holds a brace.
            if (selectors.empty() || selectors.back() != '\n' ||
                selectors.find_first_of("{}") != std::string::npos)
                return false;
            (*map)[std::move(site)] += selectors;
        }
    }
    return in.good();
}

} // namespace filters
