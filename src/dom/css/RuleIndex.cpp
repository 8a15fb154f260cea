// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CSSMediaRule.h>
#include <espalier/dom/css/CSSStyleRule.h>
#include <espalier/dom/css/CSSStyleSheet.h>
#include <espalier/dom/css/CSSSupportsRule.h>
#include <espalier/dom/css/MediaQueryList.h>
#include <espalier/dom/css/RuleIndex.h>

#include "dom/css/ElementNames.h"
#include "dom/css/LaterSelectors.h"
#include "dom/css/NamespaceRules.h"
#include "dom/css/PseudoClass.h"
#include "dom/css/RuleBuckets.h"
#include "dom/css/computed/SupportsCondition.h"

#include <optional>
#include <utility>

namespace Dom::CSS {

RuleIndex::RuleIndex() : buckets_(std::make_unique<detail::RuleBuckets>()) {}
RuleIndex::RuleIndex(RuleIndex&&) noexcept = default;
RuleIndex& RuleIndex::operator=(RuleIndex&&) noexcept = default;
RuleIndex::~RuleIndex() = default;

void RuleIndex::Add(const CSSStyleSheet& sheet) {
    for (const CSSRule* const rule : sheet.CssRules()) {
        if (const auto* const style = dynamic_cast<const CSSStyleRule*>(rule)) Add(*style);
    }
}

void RuleIndex::Add(const CSSStyleSheet& sheet, const MediaContext& context) {
    if (sheet.Disabled() || !MatchesMedia(sheet.GetMediaList(), context)) return;
    const NamespacePrefixes prefixes = detail::PrefixesOf(sheet);
    Add(sheet.CssRules(), prefixes, context);
}

// A sheet that has been read has at most 256 rules in each other.
void RuleIndex::Add(const CSSRuleList& rules, const NamespacePrefixes& prefixes,
                    const MediaContext& context) {
    for (const CSSRule* const rule : rules) {
        if (rule->Type() == CSSRule::STYLE_RULE) {
            AddValid(static_cast<const CSSStyleRule&>(*rule), prefixes);
        } else if (rule->Type() == CSSRule::MEDIA_RULE) {
            const auto& media = static_cast<const CSSMediaRule&>(*rule);
            if (MatchesMedia(media.GetMediaList(), context)) {
                Add(media.CssRules(), prefixes, context);
            }
        } else if (rule->Type() == CSSRule::SUPPORTS_RULE) {
            const auto& supports = static_cast<const CSSSupportsRule&>(*rule);
            if (detail::SupportsCondition(supports.ConditionText())) {
                Add(supports.CssRules(), prefixes, context);
            }
        }
    }
}

void RuleIndex::AddValid(const CSSStyleRule& rule, const NamespacePrefixes& prefixes) {
    std::unique_ptr<const detail::CompiledSelectors> own;
    if (!prefixes.empty()) {
        own = std::make_unique<detail::CompiledSelectors>(rule.SelectorText(), prefixes);
    }
    const detail::CompiledSelectors& compiled = own != nullptr ? *own : rule.Compiled();
    const std::optional<std::size_t> fault = compiled.Fault();
    if (fault && !detail::IsOfLaterLevel(rule.SelectorText(), *fault)) return;
    buckets_->Add(rule, compiled);
    if (own != nullptr) buckets_->Keep(std::move(own));
}

void RuleIndex::Add(const CSSStyleRule& rule) { buckets_->Add(rule, rule.Compiled()); }

std::vector<MatchedRule> RuleIndex::Match(const Element& element, std::string_view pseudo) const {
    std::vector<MatchedRule> result;
    Match(element, pseudo, result);
    return result;
}

void RuleIndex::Match(const Element& element, std::string_view pseudo,
                      std::vector<MatchedRule>& result) const {
    const std::optional<detail::PseudoClass> part = detail::PartOf(pseudo);
    if (!part) return result.clear();
    detail::ElementNames names;
    names.Set(element);
    detail::RuleBuckets::Candidates candidates;
    buckets_->Match(element, names, *part, nullptr, candidates, result);
}

}  // namespace Dom::CSS
