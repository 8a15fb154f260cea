// SPDX-License-Identifier: MIT
#include "dom/css/NameIndex.h"

namespace Dom::CSS::detail {

void NameIndex::Add(std::string_view name) {
    entries_.push_back({name});
    const auto count = static_cast<unsigned>(entries_.size());
    if (count <= kMostWithoutTable) return;
    const bool isNew = chains_.empty();
    for (unsigned place = isNew ? 0 : count - 1; place < count; ++place) {
        if (entries_[place].isThere) Link(place);
    }
}

void NameIndex::Link(unsigned place) {
    const auto [found, isNew] = chains_.try_emplace(entries_[place].name, Chain{place, place});
    if (isNew) return;
    Chain& chain = found->second;
    if (chain.first == kNone) {
        chain.first = place;
    } else {
        entries_[chain.last].next = place;
    }
    chain.last = place;
}

void NameIndex::RemoveFirst(unsigned place) {
    Entry& entry = entries_[place];
    entry.isThere = false;
    if (!chains_.empty()) chains_.find(entry.name)->second.first = entry.next;
}

unsigned NameIndex::Find(std::string_view name) const {
    if (!chains_.empty()) {
        const auto found = chains_.find(name);
        return found == chains_.end() ? kNone : found->second.first;
    }
    for (unsigned place = 0; place < entries_.size(); ++place) {
        if (entries_[place].isThere && entries_[place].name == name) return place;
    }
    return kNone;
}

}  // namespace Dom::CSS::detail
