// SPDX-License-Identifier: MIT
#include "dom/css/computed/ElementStyles.h"

#include "dom/NodeAccess.h"
#include "dom/css/Relatives.h"

#include <cassert>
#include <memory>
#include <optional>

namespace Dom::CSS::detail {

// What is remembered of attributes that are gone is dropped when it is most of all.
void ElementStyles::Clear() {
    constexpr std::size_t kFew = 1024;
    if (table_.Size() + sources_.TextCount() > kFew + 4 * entries_.size()) ClearAll();
    entries_.clear();
}

void ElementStyles::ClearAll() {
    entries_.clear();
    table_.Clear();
    sources_.ForgetTexts();
}

void ElementStyles::CheckDocument(const Element& element) {
    const Dom::detail::DocumentData& data = Dom::detail::NodeAccess::Data(element);
    const std::uint64_t stamp = data.stamp + data.valueChanges;
    if (data.serial == document_ && stamp == stamp_) return;
    if (data.serial == document_) {
        Clear();
    } else {
        ClearAll();  // addresses in attributes are relative to the document
    }
    document_ = data.serial;
    stamp_ = stamp;
}

void ElementStyles::Match(const Element& element, const Entry* parent, Entry& entry) {
    static const AncestorFilter none;
    names_.Set(element);
    const AncestorFilter& above = parent != nullptr ? parent->names : none;
    sources_.Find(element, names_, PseudoClass::Unknown, {}, &above, match_);
    entry.cascaded = &table_.Merge(match_);
    entry.names = above;
    names_.AddTo(entry.names);
}

// Styles depend on those above, which are made first, from the outermost one.
ElementStyles::Entry& ElementStyles::Find(const Element& element) {
    CheckDocument(element);
    above_.clear();
    Entry* parent = nullptr;
    for (const Element* each = &element; each != nullptr; each = ParentOf(*each)) {
        const auto place = entries_.find(each);
        if (place != entries_.end() && place->second.generation == generation_) {
            parent = &place->second;
            break;
        }
        above_.push_back(each);
    }
    Entry last;  // of what has been forgotten on the way
    std::shared_ptr<const StyleData> lastStyle;
    for (; !above_.empty(); above_.pop_back()) {
        if (table_.IsFull()) {
            if (parent != nullptr) {
                lastStyle = parent->style->shared_from_this();
                last = *parent;
                parent = &last;
            }
            ClearAll();
        }
        Entry& entry = entries_[above_.back()];
        if (entry.cascaded == nullptr) Match(*above_.back(), parent, entry);
        entry.style =
            &table_.StyleFor(*entry.cascaded, parent != nullptr ? parent->style : nullptr, false);
        entry.generation = generation_;
        parent = &entry;
    }
    assert(parent != nullptr);  // the element is the last of those above, or has its style
    return *parent;
}

const Cascaded* ElementStyles::CascadedFor(const Element& element, std::string_view pseudo) {
    const std::optional<PseudoClass> part = PartOf(pseudo);
    if (!part) return nullptr;
    const Entry& entry = Find(element);
    if (*part == PseudoClass::Unknown) return entry.cascaded;
    static const AncestorFilter none;
    const Element* const parent = ParentOf(element);
    const auto above = entries_.find(parent);
    const AncestorFilter* const names = above != entries_.end() ? &above->second.names : nullptr;
    names_.Set(element);
    sources_.Find(element, names_, *part, pseudo, parent != nullptr ? names : &none, match_);
    return &table_.Merge(match_);
}

const StyleData* ElementStyles::StyleOf(const Element& element, std::string_view pseudo) {
    const std::optional<PseudoClass> part = PartOf(pseudo);
    if (!part) return nullptr;
    if (*part == PseudoClass::Unknown) return Find(element).style;
    const Cascaded& cascaded = *CascadedFor(element, pseudo);
    return &table_.StyleFor(cascaded, entries_.at(&element).style, true);
}

}  // namespace Dom::CSS::detail
