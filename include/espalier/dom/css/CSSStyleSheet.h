// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/dom/css/CSSRule.h>
#include <espalier/dom/css/CSSRuleList.h>
#include <espalier/dom/css/StyleSheet.h>

#include <memory>
#include <string>
#include <vector>

namespace Dom::CSS {

/// A CSS style sheet: a list of rules, which it owns.
class ESPALIER_EXPORT CSSStyleSheet : public StyleSheets::StyleSheet {
public:
    /// \name Making a sheet
    /// Of a node, of a rule that imports it, or of no owner but an origin; the origin of the others
    /// is the document. Owners may be null; they stay the caller's.
    /// @{
    CSSStyleSheet(Node* ownerNode, StyleSheet* parentStyleSheet, const astring& href,
                  const astring& title);
    CSSStyleSheet(CSSRule* ownerRule, StyleSheet* parentStyleSheet, const astring& href,
                  const astring& title);
    CSSStyleSheet(CSSRule::RULE_ORIGIN origin, StyleSheet* parentStyleSheet, const astring& href,
                  const astring& title);
    /// @}
    ~CSSStyleSheet() override;

    void* QueryInterface(const char* name) override;

    /// Makes a rule from a text, and inserts it before rule `index` or, when that is the number of
    /// rules, at the end. A text that begins with "@" makes a CSSUnknownRule, every other a
    /// CSSStyleRule. When this throws, nothing has changed.
    ///
    /// \return the index
    /// \throws DOMException INDEX_SIZE_ERR "Specified index is not a valid insertion point"; and
    ///     what CSSStyleRule::SetCssText() throws
    unsigned long InsertRule(const char* text, unsigned long index);
    unsigned long InsertRule(const astring& text, unsigned long index);
    /// Deletes rule `index`; nothing happens when that is the number of rules.
    /// \throws DOMException INDEX_SIZE_ERR "Specified index does not correspond to a rule in the
    ///     style sheet's rule list"
    void DeleteRule(unsigned long index);

    /// Returns the rules.
    CSSRuleList& CssRules() { return rules_; }
    const CSSRuleList& CssRules() const { return rules_; }
    /// Returns the rule that imports the sheet, or null.
    CSSRule* OwnerRule() const { return ownerRule_; }
    /// Returns where the sheet comes from.
    CSSRule::RULE_ORIGIN Origin() const { return origin_; }

private:
    friend class detail::RuleMaking;

    CSSRule* ownerRule_ = nullptr;
    CSSRuleList rules_;
    CSSRule::RULE_ORIGIN origin_ = CSSRule::Author;
    // What ParseStyleSheet() has read; places are looked up in it.
    std::vector<std::unique_ptr<const std::string>> sources_;
};

}  // namespace Dom::CSS
