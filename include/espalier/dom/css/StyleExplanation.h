// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>
#include <espalier/dom/Forward.h>
#include <espalier/dom/css/CSSRule.h>
#include <espalier/dom/css/Forward.h>
#include <espalier/dom/css/SourcePlace.h>

#include <vector>

namespace Dom::CSS {

/// A declaration that gives a property of an element a value, or would if no other did.
struct DeclaredValue {
    /// Where a declaration stands.
    enum class Source {
        Rule,            ///< in a rule of a sheet
        StyleAttribute,  ///< in the attribute "style" of the element
        OverrideStyle    ///< in what HTMLDocument::GetOverrideStyle() returns
    };

    Source source = Source::Rule;  ///< where it stands
    astring property;              ///< the property; or a shorthand of it that has variables
    astring value;                 ///< of `property`, as declared
    bool important = false;        ///< was "!important"
    CSSRule::RULE_ORIGIN origin = CSSRule::Author;  ///< author for all but rules
    int specificity = 0;                   ///< of the selector that selects; 0 for all but rules
    const CSSStyleRule* rule = nullptr;    ///< the sheet's; null for all but rules
    const CSSStyleSheet* sheet = nullptr;  ///< that the rule is in; null for all but rules
    SourcePlace place;                     ///< in the text of the sheet, if that is known
};

/// Why a property of an element has its value, by a StyleResolver.
struct StyleExplanation {
    /// Where the value comes from.
    enum class Kind {
        Declared,   ///< a declaration for the element wins
        Inherited,  ///< from an ancestor; none wins, or one that says "inherit"
        Initial     ///< nothing else; none wins, or one that says "initial"
    };

    Kind kind = Kind::Initial;  ///< where it comes from
    astring value;              ///< as ComputedStyle::Value() returns it
    /// The element that it was declared for; null when `kind` is Initial.
    const Element* element = nullptr;
    /// All declarations of the property for `element`, or for the one that was asked for when that
    /// is null: what wins comes first, what would win without it second.
    std::vector<DeclaredValue> declarations;
};

}  // namespace Dom::CSS
