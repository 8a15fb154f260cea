// SPDX-License-Identifier: MIT
#include "dom/css/computed/StyleTable.h"

#include "dom/css/computed/StyleMaking.h"
#include "xml/SeededHash.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace Dom::CSS::detail {

namespace {

std::uint64_t Mixed(std::uint64_t hash, const void* pointer) {
    return Xml::detail::FoldedProduct(hash ^ reinterpret_cast<std::uintptr_t>(pointer),
                                      Xml::detail::kHashMultipliers[0]);
}

}  // namespace

std::size_t StyleTable::HashOfKey::operator()(const Key& key) const {
    return Xml::detail::SeededHash(reinterpret_cast<const char*>(key.data()),
                                   static_cast<unsigned>(key.size() * sizeof(Key::value_type)));
}

std::size_t StyleTable::HashOfOrigin::operator()(const Origin& origin) const {
    const std::uint64_t place = (origin.place.isItem ? 1U : 0U) | (origin.place.isPart ? 2U : 0U);
    const std::uint64_t hash = Mixed(Xml::detail::kHashMultipliers[1] + place, origin.cascaded);
    const std::uint64_t size = std::bit_cast<std::uint64_t>(origin.rootFontSize);
    return Mixed(Mixed(Mixed(hash ^ size, origin.inherited), origin.custom), origin.parent);
}

const Cascaded& StyleTable::Merge(const StyleSources::Match& match) {
    key_.clear();
    for (const MatchedRule& each : match.rules) {
        key_.push_back(reinterpret_cast<std::uintptr_t>(each.rule));
        key_.push_back(static_cast<std::uintptr_t>(each.specificity));
    }
    for (const StyleLayer& layer : match.others) {
        key_.push_back(reinterpret_cast<std::uintptr_t>(layer.block));
        key_.push_back(static_cast<std::uintptr_t>(layer.source));
    }
    const auto place = cascades_.find(key_);
    if (place != cascades_.end()) return *place->second;
    auto made = std::make_unique<Cascaded>(sources_.LayersOf(match));
    const std::size_t size = key_.size() + made->Size();
    const Cascaded& result = *cascades_.emplace(key_, std::move(made)).first->second;
    merged_ += size;
    return result;
}

StyleTable::Styles::iterator StyleTable::Make(const Origin& origin, const StyleData* parent) {
    const std::size_t rest = kMostSubstituted - std::min(substituted_, kMostSubstituted);
    std::shared_ptr<StyleData> style =
        MakeStyle(*origin.cascaded, parent, origin.place, sources_.Context(), rest);
    style->inherited = lists_.Share(std::move(style->inherited));
    Entry entry{style, parent != nullptr ? parent->shared_from_this() : nullptr};
    const auto place = styles_.emplace(origin, std::move(entry)).first;
    substituted_ += style->substituted;
    return place;
}

const StyleData& StyleTable::StyleFor(const Cascaded& cascaded, const StyleData* parent,
                                      bool isPart) {
    Origin origin{.cascaded = &cascaded, .place = {parent == nullptr, false, isPart}};
    if (parent != nullptr) {
        origin.place.isItem = parent->hasItems;
        origin.inherited = parent->inherited.get();
        origin.custom = parent->custom.get();
        origin.rootFontSize = parent->rootFontSize;
    }
    auto place = styles_.find(origin);
    if (place == styles_.end()) place = Make(origin, parent);
    if (parent == nullptr || !place->second.style->dependsOnParent) return *place->second.style;
    if (place->second.parent.get() == parent) return *place->second.style;
    origin.parent = parent;
    place = styles_.find(origin);
    if (place == styles_.end()) place = Make(origin, parent);
    return *place->second.style;
}

template <typename Condition>
void StyleTable::EraseIf(Condition condition) {
    std::erase_if(styles_, [&](const auto& each) {
        if (!condition(each)) return false;
        substituted_ -= each.second.style->substituted;
        return true;
    });
}

// What no style from the root downwards leads to will not be asked for again: it inherits what was
// made anew.
void StyleTable::DropUnreachable() {
    std::unordered_map<Origin, std::vector<const Styles::value_type*>, HashOfOrigin> below;
    for (const Styles::value_type& each : styles_)
        below[AboveOf(each.first)].push_back(&each);
    std::unordered_set<const Styles::value_type*> reached;
    std::vector<Origin> waiting = {Origin()};
    while (!waiting.empty()) {
        const auto found = below.find(waiting.back());
        waiting.pop_back();
        if (found == below.end()) continue;
        for (const Styles::value_type* const each : found->second) {
            const StyleData& style = *each->second.style;
            reached.insert(each);
            Origin next{.inherited = style.inherited.get(),
                        .custom = style.custom.get(),
                        .rootFontSize = style.rootFontSize};
            waiting.push_back(next);
            next.parent = &style;
            waiting.push_back(next);
        }
        below.erase(found);
    }
    EraseIf([&reached](const Styles::value_type& each) { return !reached.contains(&each); });
    lists_.DropUnused();
}

void StyleTable::Update(const DeclarationBlock& block) {
    std::unordered_set<const void*> changed;
    for (const auto& [key, cascaded] : cascades_) {
        if (!cascaded->HasBlock(block)) continue;
        cascaded->Merge();
        changed.insert(cascaded.get());
    }
    constexpr std::size_t kFew = 64;
    EraseIf([&changed](const Styles::value_type& each) {
        return changed.contains(each.first.cascaded);
    });
    if (lists_.Size() > kFew + 2 * styles_.size()) lists_.DropUnused();
    // Most of what is unreachable now is what the new styles will lead to.
    if (styles_.size() <= kFew + 2 * kept_) return;
    DropUnreachable();
    kept_ = styles_.size();
}

void StyleTable::Clear() {
    cascades_.clear();
    styles_.clear();
    kept_ = 0;
    lists_.DropUnused();
    substituted_ = 0;
    merged_ = 0;
}

}  // namespace Dom::CSS::detail
