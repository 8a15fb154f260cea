// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/css/CollectStyleSheets.h>
#include <espalier/dom/css/MediaContext.h>
#include <espalier/dom/css/RuleIndex.h>

#include "dom/css/ElementNames.h"
#include "dom/css/RuleBuckets.h"
#include "dom/css/computed/Cascade.h"

#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Dom::CSS::detail {

/// What declares something for elements: the rules of all sheets, attributes "style" and override
/// styles.
class StyleSources {
public:
    explicit StyleSources(MediaContext context) : context_(std::move(context)) {}

    const MediaContext& Context() const { return context_; }
    void SetContext(const MediaContext& context);

    void Add(const CSSStyleSheet& sheet);
    void Add(CollectedSheet&& sheet);
    std::vector<const CSSStyleSheet*> Sheets() const;
    /// Looks through all sheets again when they are next needed, and forgets all declarations.
    void Forget();

    /// What is declared for an element or a part of it, what wins last: rules, and blocks that
    /// stand in none.
    struct Match {
        std::vector<MatchedRule> rules;
        std::vector<StyleLayer> others;
    };
    /// Finds what is declared for an element.
    /// \param ancestors what is above it; null when that is not known
    /// \param part no pseudo-element when it is PseudoClass::Unknown
    void Find(const Element& element, const ElementNames& names, PseudoClass part,
              std::string_view pseudo, const AncestorFilter* ancestors, Match& match);
    /// Returns the layers for what Find() has found. Their blocks stay until something is
    /// forgotten.
    std::vector<StyleLayer> LayersOf(const Match& match);

    /// Reads the declarations of a rule again, if they have been read.
    /// \return what has changed, or null
    const DeclarationBlock* Update(const CSSStyleRule& rule);

    /// Forgets the declarations that stand in no rule.
    void ForgetTexts() { byText_.clear(); }
    /// Returns how many of them are remembered.
    std::size_t TextCount() const { return byText_.size(); }

private:
    struct HashOfText {
        std::size_t operator()(std::string_view text) const;
    };

    void MakeIndex();
    const DeclarationBlock& BlockOf(const CSSStyleRule& rule);
    const DeclarationBlock& BlockOf(const astring& text, const astring& baseAddress);
    void AddAttribute(const Element& element, std::vector<StyleLayer>& layers);
    void AddOverride(const Element& element, std::string_view pseudo,
                     std::vector<StyleLayer>& layers);

    MediaContext context_;
    std::vector<CollectedSheet> owned_;
    struct Entry {
        const CSSStyleSheet* sheet;
        std::vector<astring> importMedia;
    };
    std::vector<Entry> sheets_;
    std::unique_ptr<RuleIndex> index_;  // null when it is to be made
    RuleBuckets::Candidates candidates_;
    std::unordered_map<const CSSStyleRule*, std::unique_ptr<DeclarationBlock>> byRule_;
    // The keys are kept with the blocks.
    struct TextBlock {
        astring key;  // the base address and the text
        DeclarationBlock block;
    };
    std::unordered_map<std::string_view, std::unique_ptr<TextBlock>, HashOfText> byText_;
};

}  // namespace Dom::CSS::detail
