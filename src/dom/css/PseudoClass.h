// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

namespace Dom::CSS::detail {

/// The names behind the ":" of selectors: pseudo-classes and the pseudo-elements of CSS 2.1 and
/// Selectors Level 3.
enum class PseudoClass : unsigned char {
    Active,
    After,
    Before,
    Checked,
    Contains,
    Disabled,
    Enabled,
    Empty,
    FirstChild,
    FirstLetter,
    FirstLine,
    FirstOfType,
    Focus,
    Hover,
    Indeterminate,
    Lang,
    LastChild,
    LastOfType,
    Link,
    Not,
    NthChild,
    NthLastChild,
    NthLastOfType,
    NthOfType,
    OnlyChild,
    OnlyOfType,
    Root,
    Selection,
    Target,
    Visited,
    Unknown
};

/// Returns what a name stands for; names are compared as they are written.
PseudoClass FindPseudoClass(std::string_view name);

/// Tells whether a name stands for a part of an element, such as "before".
bool IsPseudoElement(PseudoClass name);

/// Returns the part of an element that a caller asks for: one of the pseudo-elements, with or
/// without colons; PseudoClass::Unknown for the empty text, the element itself; nothing for other
/// names.
std::optional<PseudoClass> PartOf(std::string_view pseudo);

/// Tells whether a name adds to the specificity as a class does. Deliberate: those of
/// pseudo-elements, which elsewhere add to the elements, and unknown ones add nothing.
bool CountsAsClass(std::string_view name);

}  // namespace Dom::CSS::detail
