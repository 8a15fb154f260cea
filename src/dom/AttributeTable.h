// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>
#include <espalier/dom/NamedNodeMap.h>

#include "dom/DocumentData.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace Dom::detail {

/// The attributes of an element: a header with the attributes behind it, in the document's pool.
///
/// An attribute is a key and a value until somebody asks for its node. Attributes are found by
/// going through them; a table of many gets an index when it is first searched.
class AttributeTable {
public:
    /// What an attribute is filed under, and what it is.
    class Entry {
    public:
        enum Kind : std::uintptr_t {
            ByName = 0,       // filed under its name
            ByNamespace = 1,  // filed under local name and namespace
            Plain = 2,        // filed under its name; the field of the node is to be empty
            Childless = 6,    // filed under its name; the node is to have no text
            ChildlessByNamespace = Childless | ByNamespace
        };

        Entry(const NodeName* key, Kind kind, astring* value)
            : key_(reinterpret_cast<std::uintptr_t>(key) | kind), value_(value) {}
        Entry(const NodeName* key, Kind kind, Attr* node)
            : key_(reinterpret_cast<std::uintptr_t>(key) | (kind & ByNamespace) | kIsNode),
              node_(node) {}

        const NodeName& Key() const { return *reinterpret_cast<const NodeName*>(key_ & ~kMask); }
        bool IsByNamespace() const { return (key_ & ByNamespace) != 0; }
        bool IsPlain() const { return (key_ & kState) == Plain; }
        bool IsChildless() const { return (key_ & kState) == Childless; }
        /// Returns the node, or null while nobody has asked for it.
        Attr* Node() const { return (key_ & kState) == kIsNode ? node_ : nullptr; }
        void SetNode(Attr* node) {
            key_ = (key_ & ~kState) | kIsNode;
            node_ = node;
        }
        /// Lets a node that has no child show its value as a text.
        void ShowText();
        /// Returns the value of an attribute without a node.
        astring* OwnValue() const { return value_; }
        /// Returns the name of the attribute.
        const NodeName& Name() const;
        const astring& Value() const;
        /// Returns what Attr::NodeValue() is or would be.
        const astring& FieldValue() const;

        bool IsFiledUnder(std::string_view name) const;
        bool IsFiledUnder(std::string_view uri, std::string_view localName) const;

    private:
        static constexpr std::uintptr_t kIsNode = 4;
        static constexpr std::uintptr_t kState = 6;
        static constexpr std::uintptr_t kMask = 7;

        std::uintptr_t key_;
        union {
            astring* value_;
            Attr* node_;
        };
    };

    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    /// Makes an empty table with room for `capacity` attributes.
    static AttributeTable* Make(NodePool& pool, std::size_t capacity);
    /// Frees the table, not the attributes.
    void Free(NodePool& pool) noexcept;

    std::size_t Count() const { return count_; }
    Entry& At(std::size_t index) { return Entries()[index]; }
    const Entry& At(std::size_t index) const { return Entries()[index]; }
    std::span<Entry> All() { return {Entries(), count_}; }
    std::span<const Entry> All() const { return {Entries(), count_}; }

    /// Adds an entry, for which there is room.
    void AddLoaded(const Entry& entry) {
        new (Entries() + count_++) Entry(entry);
        if (HasIndex()) PutLastIntoIndex();
    }

    std::size_t Find(std::string_view name) const;
    std::size_t Find(std::string_view uri, std::string_view localName) const;
    std::size_t Find(const Attr& node) const;
    /// Finds what is filed under the key of an attribute of any element.
    std::size_t FindKeyOf(const Entry& entry) const;

    /// Adds an entry, to a larger table when this one is full.
    /// \return the table, in place of this one
    AttributeTable* Add(const Entry& entry);
    void RemoveAt(std::size_t index) noexcept;
    /// Puts another node at an index; the key stays equal.
    void Replace(std::size_t index, const Entry& entry) { At(index) = entry; }

    /// Returns the node of an attribute, made when it is not there yet.
    static Attr& NodeOf(Element& owner, Entry& entry);

    NamedNodeMap& Map(Element& owner);

private:
    static constexpr std::size_t kFewest = 2;
    static constexpr std::size_t kMostSearched = 8;  // without an index

    /// What only some tables need; all of it is in the pool.
    struct Extras {
        NamedNodeMap* map = nullptr;
        std::uint32_t* index = nullptr;  // positions + 1, 0 for none; null when there is none
        std::uint32_t indexSize = 0;     // a power of two
    };

    explicit AttributeTable(std::size_t capacity)
        : capacity_(static_cast<std::uint32_t>(capacity)) {}

    Entry* Entries() { return reinterpret_cast<Entry*>(this + 1); }
    const Entry* Entries() const { return reinterpret_cast<const Entry*>(this + 1); }
    NodePool& Pool() const { return At(0).Key().data->pool; }
    Extras& GetExtras(NodePool& pool) const;
    bool HasIndex() const { return extras_ != nullptr && extras_->index != nullptr; }
    void BuildIndex() const;
    std::size_t HomeOf(std::uint32_t position) const;
    void PutIntoIndex(std::uint32_t position) const;
    void PutLastIntoIndex() const noexcept;
    void TakeFromIndex(std::uint32_t position) const;
    void DropIndex() const noexcept;
    template <typename Test>
    std::size_t FindWhere(std::size_t hash, const Test& test) const;
    static std::size_t SizeFor(std::size_t capacity) {
        return sizeof(AttributeTable) + capacity * sizeof(Entry);
    }

    mutable Extras* extras_ = nullptr;
    std::uint32_t count_ = 0;
    std::uint32_t capacity_;
};

}  // namespace Dom::detail
