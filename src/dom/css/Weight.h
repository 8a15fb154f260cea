// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/css/CSSRule.h>

namespace Dom::CSS::detail {

/// How much properties weigh against others.
struct Weight {
    CSSRule::RULE_ORIGIN origin = CSSRule::Author;
    int specificity = 0;
};

/// Returns the weight that a rule gives its properties.
/// \param rule may be null
/// \param otherwise what the rule does not tell: the specificity, when it is no style rule, or all
Weight WeightOf(const CSSRule* rule, const Weight& otherwise = {});

}  // namespace Dom::CSS::detail
