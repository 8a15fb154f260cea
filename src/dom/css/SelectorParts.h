// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

#include "dom/css/PseudoClass.h"

#include <vector>

namespace Dom::CSS::detail {

/// What stands between two compounds of a selector (Selectors Level 3, section 8).
enum class Combinator : unsigned char { None, Descendant, Child, NextSibling, LaterSibling };

/// What namespace a type or an attribute is of.
struct NamespaceTest {
    enum class Kind : unsigned char { Unsaid, Any, Is };

    Kind kind = Kind::Unsaid;  // any for a type, none for an attribute
    astring uri;               // empty for none
};

/// One condition that a selector sets.
struct SelectorTest {
    enum class Kind : unsigned char {
        Id,
        Class,
        HasAttribute,
        AttributeIs,          // =
        AttributeHasWord,     // ~=
        AttributeIsDashed,    // |=
        AttributeBeginsWith,  // ^=
        AttributeEndsWith,    // $=
        AttributeContains,    // *=
        Pseudo
    };

    Kind kind = Kind::Id;
    PseudoClass pseudo = PseudoClass::Unknown;
    NamespaceTest space;   // of an attribute
    astring name;          // of an id, a class or an attribute
    astring value;         // of an attribute; the argument of :lang() and :contains()
    int step = 0;          // a of an+b
    int offset = 0;        // b of it
    unsigned negated = 0;  // the compound in :not()
};

/// Conditions on one element.
struct Compound {
    NamespaceTest space;
    astring type;  // the local name; empty for any
    unsigned firstTest = 0;
    unsigned testCount = 0;
    Combinator combinator = Combinator::None;  // to the compound before, which stands to its left
};

/// How many conditions of each weight a selector has (Selectors Level 3, section 9).
struct SelectorWeight {
    int ids = 0;
    int classes = 0;
    int elements = 0;
};

/// Compounds with combinators between them.
struct ComplexSelector {
    unsigned firstCompound = 0;  // the left one
    unsigned compoundCount = 0;
    PseudoClass pseudoElement = PseudoClass::Unknown;  // when it selects none
    SelectorWeight weight;
};

/// Selectors, with everything that they consist of.
struct SelectorParts {
    std::vector<ComplexSelector> selectors;
    std::vector<Compound> compounds;
    std::vector<SelectorTest> tests;
};

}  // namespace Dom::CSS::detail
