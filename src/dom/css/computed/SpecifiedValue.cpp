// SPDX-License-Identifier: MIT
#include "dom/css/computed/SpecifiedValue.h"

#include "dom/css/computed/ShorthandExpansion.h"
#include "dom/css/computed/ValueComputing.h"
#include "dom/css/computed/VariableSubstitution.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace Dom::CSS::detail {

namespace {

// Returns what the value of a shorthand means for the property of an entry.
std::optional<astring> PartOf(const BlockEntry& entry, std::string_view value) {
    std::vector<Longhand> longhands;
    if (!ExpandShorthand(entry.shorthand, value, longhands)) return std::nullopt;
    const std::string_view name =
        entry.id == BlockEntry::kNamed ? entry.name.view() : KnownProperties()[entry.id].name;
    const auto part = std::ranges::find(longhands, name, &Longhand::name);
    return part != longhands.end() ? std::optional(std::move(part->value)) : std::nullopt;
}

std::optional<astring> Substituted(const BlockEntry& entry, const CustomValues* custom,
                                   std::size_t& budget) {
    const auto lookup = [custom](std::string_view name) -> std::optional<std::string_view> {
        const SharedText value = custom != nullptr ? custom->Find(name) : nullptr;
        return value != nullptr ? std::optional(value->view()) : std::nullopt;
    };
    std::optional<astring> text =
        SubstituteVariables(entry.value, lookup, std::min(kMostSubstituted, budget));
    if (!text) return std::nullopt;
    budget -= text->size();
    return entry.shorthand.empty() ? text : PartOf(entry, *text);
}

}  // namespace

SpecifiedValue SpecifyValue(const BlockEntry& entry, const CustomValues* custom,
                            std::size_t& budget) {
    std::optional<astring> text = Substituted(entry, custom, budget);
    if (!text) return {WideKeyword::Unset, {}};
    const WideKeyword keyword = FindWideKeyword(*text);
    if (keyword != WideKeyword::None) return {keyword, {}};
    const bool isValid =
        entry.id == BlockEntry::kNamed || IsValidValue(KnownProperties()[entry.id], *text);
    return {isValid ? WideKeyword::None : WideKeyword::Unset, std::move(*text)};
}

}  // namespace Dom::CSS::detail
