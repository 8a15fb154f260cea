// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

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
struct XmlName {
    astring qualified;
    astring local;
    astring prefix;
    XmlName* prefixName = nullptr;  ///< the prefix as a name; null without one
    std::uint32_t hash = 0;
    NameMeaning meaning = NameMeaning::Ordinary;

    /// The element that has an attribute of this name, as a serial number: finds duplicates.
    std::uint64_t usedBy = 0;

    /// What the name is bound to as a prefix, good while the generation is the current one.
    const astring* uri = nullptr;
    unsigned long generation = 0;

    bool kept = false;  ///< survives the next Trim()
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

    /// Tells whether there are so many names that it is time to Trim().
    bool IsLarge() const { return count_ >= trimAt_; }

    /// Forgets all names but those that are marked as kept, and their prefixes.
    void Trim();

    /// Forgets all names.
    void Clear();

private:
    struct Slot {
        std::uint32_t hash = 0;
        XmlName* name = nullptr;  // owned by names_
    };

    XmlName* Add(std::string_view text, int colon, std::uint32_t hash);
    void Place(XmlName* name);
    void Rebuild(std::size_t slots);

    std::vector<Slot> slots_;  // open addressing; a power of two, at most half full
    std::vector<std::unique_ptr<XmlName>> names_;
    std::size_t count_ = 0;
    std::size_t trimAt_;
};

}  // namespace Xml::detail
