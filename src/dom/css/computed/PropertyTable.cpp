// SPDX-License-Identifier: MIT
#include "dom/css/computed/PropertyTable.h"

#include "dom/css/AsciiCase.h"
#include "dom/css/computed/PropertyAliases.h"
#include "dom/css/computed/PropertyRows.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace Dom::CSS::detail {

namespace {

// The rows stand in PropertyRows.h by what they are about; here they are sorted.
constexpr auto kProperties = [] {
    auto properties = std::to_array(kPropertyRows);
    std::ranges::sort(properties, {}, &PropertyInfo::name);
    return properties;
}();

constexpr auto kAliases = [] {
    auto aliases = std::to_array(kPropertyAliases);
    std::ranges::sort(aliases, {}, &PropertyAlias::name);
    return aliases;
}();

constexpr bool HaveTwoOneName(const auto& rows) {
    return std::ranges::adjacent_find(rows, {}, [](const auto& row) { return row.name; }) !=
           rows.end();
}
static_assert(!HaveTwoOneName(kProperties));
static_assert(!HaveTwoOneName(kAliases));

constexpr std::size_t kLongestName = [] {
    std::size_t longest = 0;
    for (const PropertyInfo& property : kProperties)
        longest = std::max(longest, property.name.size());
    for (const PropertyAlias& alias : kAliases)
        longest = std::max(longest, alias.name.size());
    return longest;
}();

constexpr std::optional<PropertyId> Find(std::string_view name) {
    const auto* const found = std::ranges::lower_bound(kProperties, name, {}, &PropertyInfo::name);
    if (found == kProperties.end() || found->name != name) return {};
    return static_cast<PropertyId>(found - kProperties.begin());
}

// Every alias stands for a property that is there.
static_assert(std::ranges::all_of(kAliases, [](const PropertyAlias& alias) {
    return Find(alias.property).has_value() && !Find(alias.name).has_value();
}));

}  // namespace

std::span<const PropertyInfo> KnownProperties() { return kProperties; }

std::optional<PropertyId> FindProperty(std::string_view name) {
    if (name.size() > kLongestName) return {};
    std::array<char, kLongestName> buffer{};
    std::ranges::transform(name, buffer.begin(), ToLower);
    const std::string_view lower(buffer.data(), name.size());
    if (const std::optional<PropertyId> found = Find(lower)) return found;
    const auto* const alias = std::ranges::lower_bound(kAliases, lower, {}, &PropertyAlias::name);
    if (alias == kAliases.end() || alias->name != lower) return {};
    return Find(alias->property);
}

}  // namespace Dom::CSS::detail
