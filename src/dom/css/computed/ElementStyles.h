// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/Element.h>

#include "dom/css/AncestorFilter.h"
#include "dom/css/ElementNames.h"
#include "dom/css/computed/StyleSources.h"
#include "dom/css/computed/StyleTable.h"

#include <cstdint>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace Dom::CSS::detail {

/// The styles of the elements of a document, as far as somebody has asked for them; they are
/// forgotten when the document changes.
class ElementStyles {
public:
    ElementStyles(StyleSources& sources, StyleTable& table) : sources_(sources), table_(table) {}

    /// Returns the style of an element, or of a part of it; null when there is no such part. It
    /// lasts until something is forgotten.
    const StyleData* StyleOf(const Element& element, std::string_view pseudo);
    /// Returns what is merged for an element, or for a part of it; null when there is no such part.
    const Cascaded* CascadedFor(const Element& element, std::string_view pseudo);

    /// Forgets the styles, but not which rules select the elements.
    void ForgetStyles() { ++generation_; }
    void Clear();

private:
    struct Entry {
        const Cascaded* cascaded = nullptr;
        const StyleData* style = nullptr;
        std::uint64_t generation = 0;  // that the style is of
        AncestorFilter names;          // of the element and those above it
    };

    void ClearAll();
    void CheckDocument(const Element& element);
    Entry& Find(const Element& element);
    void Match(const Element& element, const Entry* parent, Entry& entry);

    StyleSources& sources_;
    StyleTable& table_;
    std::unordered_map<const Element*, Entry> entries_;
    std::vector<const Element*> above_;
    ElementNames names_;
    StyleSources::Match match_;
    std::uint64_t generation_ = 1;
    std::uint64_t document_ = 0;  // the serial number of the document
    std::uint64_t stamp_ = 0;     // that it had
};

}  // namespace Dom::CSS::detail
