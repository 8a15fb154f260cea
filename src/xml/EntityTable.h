// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

#include "xml/PlaceCounter.h"
#include "xml/RunScan.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string_view>
#include <vector>

namespace Xml::detail {

/// Returns the character of a predefined entity (XML 1.0 section 4.6); 0 for any other name.
int PredefinedCharacter(std::string_view name);

/// What a record of the table declares. Their names live side by side: a general entity, a
/// parameter entity and a notation may all have the same name.
enum class EntityKind : unsigned char { General, Parameter, Notation };

/// Where what is not in the document can be found, for an entity or a notation.
struct EntityIds {
    astring publicId;
    astring systemId;
    astring notation;  ///< of an unparsed entity
};

/// An entity or a notation that the document type declares. There can be very many, so they are
/// small.
struct EntityRecord {
    astring name;
    astring text;                    ///< the replacement text; empty for an external entity
    std::unique_ptr<EntityIds> ids;  ///< null for an entity with a text
    Place place{0, 0};               ///< where the declaration starts
    EntityKind kind = EntityKind::General;
    bool isExternal = false;       ///< it has a system identifier, and no text
    bool isInParameter = false;    ///< it is declared in the text of a parameter entity
    bool inUse = false;            ///< it is being expanded, so a reference to it would never end
    bool isProvenValue = false;    ///< its text is known to be well-formed in a value
    bool isProvenContent = false;  ///< its text is known to be well-formed content ...
    std::uint64_t provenIn = 0;    ///< ... with the namespaces of this generation

    // What Measure() finds out.
    enum class Measured : unsigned char { No, Begun, Yes };
    Measured measured = Measured::No;
    bool leadsBack = false;   ///< its text leads to a reference to an entity that is being expanded
    bool isMarkup = false;    ///< its text, or that of an entity it refers to, has a "<"
    unsigned generation = 0;  ///< of the table, when it was measured
    int nesting = 1;          ///< how many entities deep its text goes, itself included
    long long cost = 0;       ///< bytes of its text and of all that is expanded in it

    bool IsUnparsed() const { return ids != nullptr && !ids->notation.empty(); }
};

/// The entities and notations of a document. The first declaration of a name is the one that
/// counts.
///
/// What a reference leads to is found out once for each entity, without expanding anything: the
/// costs of entities add up by themselves. So a bomb is known for what it is when it is met.
class EntityTable {
public:
    EntityTable();

    /// Measures by the standard from now on: an entity that is external or not declared is a node
    /// by itself, so that the text of one that refers to it counts as markup.
    void SetStandard() { standard_ = true; }

    /// Adds a record.
    /// \return null when there is one of that kind and name already
    EntityRecord* Declare(EntityKind kind, std::string_view name);

    /// Returns a record, or null.
    EntityRecord* Find(EntityKind kind, std::string_view name) const;

    /// Returns a general entity, or null.
    EntityRecord* FindGeneral(std::string_view name) const {
        return Find(EntityKind::General, name);
    }

    /// Returns a general entity with a name of up to 16 bytes, and without a colon, whose text is
    /// one that means itself: not empty, no markup, no references. Only entities that were measured
    /// are found, and not all of these: null says nothing.
    const EntityRecord* FindPlain(const PackedName& name) const {
        const PlainSlot& slot = plain_[PlainSlotOf(name)];
        return slot.name == name ? slot.record : nullptr;
    }

    /// Returns all records, in the order of their declarations.
    const std::deque<EntityRecord>& Records() const { return records_; }

    /// Returns the record with what it leads to: up to the first reference that leads back, if
    /// there is one, because nothing is expanded behind that. Entities that are not declared count
    /// for nothing. When they are declared later, what was measured before is measured anew.
    const EntityRecord& Measure(EntityRecord& record);

    /// Returns how many bytes of texts have been measured, those measured anew each time.
    long long MeasuredBytes() const { return measuredBytes_; }

private:
    // Open addressing; a power of two of slots, half of them taken at most. The hashes stand side
    // by side, so a search touches no record but the one that is wanted.
    struct Slot {
        std::uint32_t hash = 0;
        EntityRecord* record = nullptr;  // null when the slot is free
    };
    static std::uint32_t HashOf(EntityKind kind, std::string_view name);
    std::size_t PlaceOf(std::uint32_t hash, EntityKind kind, std::string_view name) const;
    void Double();

    EntityRecord* NextReference(EntityRecord& record, std::size_t& position);
    bool IsMeasured(const EntityRecord& record) const {
        return record.measured == EntityRecord::Measured::Yes && record.generation == generation_;
    }
    static void AddMeasures(EntityRecord& record, const EntityRecord& inner);

    // The plain entities that were measured last, each in the one slot that its name has.
    struct PlainSlot {
        PackedName name;
        const EntityRecord* record = nullptr;
    };
    static constexpr std::size_t kPlainSlots = 256;

    static std::size_t PlainSlotOf(const PackedName& name) {
        const std::uint64_t mixed = (name.low ^ name.high << 1) * 0x9E3779B97F4A7C15U;
        return mixed >> 56;  // of 256
    }
    void NotePlain(const EntityRecord& record);

    bool standard_ = false;
    long long measuredBytes_ = 0;

    // Measures hold as long as the entities are the same that were looked for.
    bool missed_ = false;      // one was not there
    unsigned generation_ = 0;  // counts the declarations since then
    std::deque<EntityRecord> records_;
    std::array<PlainSlot, kPlainSlots> plain_;
    std::vector<Slot> slots_;
};

}  // namespace Xml::detail
