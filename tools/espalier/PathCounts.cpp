// SPDX-License-Identifier: MIT
// Documents are regular: most elements come after the sibling, and most attributes at the index,
// where the same name was met before. There it is looked for first, in the trees only then.
#include "PathCounts.h"

namespace Tool {

void PathCounts::EnterElement(std::string_view name) {
    const int parent = open_.empty() ? -1 : open_.back();
    const int entry = FindOrAdd(parent, name);
    ++entries_[static_cast<std::size_t>(entry)].count;
    open_.push_back(entry);
}

void PathCounts::LeaveElement() {
    if (!open_.empty()) open_.pop_back();
}

void PathCounts::AddText(std::size_t bytes) {
    if (open_.empty()) return;
    entries_[static_cast<std::size_t>(open_.back())].textBytes += static_cast<long>(bytes);
}

void PathCounts::AddAttribute(std::string_view name, std::size_t index) {
    const int owner = open_.back();
    std::vector<Attribute>& attributes = entries_[static_cast<std::size_t>(owner)].attributes;
    if (index < attributes.size() && attributes[index].name == name) {
        ++attributes[index].count;
        return;
    }
    auto found = attributes_.find({owner, name});
    if (found == attributes_.end()) {
        const bool isFull = attributes_.size() >= kMostAttributes;
        if (isFull) name = kOthers;
        if (isFull) found = attributes_.find({owner, name});
        if (found == attributes_.end()) {
            name = Keep(name);
            found = attributes_.emplace(Key{owner, name}, attributes.size()).first;
            attributes.push_back({name, 0});
        }
    }
    ++attributes[found->second].count;
}

// Returns the entry that a child of `parent` with that name is counted in.
int PathCounts::FindOrAdd(int parent, std::string_view name) {
    if (parent >= 0) {
        Entry& entry = entries_[static_cast<std::size_t>(parent)];
        if (entry.isOthers) return parent;
        const std::size_t end = entry.children.size();
        for (std::size_t i = entry.lastChild; i < end && i < entry.lastChild + 2; ++i) {
            const int child = entry.children[i];
            if (entries_[static_cast<std::size_t>(child)].name != name) continue;
            entry.lastChild = i;
            return child;
        }
    }
    const int found = Find(parent, name);
    if (found >= 0) {
        const std::size_t position = entries_[static_cast<std::size_t>(found)].position;
        if (parent >= 0) entries_[static_cast<std::size_t>(parent)].lastChild = position;
        return found;
    }
    const int level = parent < 0 ? 0 : entries_[static_cast<std::size_t>(parent)].level + 1;
    if (paths_.size() < kMostPaths && level < kMostLevels) return Add(parent, name);
    const int others = Find(parent, kOthers);
    return others >= 0 ? others : Add(parent, kOthers);
}

int PathCounts::Find(int parent, std::string_view name) const {
    const auto found = paths_.find({parent, name});
    return found == paths_.end() ? -1 : found->second;
}

int PathCounts::Add(int parent, std::string_view name) {
    const auto index = static_cast<int>(entries_.size());
    Entry entry;
    entry.name = Keep(name);
    entry.parent = parent;
    entry.isOthers = name == kOthers;
    paths_.emplace(Key{parent, entry.name}, index);
    if (parent < 0) {
        roots_.push_back(index);
    } else {
        Entry& above = entries_[static_cast<std::size_t>(parent)];
        entry.level = above.level + 1;
        entry.position = above.lastChild = above.children.size();
        above.children.push_back(index);
    }
    entries_.push_back(std::move(entry));
    return index;
}

std::string_view PathCounts::Keep(std::string_view name) {
    const auto found = names_.find(name);
    return found != names_.end() ? *found : *names_.emplace(name).first;
}

}  // namespace Tool
