// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>
#include <espalier/xml/NodeView.h>

#include "xml/FoldedProduct.h"
#include "xml/RunScan.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

namespace Xml::detail {

/// What a name means as an attribute.
enum class NameMeaning : unsigned char {
    Ordinary,
    DefaultNamespace,  ///< xmlns
    Namespace,         ///< xmlns:...
    Space,             ///< xml:space
    Language           ///< xml:lang
};

/// A name of elements, attributes or prefixes, split once and then compared by identity.
struct XmlName : NameParts {
    PackedName packed;              ///< its first 16 bytes, padded with zeros
    PackedName packedEnd;           ///< its last 16 bytes, when it has more than that
    XmlName* prefixName = nullptr;  ///< the prefix as a name; null without one
    NameMeaning meaning = NameMeaning::Ordinary;
    bool isUnusual = false;  ///< as an attribute it has a meaning or a prefix
    bool kept = false;       ///< survives the next Trim()

    /// The element that has an attribute of this name, as a serial number: finds duplicates.
    std::uint64_t usedBy = 0;

    /// What the name is bound to as a prefix, good while the generation is the current one.
    const astring* uri = nullptr;
    std::uint64_t generation = ~std::uint64_t{0};

    /// What somebody who keeps names of his own calls the name of an element, and of an attribute:
    /// good for him whose serial number it is, and as long as the generation is the current one.
    struct Counterpart {
        const void* name = nullptr;
        std::uint64_t keeper = 0;
        std::uint64_t generation = 0;
    };
    Counterpart elementCounterpart;
    Counterpart attributeCounterpart;
};

/// The names of a document, each held once.
///
/// Names stay where they are until Trim() or Clear(). The table grows with the number of different
/// names; who puts names into it trims it now and then, so that a document of nothing but new
/// names cannot fill the memory.
class NameTable {
public:
    NameTable();
    ~NameTable();
    NameTable(const NameTable&) = delete;
    NameTable& operator=(const NameTable&) = delete;

    /// Returns the name `text`, whose prefix ends at the byte `colon` (none when below 1).
    XmlName* Intern(std::string_view text, int colon);

    /// Returns a name of up to 16 bytes, or null when it is not there.
    XmlName* FindShort(const PackedName& packed) const {
        const ShortSlot* slot = &short_[ShortHash(packed) & (shortSize_ - 1)];
        for (; slot->name != nullptr; slot = NextShort(slot)) {
            if (slot->packed == packed) return slot->name;
        }
        return nullptr;
    }

    /// Returns the name of `length` bytes (16 or more) at `p`; null when it is not there, and for
    /// more than 31 bytes.
    XmlName* FindLonger(const unsigned char* p, int length) const {
        if (length == PackedName::kMostBytes) return FindShort(LoadName(p));
        if (length >= 2 * PackedName::kMostBytes) return nullptr;
        const PackedName first = LoadName(p);
        const PackedName last = LoadName(p + length - PackedName::kMostBytes);
        const auto hash = static_cast<unsigned>(MediumHash(first, last));
        const std::size_t mask = longSize_ - 1;
        for (std::size_t i = hash & mask; long_[i].name != nullptr; i = (i + 1) & mask) {
            const XmlName& name = *long_[i].name;
            if (long_[i].hash == hash && name.packed == first && name.packedEnd == last &&
                name.qualified.length() == static_cast<std::size_t>(length)) {
                return long_[i].name;
            }
        }
        return nullptr;
    }

    /// Tells whether the names take so much memory that it is time to Trim().
    bool IsLarge() const { return weight_ >= trimAt_; }

    /// Forgets all names but those that are marked as kept, and their prefixes.
    void Trim();

    /// Forgets all names.
    void Clear();

private:
    // Both tables use open addressing, have a power of two slots and are half full at most. Short
    // names are compared as two words; long ones by hash and text.
    struct ShortSlot {
        PackedName packed;
        XmlName* name = nullptr;  // owned by names_
    };
    struct LongSlot {
        unsigned hash = 0;
        XmlName* name = nullptr;  // owned by names_
    };

    // There is a secret in each factor, so that nobody can choose names that collide.
    std::size_t ShortHash(const PackedName& packed) const {
        return FoldedProduct(packed.low ^ seed_.low, packed.high ^ seed_.high);
    }
    std::size_t MediumHash(const PackedName& first, const PackedName& last) const {
        return ShortHash(first) * 31 + ShortHash(last);
    }
    const ShortSlot* NextShort(const ShortSlot* slot) const {
        ++slot;
        return slot == short_.data() + shortSize_ ? short_.data() : slot;
    }

    unsigned LongHash(std::string_view text) const;
    XmlName* Add(std::string_view text, int colon);
    void Place(XmlName* name);
    void PlaceShort(XmlName* name);
    void PlaceLong(XmlName* name);
    void Rebuild();

    PackedName seed_;
    std::vector<ShortSlot> short_;
    std::vector<LongSlot> long_;
    std::size_t shortSize_;
    std::size_t longSize_;
    std::size_t shortCount_ = 0;
    std::size_t longCount_ = 0;
    std::vector<std::unique_ptr<XmlName>> names_;
    std::size_t weight_ = 0;  // what the names take, in short names
    std::size_t trimAt_;
};

}  // namespace Xml::detail
