// SPDX-License-Identifier: MIT
#include "dom/AttributeTable.h"

#include <espalier/dom/Attr.h>
#include <espalier/dom/Element.h>

#include "dom/NodeAccess.h"
#include "xml/SeededHash.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>

namespace Dom::detail {

namespace {

// Stands between local name and URI in the key of an attribute that is filed under both. No name
// that was read from a document has this character.
constexpr char kKeySeparator = '\x01';

// Tells whether `key` is the key of that local name and URI.
bool IsKeyOf(std::string_view key, std::string_view uri, std::string_view localName) {
    return key.size() == localName.size() + 1 + uri.size() && key.starts_with(localName) &&
           key[localName.size()] == kKeySeparator && key.ends_with(uri);
}

std::size_t HashText(std::string_view text) {
    return Xml::detail::SeededHash(text.data(), static_cast<unsigned>(text.size()));
}

// A key has the same hash as a whole and in two parts.
std::size_t HashKey(std::string_view key) {
    const std::size_t separator = key.find(kKeySeparator);
    return separator == std::string_view::npos
               ? HashText(key)
               : HashText(key.substr(0, separator)) + 31 * HashText(key.substr(separator + 1));
}

std::size_t HashKey(std::string_view uri, std::string_view localName) {
    const bool isUsual = localName.find(kKeySeparator) == std::string_view::npos;
    return isUsual ? HashText(localName) + 31 * HashText(uri)
                   : HashKey(astring(localName) + kKeySeparator + uri);
}

}  // namespace

const NodeName& AttributeTable::Entry::Name() const {
    return Node() != nullptr ? NodeAccess::Name(*Node()) : Key();
}

const astring& AttributeTable::Entry::Value() const {
    return Node() != nullptr ? Node()->Value() : *value_;
}

const astring& AttributeTable::Entry::FieldValue() const {
    static const astring empty;
    if (Node() != nullptr) return Node()->NodeValue();
    return IsPlain() ? empty : *value_;
}

void AttributeTable::Entry::ShowText() {
    if (Node() != nullptr) {
        NodeAccess::ShowText(*Node());
    } else if (IsChildless()) {
        key_ &= ~kState;
    }
}

bool AttributeTable::Entry::IsFiledUnder(std::string_view name) const {
    const NodeName& key = Key();
    return IsByNamespace() ? IsKeyOf(name, *key.uri, key.LocalName()) : key.qualified == name;
}

bool AttributeTable::Entry::IsFiledUnder(std::string_view uri, std::string_view localName) const {
    const NodeName& key = Key();
    return IsByNamespace() ? key.LocalName() == localName && *key.uri == uri
                           : IsKeyOf(key.qualified, uri, localName);
}

AttributeTable* AttributeTable::Make(NodePool& pool, std::size_t capacity) {
    if (capacity > std::numeric_limits<std::uint32_t>::max()) {
        throw std::length_error("Too many attributes");
    }
    return new (pool.Allocate(SizeFor(capacity))) AttributeTable(capacity);
}

void AttributeTable::Free(NodePool& pool) noexcept {
    if (extras_ != nullptr) {
        DropIndex();
        if (extras_->map != nullptr) pool.Free(extras_->map, sizeof(NamedNodeMap));
        pool.Free(extras_, sizeof(Extras));
    }
    pool.Free(this, SizeFor(capacity_));
}

AttributeTable::Extras& AttributeTable::GetExtras(NodePool& pool) const {
    if (extras_ == nullptr) extras_ = new (pool.Allocate(sizeof(Extras))) Extras;
    return *extras_;
}

NamedNodeMap& AttributeTable::Map(Element& owner) {
    NodePool& pool = NodeAccess::Data(owner).pool;
    Extras& extras = GetExtras(pool);
    if (extras.map == nullptr) {
        extras.map = new (pool.Allocate(sizeof(NamedNodeMap))) NamedNodeMap(&owner);
    }
    return *extras.map;
}

// Goes through the entries, or those that the index has for a hash.
template <typename Test>
std::size_t AttributeTable::FindWhere(std::size_t hash, const Test& test) const {
    const std::size_t mask = extras_->indexSize - 1;
    for (std::size_t at = hash & mask; extras_->index[at] != 0; at = (at + 1) & mask) {
        const std::size_t position = extras_->index[at] - 1;
        if (test(At(position))) return position;
    }
    return kNone;
}

std::size_t AttributeTable::Find(std::string_view name) const {
    const auto test = [name](const Entry& entry) { return entry.IsFiledUnder(name); };
    if (count_ > kMostSearched) {
        if (!HasIndex()) BuildIndex();
        return FindWhere(HashKey(name), test);
    }
    const auto found = std::ranges::find_if(All(), test);
    return found == All().end() ? kNone : static_cast<std::size_t>(found - All().begin());
}

std::size_t AttributeTable::Find(std::string_view uri, std::string_view localName) const {
    if (uri.empty()) return Find(localName);
    const auto test = [uri, localName](const Entry& entry) {
        return entry.IsFiledUnder(uri, localName);
    };
    if (count_ > kMostSearched) {
        if (!HasIndex()) BuildIndex();
        return FindWhere(HashKey(uri, localName), test);
    }
    const auto found = std::ranges::find_if(All(), test);
    return found == All().end() ? kNone : static_cast<std::size_t>(found - All().begin());
}

std::size_t AttributeTable::Find(const Attr& node) const {
    const auto found =
        std::ranges::find_if(All(), [&](const Entry& entry) { return entry.Node() == &node; });
    return found == All().end() ? kNone : static_cast<std::size_t>(found - All().begin());
}

std::size_t AttributeTable::FindKeyOf(const Entry& entry) const {
    const NodeName& key = entry.Key();
    return entry.IsByNamespace() ? Find(*key.uri, key.LocalName()) : Find(key.qualified);
}

// Returns where in the index the search for an attribute starts.
std::size_t AttributeTable::HomeOf(std::uint32_t position) const {
    const Entry& entry = At(position);
    const NodeName& key = entry.Key();
    const std::size_t hash =
        entry.IsByNamespace() ? HashKey(*key.uri, key.LocalName()) : HashKey(key.qualified);
    return hash & (extras_->indexSize - 1);
}

void AttributeTable::PutIntoIndex(std::uint32_t position) const {
    const std::size_t mask = extras_->indexSize - 1;
    std::size_t at = HomeOf(position);
    while (extras_->index[at] != 0)
        at = (at + 1) & mask;
    extras_->index[at] = position + 1;
}

void AttributeTable::PutLastIntoIndex() const noexcept {
    if (2 * std::size_t{count_} > extras_->indexSize) return DropIndex();  // a search makes another
    try {
        PutIntoIndex(count_ - 1);
    } catch (const std::bad_alloc&) {
        DropIndex();
    }
}

// Takes an attribute that is still there out of the index. Those that stand behind it because
// their place was taken move up; those with a larger position get one less.
void AttributeTable::TakeFromIndex(std::uint32_t position) const {
    const std::size_t mask = extras_->indexSize - 1;
    std::uint32_t* const index = extras_->index;
    std::size_t hole = HomeOf(position);
    while (index[hole] != position + 1)
        hole = (hole + 1) & mask;
    for (std::size_t at = (hole + 1) & mask; index[at] != 0; at = (at + 1) & mask) {
        const std::size_t home = HomeOf(index[at] - 1);
        if (((at - home) & mask) < ((at - hole) & mask)) continue;  // it would be before its home
        index[hole] = index[at];
        hole = at;
    }
    index[hole] = 0;
    if (position + 1 == count_) return;
    for (std::size_t at = 0; at <= mask; ++at)
        index[at] -= index[at] > position + 1 ? 1U : 0U;
}

void AttributeTable::BuildIndex() const {
    NodePool& pool = Pool();
    Extras& extras = GetExtras(pool);
    const std::size_t size = std::bit_ceil(4 * std::size_t{count_});
    void* const memory = pool.Allocate(size * sizeof(std::uint32_t));
    extras.index =
        static_cast<std::uint32_t*>(std::memset(memory, 0, size * sizeof(std::uint32_t)));
    extras.indexSize = static_cast<std::uint32_t>(size);
    try {
        for (std::uint32_t i = 0; i < count_; ++i)
            PutIntoIndex(i);
    } catch (const std::bad_alloc&) {
        DropIndex();
        throw;
    }
}

void AttributeTable::DropIndex() const noexcept {
    if (!HasIndex()) return;
    Pool().Free(extras_->index, extras_->indexSize * sizeof(std::uint32_t));
    extras_->index = nullptr;
}

AttributeTable* AttributeTable::Add(const Entry& entry) {
    AttributeTable* table = this;
    if (count_ == capacity_) {
        NodePool& pool = entry.Key().data->pool;
        table = Make(pool, std::max(kFewest, 2 * std::size_t{capacity_}));
        std::memcpy(static_cast<void*>(table->Entries()), Entries(), count_ * sizeof(Entry));
        table->count_ = count_;
        table->extras_ = extras_;
        pool.Free(this, SizeFor(capacity_));
    }
    table->AddLoaded(entry);
    return table;
}

void AttributeTable::RemoveAt(std::size_t index) noexcept {
    try {
        if (HasIndex()) TakeFromIndex(static_cast<std::uint32_t>(index));
    } catch (const std::bad_alloc&) {
        DropIndex();  // the next search makes another
    }
    std::copy(Entries() + index + 1, Entries() + count_, Entries() + index);
    --count_;
}

Attr& AttributeTable::NodeOf(Element& owner, Entry& entry) {
    if (entry.Node() == nullptr) {
        const bool showsText = !entry.IsChildless();
        entry.SetNode(
            NodeAccess::MakeAttribute(owner, &entry.Key(), entry.OwnValue(), entry.IsPlain()));
        NodeAccess::Set(*entry.Node(), NodeAccess::kImpliedText, showsText);
    }
    return *entry.Node();
}

}  // namespace Dom::detail

// What the views of attributes show.

namespace Dom {

const astring& AttributeView::Name() const { return table_->At(index_).Name().qualified; }

std::string_view AttributeView::LocalName() const { return table_->At(index_).Name().LocalName(); }

std::string_view AttributeView::Prefix() const { return table_->At(index_).Name().Prefix(); }

const astring& AttributeView::NamespaceURI() const { return *table_->At(index_).Name().uri; }

std::string_view AttributeView::Value() const { return table_->At(index_).Value(); }

std::size_t AttributeRange::size() const { return table_ == nullptr ? 0 : table_->Count(); }

}  // namespace Dom
