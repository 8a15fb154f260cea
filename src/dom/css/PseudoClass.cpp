// SPDX-License-Identifier: MIT
#include "dom/css/PseudoClass.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace Dom::CSS::detail {

namespace {

// In the order of the enumeration.
constexpr std::array<std::string_view, static_cast<std::size_t>(PseudoClass::Unknown)> kNames = {
    "active",
    "after",
    "before",
    "checked",
    "contains",
    "disabled",
    "enabled",
    "empty",
    "first-child",
    "first-letter",
    "first-line",
    "first-of-type",
    "focus",
    "hover",
    "indeterminate",
    "lang",
    "last-child",
    "last-of-type",
    "link",
    "not",
    "nth-child",
    "nth-last-child",
    "nth-last-of-type",
    "nth-of-type",
    "only-child",
    "only-of-type",
    "root",
    "selection",
    "target",
    "visited"};

}  // namespace

PseudoClass FindPseudoClass(std::string_view name) {
    const auto* const found = std::find(kNames.begin(), kNames.end(), name);
    return static_cast<PseudoClass>(found - kNames.begin());
}

bool IsPseudoElement(PseudoClass name) {
    switch (name) {
    case PseudoClass::After:
    case PseudoClass::Before:
    case PseudoClass::FirstLetter:
    case PseudoClass::FirstLine:
    case PseudoClass::Selection: return true;
    default: return false;
    }
}

std::optional<PseudoClass> PartOf(std::string_view pseudo) {
    if (pseudo.empty()) return PseudoClass::Unknown;
    while (pseudo.starts_with(':'))
        pseudo.remove_prefix(1);
    const PseudoClass part = FindPseudoClass(pseudo);
    return IsPseudoElement(part) ? std::optional(part) : std::nullopt;
}

bool CountsAsClass(std::string_view name) {
    const PseudoClass found = FindPseudoClass(name);
    return found != PseudoClass::Unknown && !IsPseudoElement(found);
}

}  // namespace Dom::CSS::detail
