// SPDX-License-Identifier: MIT
#include "xml/EntityTable.h"

#include "xml/HashIndex.h"  // AreEqual()
#include "xml/SeededHash.h"

#include <algorithm>  // std::max
#include <cstring>
#include <limits>
#include <utility>  // std::exchange
#include <vector>

namespace Xml::detail {

namespace {

constexpr std::size_t kSlots = 64;  // at first

}  // namespace

int PredefinedCharacter(std::string_view name) {
    if (name == "amp") return '&';
    if (name == "lt") return '<';
    if (name == "gt") return '>';
    if (name == "quot") return '"';
    if (name == "apos") return '\'';
    return 0;
}

EntityTable::EntityTable() : slots_(kSlots) {}

// Names of different kinds have different hashes, unless they collide.
std::uint32_t EntityTable::HashOf(EntityKind kind, std::string_view name) {
    return SeededHash(name.data(), static_cast<unsigned>(name.size())) +
           static_cast<unsigned>(kind);
}

// Returns the place of a record among the slots, or the free one where it would go.
std::size_t EntityTable::PlaceOf(std::uint32_t hash, EntityKind kind, std::string_view name) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t place = hash & mask;
    for (; slots_[place].record != nullptr; place = (place + 1) & mask) {
        if (slots_[place].hash != hash) continue;
        const EntityRecord& record = *slots_[place].record;
        if (record.kind == kind && AreEqual(record.name, name)) break;
    }
    return place;
}

void EntityTable::Double() {
    std::vector<Slot> slots(slots_.size() * 2);
    const std::size_t mask = slots.size() - 1;
    for (const Slot& slot : slots_) {
        if (slot.record == nullptr) continue;
        std::size_t place = slot.hash & mask;
        while (slots[place].record != nullptr)
            place = (place + 1) & mask;
        slots[place] = slot;
    }
    slots_.swap(slots);
}

EntityRecord* EntityTable::Find(EntityKind kind, std::string_view name) const {
    return slots_[PlaceOf(HashOf(kind, name), kind, name)].record;
}

EntityRecord* EntityTable::Declare(EntityKind kind, std::string_view name) {
    if ((records_.size() + 1) * 2 > slots_.size()) Double();
    const std::uint32_t hash = HashOf(kind, name);
    Slot& slot = slots_[PlaceOf(hash, kind, name)];
    if (slot.record != nullptr) return nullptr;
    EntityRecord& record = records_.emplace_back();
    record.kind = kind;
    record.name = name;
    slot = {hash, &record};
    if (kind == EntityKind::General && std::exchange(missed_, false)) ++generation_;
    return &record;
}

// Measures.

// Returns the next declared entity that the text of `record` refers to, and advances behind the
// reference; null when there is no more.
EntityRecord* EntityTable::NextReference(EntityRecord& record, std::size_t& position) {
    const std::string_view text = record.text;
    while (position < text.size()) {
        const std::size_t start = text.find('&', position);
        if (start == std::string_view::npos) break;
        position = std::min(text.find('&', start + 1), text.size());
        const std::string_view reference = text.substr(start + 1, position - start - 1);
        const std::size_t length = reference.find(';');
        if (length == std::string_view::npos) continue;  // which shows when it is expanded
        const std::string_view name = reference.substr(0, length);
        if (PredefinedCharacter(name) != 0) continue;  // whatever is declared for it
        EntityRecord* const found = FindGeneral(name);
        if (standard_ && (found == nullptr || found->isExternal)) record.isMarkup = true;
        if (found != nullptr) return found;
        missed_ = true;
    }
    return nullptr;
}

void EntityTable::AddMeasures(EntityRecord& record, const EntityRecord& inner) {
    constexpr long long kMost = std::numeric_limits<long long>::max() / 4;
    record.leadsBack = record.leadsBack || inner.leadsBack;
    record.isMarkup = record.isMarkup || inner.isMarkup;
    record.nesting = std::max(record.nesting, inner.nesting + 1);
    record.cost = std::min(kMost, record.cost + inner.cost);
}

void EntityTable::NotePlain(const EntityRecord& record) {
    const std::size_t length = record.name.length();
    if (length > PackedName::kMostBytes || record.name.find(':') != astring::npos) return;
    if (record.isMarkup || record.text.empty() || record.text.find('&') != astring::npos) return;
    if (record.text.find("]]>") != astring::npos) return;  // refused by the standard
    unsigned char bytes[PackedName::kMostBytes] = {};
    std::memcpy(bytes, record.name.data(), length);
    const PackedName name = LoadName(bytes);
    plain_[PlainSlotOf(name)] = {name, &record};
}

// Goes through the entities depth first, on a stack of its own: who writes the document says how
// deep they are nested.
const EntityRecord& EntityTable::Measure(EntityRecord& record) {
    struct Frame {
        EntityRecord* record;
        std::size_t position;
    };
    const auto begin = [this](EntityRecord& entity) {
        entity.measured = EntityRecord::Measured::Begun;
        entity.leadsBack = false;
        entity.nesting = 1;
        entity.isMarkup = entity.text.find('<') != astring::npos;
        entity.cost = static_cast<long long>(entity.text.length());
        measuredBytes_ += entity.cost;
        return Frame{&entity, 0};
    };
    if (IsMeasured(record)) return record;
    std::vector<Frame> frames{begin(record)};
    // Adds what a reference in the entity on top leads to; behind one that leads back is nothing.
    const auto add = [&frames](const EntityRecord& inner) {
        Frame& frame = frames.back();
        AddMeasures(*frame.record, inner);
        if (frame.record->leadsBack) frame.position = frame.record->text.length();
    };
    while (!frames.empty()) {
        EntityRecord& current = *frames.back().record;
        EntityRecord* const inner = NextReference(current, frames.back().position);
        if (inner == nullptr) {
            current.measured = EntityRecord::Measured::Yes;
            current.generation = generation_;
            NotePlain(current);
            frames.pop_back();
            if (!frames.empty()) add(current);
        } else if (inner->measured == EntityRecord::Measured::Begun) {
            current.leadsBack = true;
            frames.back().position = current.text.length();
        } else if (IsMeasured(*inner)) {
            add(*inner);
        } else {
            frames.push_back(begin(*inner));
        }
    }
    return record;
}

}  // namespace Xml::detail
