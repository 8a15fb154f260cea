// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/css/CSSRule.h>
#include <espalier/dom/css/StyleExplanation.h>

#include "dom/css/computed/DeclarationBlock.h"

#include <cstddef>
#include <vector>

namespace Dom::CSS::detail {

/// A declaration that counts for an element.
struct StyleLayer {
    const DeclarationBlock* block = nullptr;
    const CSSStyleRule* rule = nullptr;  ///< null for what stands in no rule
    DeclaredValue::Source source = DeclaredValue::Source::Rule;
    CSSRule::RULE_ORIGIN origin = CSSRule::Author;
    int specificity = 0;
};

/// One property in a layer.
struct LayerEntry {
    const StyleLayer* layer = nullptr;
    const BlockEntry* entry = nullptr;
};

/// Tells whether an entry loses against one of a layer that is not less (CSS 2.1 section 6.4.1):
/// important ones win over others, and among them those of the reader and of the user agent over
/// those of the document.
bool LosesAgainst(const LayerEntry& before, const LayerEntry& after);

/// Which declaration wins for each property of an element.
class Cascaded {
public:
    /// \param layers what wins last
    explicit Cascaded(std::vector<StyleLayer> layers);
    // The winners point into the layers.
    Cascaded(const Cascaded&) = delete;
    Cascaded& operator=(const Cascaded&) = delete;

    const std::vector<StyleLayer>& Layers() const { return layers_; }
    /// Returns what wins for properties with an id, by that.
    const std::vector<LayerEntry>& Known() const { return known_; }
    /// Returns what wins for the others, by their name.
    const std::vector<LayerEntry>& Named() const { return named_; }
    /// Returns how many layers and winners there are.
    std::size_t Size() const { return layers_.size() + known_.size() + named_.size(); }
    /// Tells whether a declaration is one of those that are merged.
    bool HasBlock(const DeclarationBlock& block) const;
    /// Merges anew, after one of the blocks has changed.
    void Merge();

    /// Returns all entries for a property, what wins first.
    /// \param id that of the property, or BlockEntry::kNamed for that called `name`
    std::vector<LayerEntry> All(PropertyId id, std::string_view name) const;

private:
    std::vector<StyleLayer> layers_;
    std::vector<LayerEntry> known_;
    std::vector<LayerEntry> named_;
};

}  // namespace Dom::CSS::detail
