// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/base/astring.h>
#include <espalier/dom/Forward.h>
#include <espalier/dom/css/CSSRule.h>
#include <espalier/dom/css/CSSStyleDeclaration.h>

#include <atomic>
#include <cstddef>
#include <memory>
#include <new>

namespace Dom::CSS {

/// A rule of selectors and a declaration, such as "h1, h2 { color: red }".
class ESPALIER_EXPORT CSSStyleRule : public CSSRule {
public:
    /// Makes a rule without a selector, whose specificity is -1.
    CSSStyleRule(CSSStyleSheet* sheet, CSSRule* parentRule, RULE_ORIGIN origin);
    ~CSSStyleRule() override;

    void* QueryInterface(const char* className) override;
    /// Returns the selector, " { ", the declaration and " }".
    astring CssText() const override;
    /// Reads a whole rule. When the declaration is refused, its properties up to the fault are in
    /// Style() and the selector is the one before, while the specificity is the new one.
    ///
    /// \throws DOMException SYNTAX_ERR "Syntax error in selector"; "Expected style declaration
    ///     after selector"; "Syntax error in style block", when "}" is not the last character; and
    ///     what CSSStyleDeclaration::SetCssText() throws
    void SetCssText(const char* text) override;
    using CSSRule::SetCssText;

    /// Returns the selectors, without white space around them.
    const astring& SelectorText() const { return selectorText_; }
    /// Replaces the selectors alone.
    /// \throws DOMException SYNTAX_ERR "Syntax error in selector"
    void SetSelectorText(const astring& text);
    /// Returns the specificity, summed over all selectors, as CSS_SPECIFICITY() packs it.
    int Specificity() const { return specificity_; }
    /// Returns the declaration, to look at or to change.
    CSSStyleDeclaration& Style() { return style_; }
    const CSSStyleDeclaration& Style() const { return style_; }

    /// Tells whether one of the selectors selects an element, or a pseudo-element of it.
    ///
    /// Type selectors are compared with the local name, as it is written, whatever its namespace;
    /// ".a" with the words of the attribute "class"; "#a" with the attribute "id". States that only
    /// a user makes (:hover, :active, :focus, :visited, :indeterminate) never hold. Parents and
    /// siblings are those of the tree, also when InsertBefore() left links that do not show them.
    ///
    /// \param element may be null, which nothing selects
    /// \param pseudo empty for the element itself; else the pseudo-element, such as "before"
    bool MatchesSelector(Element* element, const astring& pseudo) const;
    /// Tells whether one of the selectors, which is not a combination, selects an element that has
    /// nothing but a name, an id and classes.
    /// \param classes words with white space between them
    bool MatchesSelector(const astring& elementName, const astring& id,
                         const astring& classes) const;

    /// \cond
    // Memory: rules that a sheet makes have their texts behind them. Derived classes may have an
    // alignment of their own.
    static void* operator new(std::size_t size);
    static void* operator new(std::size_t size, std::align_val_t alignment);
    static void operator delete(void* memory);
    static void operator delete(void* memory, std::align_val_t alignment);
    /// \endcond

private:
    friend class RuleIndex;
    friend class CSSStyleSheet;

    // Makes a rule as the constructor and SetCssText() do, in one piece of memory with its texts
    // where that can be.
    static std::unique_ptr<CSSStyleRule> Make(CSSStyleSheet* sheet, CSSRule* parentRule,
                                              RULE_ORIGIN origin, const char* text);
    friend class detail::RuleMaking;

    void SetSelectors(astring&& selectors) noexcept;
    const detail::CompiledSelectors& Compiled() const;

    astring selectorText_;
    int specificity_ = -1;
    CSSStyleDeclaration style_;
    // Owned; made when first asked for, by whatever thread.
    mutable std::atomic<const detail::CompiledSelectors*> compiled_ = nullptr;
};

}  // namespace Dom::CSS
