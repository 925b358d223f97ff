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

bool sameSelector(std::string_view rule, std::string_view selector)
{
    return rule.size() == selector.size() + hide.size() && rule.starts_with(selector);
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
    const std::string text(selector);
    if (exception) {
        if (sites.empty())
            exceptedEverywhere_.push_back(text);
        for (const std::string& site : sites)
            exceptedOn_[site].push_back(text);
        return true;
    }
    if (sites.empty())
        genericPending_.push_back(text);
    for (const std::string& site : sites)
        bySite_[site].push_back(text);
    // "~site" leaves a site out of the rule, as an exception there would.
    for (const std::string& site : notSites)
        exceptedOn_[site].push_back(text);
    return true;
}

void ElementHiding::build()
{
    const std::unordered_set<std::string> everywhere(exceptedEverywhere_.begin(),
                                                     exceptedEverywhere_.end());
    std::unordered_set<std::string> seen;
    for (const std::string& selector : genericPending_) {
        if (everywhere.contains(selector) || !seen.insert(selector).second)
            continue;
        genericAt_.push_back(uint32_t(generic_.size()));
        generic_ += selector;
        generic_ += hide;
    }
    for (auto& [site, selectors] : bySite_)
        std::erase_if(selectors, [&everywhere](const std::string& selector) {
            return everywhere.contains(selector);
        });
    std::erase_if(bySite_, [](const auto& entry) { return entry.second.empty(); });
    genericPending_ = {};
    exceptedEverywhere_ = {};
}

std::string ElementHiding::styleFor(std::string_view host) const
{
    std::vector<std::string_view> excepted;
    std::vector<const std::vector<std::string>*> own;
    for (const std::string_view domain : domainsOf(host)) {
        const std::string key(domain);
        if (const auto found = exceptedOn_.find(key); found != exceptedOn_.end())
            excepted.insert(excepted.end(), found->second.begin(), found->second.end());
        if (const auto found = bySite_.find(key); found != bySite_.end())
            own.push_back(&found->second);
    }
    const auto isExcepted = [&excepted](auto&& matches) {
        return std::any_of(excepted.begin(), excepted.end(), matches);
    };
    std::string style;
    if (excepted.empty()) {
        style = generic_;
    } else {
        for (size_t i = 0; i < genericAt_.size(); ++i) {
            const size_t end = i + 1 < genericAt_.size() ? genericAt_[i + 1] : generic_.size();
            const std::string_view rule =
                std::string_view(generic_).substr(genericAt_[i], end - genericAt_[i]);
            if (!isExcepted([rule](std::string_view s) { return sameSelector(rule, s); }))
                style += rule;
        }
    }
    for (const std::vector<std::string>* selectors : own)
        for (const std::string& selector : *selectors)
            if (!isExcepted([&selector](std::string_view s) { return s == selector; })) {
                style += selector;
                style += hide;
            }
    return style;
}

void ElementHiding::write(CompiledWriter& out) const
{
    // Sites in order, so the same rules always give the same bytes.
    const auto writeMap = [&out](const auto& map) {
        std::vector<const std::string*> sites;
        sites.reserve(map.size());
        for (const auto& entry : map)
            sites.push_back(&entry.first);
        std::sort(sites.begin(), sites.end(),
                  [](const std::string* a, const std::string* b) { return *a < *b; });
        out.number(uint32_t(sites.size()));
        for (const std::string* site : sites) {
            out.text(*site);
            const std::vector<std::string>& selectors = map.at(*site);
            out.number(uint32_t(selectors.size()));
            for (const std::string& selector : selectors)
                out.text(selector);
        }
    };
    out.text(generic_);
    out.number(uint32_t(genericAt_.size()));
    for (const uint32_t at : genericAt_)
        out.number(at);
    writeMap(bySite_);
    writeMap(exceptedOn_);
}

bool ElementHiding::read(CompiledReader& in)
{
    const auto readMap = [&in](auto& map) {
        const uint32_t sites = in.count(8);
        for (uint32_t i = 0; i < sites && in.good(); ++i) {
            std::string site = in.text();
            auto& selectors = map[std::move(site)];
            const uint32_t count = in.count(4);
            for (uint32_t j = 0; j < count && in.good(); ++j)
                selectors.push_back(in.text());
        }
    };
    generic_ = in.text();
    const uint32_t rules = in.count(4);
    genericAt_.reserve(rules);
    for (uint32_t i = 0; i < rules && in.good(); ++i) {
        const uint32_t at = in.number();
        // Each rule starts after the one before and within the text.
        if (at >= generic_.size() || (!genericAt_.empty() && at <= genericAt_.back()))
            return false;
        genericAt_.push_back(at);
    }
    if (!genericAt_.empty() && genericAt_.front() != 0)
        return false;
    readMap(bySite_);
    readMap(exceptedOn_);
    return in.good();
}

} // namespace filters
