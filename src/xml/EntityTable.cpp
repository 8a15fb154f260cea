// SPDX-License-Identifier: MIT
#include "xml/EntityTable.h"

#include <espalier/xml/XmlHash.h>

#include "xml/SeededHash.h"

#include <algorithm>  // std::max
#include <cstring>
#include <limits>
#include <utility>  // std::exchange
#include <vector>

namespace Xml::detail {

namespace {

constexpr unsigned kMapSize = 32;  // buckets at first

// No name starts with these, so names of different kinds have different keys.
astring KeyOf(EntityKind kind, std::string_view name) {
    astring key(kind == EntityKind::Parameter ? "%" : kind == EntityKind::Notation ? "!" : "");
    key += name;
    return key;
}

void* FindIn(const Xml::HashMap& map, std::string_view key) {
    return map.Find(key.data(), static_cast<unsigned>(key.size()));
}

}  // namespace

int PredefinedCharacter(std::string_view name) {
    if (name == "amp") return '&';
    if (name == "lt") return '<';
    if (name == "gt") return '>';
    if (name == "quot") return '"';
    if (name == "apos") return '\'';
    return 0;
}

EntityTable::EntityTable() : byKey_(kMapSize, true) {
    byKey_.SetKey(SeededHash, XmlKeyCompareBinary);
}

EntityRecord* EntityTable::FindGeneral(std::string_view name) const {
    if (name.empty()) return nullptr;
    return static_cast<EntityRecord*>(FindIn(byKey_, name));
}

EntityRecord* EntityTable::Find(EntityKind kind, std::string_view name) const {
    return static_cast<EntityRecord*>(FindIn(byKey_, KeyOf(kind, name)));
}

EntityRecord* EntityTable::Declare(EntityKind kind, std::string_view name) {
    const astring key = KeyOf(kind, name);
    if (FindIn(byKey_, key) != nullptr) return nullptr;
    EntityRecord& record = records_.emplace_back();
    record.kind = kind;
    record.name = name;
    byKey_.Insert(key.data(), static_cast<unsigned>(key.length()), &record);
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
    plain_[SlotOf(name)] = {name, &record};
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
