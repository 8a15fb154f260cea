// SPDX-License-Identifier: MIT
#include "dom/css/RuleBuckets.h"

#include <espalier/dom/css/Specificity.h>

#include <algorithm>
#include <span>

namespace Dom::CSS::detail {

namespace {

using Kind = SelectorTest::Kind;

std::span<const SelectorTest> TestsOf(const SelectorParts& parts, const Compound& compound) {
    return std::span(parts.tests).subspan(compound.firstTest, compound.testCount);
}

// Calls `add` with the hashes of the names that a compound asks for.
template <typename Add>
void ForEachName(const SelectorParts& parts, const Compound& compound, Add add) {
    for (const SelectorTest& test : TestsOf(parts, compound)) {
        if (test.kind == Kind::Id) add(HashOfName(NameKind::Id, test.name));
        if (test.kind == Kind::Class) add(HashOfName(NameKind::Class, test.name));
    }
    if (!compound.type.empty()) add(HashOfName(NameKind::Type, compound.type));
}

// Notes names that elements above the one that is selected have, as many as there is room for.
void NoteAncestors(const SelectorParts& parts, const ComplexSelector& selector,
                   RuleBuckets::Candidate& candidate) {
    for (unsigned i = selector.compoundCount; i-- > 1;) {
        const Combinator combinator = parts.compounds[selector.firstCompound + i].combinator;
        if (combinator != Combinator::Descendant && combinator != Combinator::Child) continue;
        ForEachName(parts, parts.compounds[selector.firstCompound + i - 1],
                    [&candidate](std::uint32_t hash) {
                        if (candidate.ancestorCount == candidate.ancestors.size()) return;
                        candidate.ancestors[candidate.ancestorCount++] = hash;
                    });
    }
}

bool MayMatch(const RuleBuckets::Candidate& candidate, const AncestorFilter& filter) {
    const std::span names(candidate.ancestors.data(), candidate.ancestorCount);
    return std::ranges::all_of(names, [&](std::uint32_t hash) { return filter.MayHave(hash); });
}

}  // namespace

RuleBuckets::Bucket& RuleBuckets::BucketFor(const SelectorParts& parts,
                                            const ComplexSelector& selector) {
    const Compound& subject = parts.compounds[selector.firstCompound + selector.compoundCount - 1];
    std::string_view id;
    std::string_view className;
    for (const SelectorTest& test : TestsOf(parts, subject)) {
        if (test.kind == Kind::Id) id = test.name;
        if (test.kind == Kind::Class) className = test.name;
    }
    if (!id.empty()) return byId_[HashedName(NameKind::Id, id)];
    if (!className.empty()) return byClass_[HashedName(NameKind::Class, className)];
    if (subject.type.empty()) return others_;
    return byType_[HashedName(NameKind::Type, subject.type)];
}

void RuleBuckets::Add(const CSSStyleRule& rule, const CompiledSelectors& compiled) {
    const SelectorParts& parts = compiled.Parts();
    const std::size_t order = ruleCount_++;
    for (const ComplexSelector& selector : parts.selectors) {
        const SelectorWeight& weight = selector.weight;
        Candidate candidate{&rule,
                            &compiled,
                            &selector,
                            order,
                            CSS_SPECIFICITY(weight.ids, weight.classes, weight.elements),
                            0,
                            {}};
        NoteAncestors(parts, selector, candidate);
        BucketFor(parts, selector).push_back(candidate);
    }
}

void RuleBuckets::Collect(const ElementNames& names, Candidates& candidates) const {
    const auto add = [&candidates](const Bucket& bucket) {
        for (const Candidate& candidate : bucket)
            candidates.push_back(&candidate);
    };
    const auto addFrom = [&add](const Buckets& buckets, const HashedName& name) {
        if (const auto found = buckets.find(name); found != buckets.end()) add(found->second);
    };
    if (!names.Id().text.empty()) addFrom(byId_, names.Id());
    for (const HashedName& name : names.Classes())
        addFrom(byClass_, name);
    addFrom(byType_, names.Type());
    add(others_);
}

void RuleBuckets::Match(const Element& element, const ElementNames& names, PseudoClass part,
                        const AncestorFilter* ancestors, Candidates& candidates,
                        std::vector<MatchedRule>& result) const {
    result.clear();
    candidates.clear();
    Collect(names, candidates);
    std::erase_if(candidates, [&](const Candidate* candidate) {
        return candidate->selector->pseudoElement != part ||
               (ancestors != nullptr && !MayMatch(*candidate, *ancestors)) ||
               !candidate->compiled->MatchOne(*candidate->selector, element);
    });
    std::sort(candidates.begin(), candidates.end(), [](const Candidate* a, const Candidate* b) {
        return a->order != b->order ? a->order < b->order : a->specificity > b->specificity;
    });
    for (const Candidate* const candidate : candidates) {
        if (!result.empty() && result.back().rule == candidate->rule) continue;
        result.push_back({candidate->rule, candidate->specificity});
    }
}

}  // namespace Dom::CSS::detail
