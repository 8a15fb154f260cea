// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/css/CSSRule.h>
#include <espalier/dom/css/CSSStyleDeclaration.h>
#include <espalier/dom/css/CSSStyleRule.h>

#include "dom/css/BlockScanner.h"

#include <memory>
#include <string>
#include <string_view>

namespace Dom::CSS::detail {

/// Makes rules of what has been found in a style sheet: all that nobody else may do with them.
class RuleMaking {
public:
    /// Has a sheet keep a text, and returns what is kept.
    static const char* Keep(CSSStyleSheet& sheet, std::unique_ptr<const std::string> text);

    /// Says where a rule begins.
    /// \param source the same place in the text that the sheet keeps
    static void SetPlace(CSSRule& rule, SourcePlace place, const char* source);
    /// Returns where a rule begins in the text that its sheet keeps, or null.
    static const char* SourceOf(const CSSRule& rule) { return rule.source_; }

    /// Gives a rule another sheet and another parent, and those that are in it the same sheet.
    static void Move(CSSRule& rule, CSSStyleSheet* sheet, CSSRule* parentRule) noexcept;

    static void SetSelectors(CSSStyleRule& rule, std::string_view selectors, int specificity);
    static void SetSelectors(CSSPageRule& rule, std::string_view selectors);
    static void SetCondition(CSSGroupingRule& rule, std::string_view condition);
    static void SetImport(CSSImportRule& rule, std::string_view href, std::string_view media);
    static void SetEncoding(CSSCharsetRule& rule, std::string_view name);

    /// Sets all properties.
    /// \param text a text that BlockScanner calls plain
    /// \return false when it is refused all the same
    static bool SetDeclarations(CSSStyleDeclaration& style, std::string_view text);
    /// Adds what one declaration says that has no fault.
    static void AddDeclaration(CSSStyleDeclaration& style, const ScannedDeclaration& declaration);
};

/// Makes a rule of a text, and nothing else may be in that.
/// \param like a rule of the same type and origin
/// \throws DOMException SYNTAX_ERR "Syntax error in rule", also when it is of another type
std::unique_ptr<CSSRule> MakeRule(const char* text, const CSSRule& like);

/// As above, as the class of the other rule.
template <typename Rule>
std::unique_ptr<Rule> MakeRuleLike(const char* text, const Rule& like) {
    return std::unique_ptr<Rule>(static_cast<Rule*>(MakeRule(text, like).release()));
}

}  // namespace Dom::CSS::detail
