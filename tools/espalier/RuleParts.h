// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/css/CSSRuleList.h>
#include <espalier/dom/css/CSSStyleDeclaration.h>

#include <string>

namespace Tool {

/// What a rule of a style sheet consists of.
struct RuleParts {
    std::string head;  ///< what stands before its block; all of the rule when that has none
    const Dom::CSS::CSSStyleDeclaration* style = nullptr;  ///< null when it has no declarations
    const Dom::CSS::CSSRuleList* rules = nullptr;          ///< null when it has no rules
    bool isStyleRule = false;
    int specificity = 0;  ///< packed, of a style rule
};

RuleParts PartsOf(const Dom::CSS::CSSRule& rule);

}  // namespace Tool
