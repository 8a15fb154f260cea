// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CSSStyleRule.h>
#include <espalier/dom/css/CSSStyleSheet.h>
#include <espalier/dom/css/RuleIndex.h>
#include <espalier/dom/css/Specificity.h>

#include "dom/css/CompiledSelectors.h"
#include "dom/css/CssCharacters.h"
#include "dom/css/PseudoClass.h"
#include "dom/css/SelectorSubject.h"
#include "xml/SeededHash.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <unordered_map>

namespace Dom::CSS {

namespace {

// A selector that is to be compared, and the rule that it is of.
struct Candidate {
    const CSSStyleRule* rule;
    const detail::CompiledSelectors* compiled;
    const detail::ComplexSelector* selector;
    std::size_t order;  // of the rule among all
    int specificity;
};

struct HashOfText {
    std::size_t operator()(std::string_view text) const {
        return Xml::detail::SeededHash(text.data(), static_cast<unsigned>(text.size()));
    }
};

// The keys are texts of the compiled selectors.
using Bucket = std::vector<Candidate>;
using Buckets = std::unordered_map<std::string_view, Bucket, HashOfText>;

// What a selector is filed under: what the fewest elements have.
struct Key {
    std::string_view id;
    std::string_view className;
    std::string_view type;
};

Key KeyOf(const detail::SelectorParts& parts, const detail::ComplexSelector& selector) {
    using Kind = detail::SelectorTest::Kind;
    const detail::Compound& subject =
        parts.compounds[selector.firstCompound + selector.compoundCount - 1];
    Key key;
    key.type = subject.type;
    for (unsigned i = 0; i < subject.testCount; ++i) {
        const detail::SelectorTest& test = parts.tests[subject.firstTest + i];
        if (test.kind == Kind::Id) key.id = test.name;
        if (test.kind == Kind::Class) key.className = test.name;
    }
    return key;
}

void AddAll(const Bucket& bucket, std::vector<const Candidate*>& candidates) {
    for (const Candidate& candidate : bucket)
        candidates.push_back(&candidate);
}

void AddFrom(const Buckets& buckets, std::string_view key,
             std::vector<const Candidate*>& candidates) {
    const auto found = buckets.find(key);
    if (found != buckets.end()) AddAll(found->second, candidates);
}

// A word that is there again adds nothing.
void AddFromWords(const Buckets& buckets, std::string_view words,
                  std::vector<const Candidate*>& candidates) {
    std::vector<const Bucket*> all;
    std::string_view rest = detail::Trimmed(words);
    while (!rest.empty()) {
        const std::string_view word = rest.substr(0, rest.find_first_of(detail::kSpace));
        if (const auto found = buckets.find(word); found != buckets.end()) {
            all.push_back(&found->second);
        }
        rest = detail::Trimmed(rest.substr(word.size()));
    }
    std::sort(all.begin(), all.end());
    all.erase(std::unique(all.begin(), all.end()), all.end());
    for (const Bucket* const bucket : all)
        AddAll(*bucket, candidates);
}

}  // namespace

struct RuleIndex::Contents {
    Buckets byId;
    Buckets byClass;
    Buckets byType;
    Bucket others;
    std::size_t ruleCount = 0;

    Bucket& BucketFor(const Key& key) {
        if (!key.id.empty()) return byId[key.id];
        if (!key.className.empty()) return byClass[key.className];
        return key.type.empty() ? others : byType[key.type];
    }

    // Collects the selectors that may select an element.
    void Collect(const Element& element, std::vector<const Candidate*>& candidates) const;
};

void RuleIndex::Contents::Collect(const Element& element,
                                  std::vector<const Candidate*>& candidates) const {
    const detail::SelectorSubject subject(element);
    if (const astring* const id = byId.empty() ? nullptr : subject.Attribute("id")) {
        AddFrom(byId, *id, candidates);
    }
    if (const astring* const classes = byClass.empty() ? nullptr : subject.Attribute("class")) {
        AddFromWords(byClass, *classes, candidates);
    }
    AddFrom(byType, subject.Name(), candidates);
    AddAll(others, candidates);
}

RuleIndex::RuleIndex() : contents_(std::make_unique<Contents>()) {}
RuleIndex::RuleIndex(RuleIndex&&) noexcept = default;
RuleIndex& RuleIndex::operator=(RuleIndex&&) noexcept = default;
RuleIndex::~RuleIndex() = default;

void RuleIndex::Add(const CSSStyleSheet& sheet) {
    for (const CSSRule* const rule : sheet.CssRules()) {
        if (const auto* const style = dynamic_cast<const CSSStyleRule*>(rule)) Add(*style);
    }
}

void RuleIndex::Add(const CSSStyleRule& rule) {
    const detail::CompiledSelectors& compiled = rule.Compiled();
    const std::size_t order = contents_->ruleCount++;
    for (const detail::ComplexSelector& selector : compiled.Parts().selectors) {
        const detail::SelectorWeight& weight = selector.weight;
        contents_->BucketFor(KeyOf(compiled.Parts(), selector))
            .push_back({&rule, &compiled, &selector, order,
                        CSS_SPECIFICITY(weight.ids, weight.classes, weight.elements)});
    }
}

std::vector<MatchedRule> RuleIndex::Match(const Element& element, std::string_view pseudo) const {
    std::vector<MatchedRule> result;
    Match(element, pseudo, result);
    return result;
}

void RuleIndex::Match(const Element& element, std::string_view pseudo,
                      std::vector<MatchedRule>& result) const {
    result.clear();
    const std::optional<detail::PseudoClass> part = detail::PartOf(pseudo);
    if (!part) return;
    std::vector<const Candidate*> candidates;
    contents_->Collect(element, candidates);
    std::erase_if(candidates, [&](const Candidate* candidate) {
        return candidate->selector->pseudoElement != *part ||
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

}  // namespace Dom::CSS
