// SPDX-License-Identifier: MIT
#include "dom/css/Weight.h"

#include <espalier/dom/css/CSSStyleRule.h>

namespace Dom::CSS::detail {

Weight WeightOf(const CSSRule* rule, const Weight& otherwise) {
    if (rule == nullptr) return otherwise;
    const auto* const styleRule = dynamic_cast<const CSSStyleRule*>(rule);
    return {rule->Origin(),
            styleRule == nullptr ? otherwise.specificity : styleRule->Specificity()};
}

}  // namespace Dom::CSS::detail
