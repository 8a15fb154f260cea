// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/dom/Forward.h>
#include <espalier/dom/css/Forward.h>
#include <espalier/dom/css/NamespacePrefix.h>

#include <memory>
#include <string_view>
#include <vector>

namespace Dom::CSS {

/// A rule that selects an element.
struct MatchedRule {
    const CSSStyleRule* rule;  ///< the sheet's
    int specificity;           ///< of the selector that selects, the greatest if there are several
};

/// Finds the rules that select an element among many, by its id, its classes and its name.
///
/// \code
///     Dom::CSS::RuleIndex index;
///     index.Add(sheet);
///     for (const Dom::CSS::MatchedRule& match : index.Match(element)) ...
/// \endcode
///
/// Rules are not owned. When one changes or goes, make the index anew.
///
/// \note A const RuleIndex may be used from different threads at once, for different documents.
class ESPALIER_EXPORT RuleIndex {
public:
    RuleIndex();
    RuleIndex(RuleIndex&&) noexcept;
    RuleIndex& operator=(RuleIndex&&) noexcept;
    ~RuleIndex();

    /// Adds the style rules of a sheet, in their order; those in other rules are passed over.
    void Add(const CSSStyleSheet& sheet);
    /// Adds the style rules of a sheet that count for a medium, in their order: none when the sheet
    /// is disabled or its media do not match, those in "@media" where that matches, and those in
    /// "@supports" when the properties and values that it asks for are known. Prefixes in selectors
    /// are those of "@namespace". A rule is left out when one of its selectors is wrong (Selectors
    /// Level 3 section 5), unless that has a pseudo-class that only later levels have.
    void Add(const CSSStyleSheet& sheet, const MediaContext& context);
    /// Adds a rule behind those that are here.
    void Add(const CSSStyleRule& rule);

    /// Returns the rules that select an element, in the order in which they were added.
    /// \param pseudo empty for the element itself; else a pseudo-element of it, such as "before"
    std::vector<MatchedRule> Match(const Element& element, std::string_view pseudo = {}) const;
    /// As above, in place of what is in `result`.
    void Match(const Element& element, std::string_view pseudo,
               std::vector<MatchedRule>& result) const;

private:
    friend class detail::StyleSources;

    void Add(const CSSRuleList& rules, const NamespacePrefixes& prefixes,
             const MediaContext& context);
    void AddValid(const CSSStyleRule& rule, const NamespacePrefixes& prefixes);

    std::unique_ptr<detail::RuleBuckets> buckets_;
};

}  // namespace Dom::CSS
