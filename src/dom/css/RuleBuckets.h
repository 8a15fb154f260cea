// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/css/RuleIndex.h>

#include "dom/css/AncestorFilter.h"
#include "dom/css/CompiledSelectors.h"
#include "dom/css/ElementNames.h"
#include "dom/css/PseudoClass.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <utility>
#include <vector>

namespace Dom::CSS::detail {

/// Rules, filed under what the fewest elements have of what their selectors ask for: an id, a class
/// or a name.
class RuleBuckets {
public:
    /// A selector that is to be compared, and the rule that it is of.
    struct Candidate {
        const CSSStyleRule* rule;
        const CompiledSelectors* compiled;
        const ComplexSelector* selector;
        std::size_t order;  ///< of the rule among all
        int specificity;
        unsigned ancestorCount;
        std::array<std::uint32_t, 3> ancestors;  ///< names that are somewhere above
    };
    /// What Match() needs room for.
    using Candidates = std::vector<const Candidate*>;

    /// Adds a rule; the selectors must last as long as this.
    void Add(const CSSStyleRule& rule, const CompiledSelectors& compiled);
    /// Takes selectors that belong to nobody else.
    void Keep(std::unique_ptr<const CompiledSelectors> compiled) {
        kept_.push_back(std::move(compiled));
    }

    /// Finds the rules that select an element, or a part of it, in the order in which they were
    /// added.
    /// \param names those of the element
    /// \param ancestors what is above it; null when that is not known
    void Match(const Element& element, const ElementNames& names, PseudoClass part,
               const AncestorFilter* ancestors, Candidates& candidates,
               std::vector<MatchedRule>& result) const;

private:
    // The keys are texts of the compiled selectors.
    using Bucket = std::vector<Candidate>;
    using Buckets = std::unordered_map<HashedName, Bucket, HashOfHashedName>;

    Bucket& BucketFor(const SelectorParts& parts, const ComplexSelector& selector);
    void Collect(const ElementNames& names, Candidates& candidates) const;

    Buckets byId_;
    Buckets byClass_;
    Buckets byType_;
    Bucket others_;
    std::vector<std::unique_ptr<const CompiledSelectors>> kept_;
    std::size_t ruleCount_ = 0;
};

}  // namespace Dom::CSS::detail
