// SPDX-License-Identifier: MIT
#include "dom/css/computed/Cascade.h"

#include <algorithm>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace Dom::CSS::detail {

bool LosesAgainst(const LayerEntry& before, const LayerEntry& after) {
    if (before.entry->isImportant != after.entry->isImportant) return after.entry->isImportant;
    return !after.entry->isImportant || before.layer->origin <= after.layer->origin;
}

Cascaded::Cascaded(std::vector<StyleLayer> layers) : layers_(std::move(layers)) { Merge(); }

bool Cascaded::HasBlock(const DeclarationBlock& block) const {
    return std::ranges::any_of(layers_,
                               [&block](const StyleLayer& layer) { return layer.block == &block; });
}

void Cascaded::Merge() {
    known_.clear();
    named_.clear();
    std::vector<LayerEntry> winners(KnownProperties().size());
    std::unordered_map<std::string_view, LayerEntry> others;
    for (const StyleLayer& layer : layers_) {
        for (const BlockEntry& entry : layer.block->Entries()) {
            LayerEntry& winner =
                entry.id == BlockEntry::kNamed ? others[entry.name] : winners[entry.id];
            const LayerEntry next{&layer, &entry};
            if (winner.entry == nullptr || LosesAgainst(winner, next)) winner = next;
        }
    }
    std::ranges::copy_if(winners, std::back_inserter(known_),
                         [](const LayerEntry& winner) { return winner.entry != nullptr; });
    for (const auto& [name, winner] : others)
        named_.push_back(winner);
    std::ranges::sort(named_, {}, [](const LayerEntry& each) { return each.entry->name.view(); });
}

std::vector<LayerEntry> Cascaded::All(PropertyId id, std::string_view name) const {
    std::vector<LayerEntry> result;
    for (const StyleLayer& layer : layers_) {
        for (const BlockEntry& entry : layer.block->Entries()) {
            if (entry.id == id && entry.name == name) result.push_back({&layer, &entry});
        }
    }
    std::ranges::reverse(result);
    std::ranges::stable_sort(result, [](const LayerEntry& a, const LayerEntry& b) {
        return LosesAgainst(b, a) && !LosesAgainst(a, b);
    });
    return result;
}

}  // namespace Dom::CSS::detail
