// SPDX-License-Identifier: MIT
#pragma once

#include "dom/css/computed/Cascade.h"
#include "dom/css/computed/ListPool.h"
#include "dom/css/computed/StyleAdjustment.h"
#include "dom/css/computed/StyleData.h"
#include "dom/css/computed/StyleSources.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace Dom::CSS::detail {

/// All styles that have been computed. What is declared alike is merged once; and what is merged
/// alike, and inherits alike, is computed once. So most elements of a page share their style with
/// others, and a change costs no more than the styles that are different by it.
class StyleTable {
public:
    explicit StyleTable(StyleSources& sources) : sources_(sources) {}

    /// Returns what is merged of what has been found for an element.
    const Cascaded& Merge(const StyleSources::Match& match);
    /// Returns the style of an element.
    /// \param parent that of the element above; null for the root
    /// \param isPart it is the style of a part of the element that `parent` is the style of
    const StyleData& StyleFor(const Cascaded& cascaded, const StyleData* parent, bool isPart);

    /// Merges anew what a block has part in, and forgets the styles that are made of it.
    void Update(const DeclarationBlock& block);
    /// Forgets all styles, and what they are made of.
    void Clear();
    /// Tells whether so much is remembered that it is to be forgotten: what is merged may be as
    /// large as all rules, for each element.
    bool IsFull() const { return merged_ > kMostMerged; }
    /// Returns how much is remembered.
    std::size_t Size() const { return cascades_.size() + styles_.size(); }

private:
    // Rules with their specificities, and blocks with their sources.
    using Key = std::vector<std::uintptr_t>;
    struct HashOfKey {
        std::size_t operator()(const Key& key) const;
    };
    // What a style depends on.
    struct Origin {
        const Cascaded* cascaded = nullptr;
        const ValueList* inherited = nullptr;  // null for the root
        const CustomValues* custom = nullptr;
        const StyleData* parent = nullptr;  // null when what is inherited is all that counts
        double rootFontSize = 0;            // 0 for the root
        StyledPlace place = {};
        friend bool operator==(const Origin&, const Origin&) = default;
    };
    struct HashOfOrigin {
        std::size_t operator()(const Origin& origin) const;
    };
    struct Entry {
        std::shared_ptr<const StyleData> style;
        // Keeps what the origin refers to; null for the root.
        std::shared_ptr<const StyleData> parent;
    };
    using Styles = std::unordered_map<Origin, Entry, HashOfOrigin>;

    // So many rules and properties may be remembered, in all that is merged together.
    static constexpr std::size_t kMostMerged = std::size_t{8} << 20U;
    // Variables may be replaced by so much, in all styles together.
    static constexpr std::size_t kMostSubstituted = std::size_t{64} << 20U;

    Styles::iterator Make(const Origin& origin, const StyleData* parent);
    // What an origin has in common with those of all elements below one.
    static Origin AboveOf(Origin origin) {
        origin.cascaded = nullptr;
        origin.place = {};
        return origin;
    }
    void DropUnreachable();
    template <typename Condition>
    void EraseIf(Condition condition);

    StyleSources& sources_;
    Key key_;
    std::unordered_map<Key, std::unique_ptr<Cascaded>, HashOfKey> cascades_;
    Styles styles_;
    std::size_t kept_ = 0;  // how many there were when the unreachable ones were dropped
    ListPool lists_;
    std::size_t substituted_ = 0;
    std::size_t merged_ = 0;
};

}  // namespace Dom::CSS::detail
