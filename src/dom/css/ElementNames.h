// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/Forward.h>

#include "dom/css/AncestorFilter.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace Dom::CSS::detail {

/// A name with its hash.
struct HashedName {
    HashedName() = default;
    HashedName(NameKind kind, std::string_view name) : text(name), hash(HashOfName(kind, name)) {}

    friend bool operator==(const HashedName& a, const HashedName& b) { return a.text == b.text; }

    std::string_view text;
    std::uint32_t hash = 0;
};

/// For tables whose keys are hashed names.
struct HashOfHashedName {
    std::size_t operator()(const HashedName& name) const { return name.hash; }
};

/// What rules are looked up by for an element: its local name, its id and its classes.
class ElementNames {
public:
    /// Takes the names of an element, in place of those that were here. They must not change.
    void Set(const Element& element);

    const HashedName& Type() const { return type_; }
    /// Empty when there is none.
    const HashedName& Id() const { return id_; }
    /// Each once.
    const std::vector<HashedName>& Classes() const { return classes_; }

    /// Adds all names to a filter.
    void AddTo(AncestorFilter& filter) const;

private:
    HashedName type_;
    HashedName id_;
    std::vector<HashedName> classes_;
};

}  // namespace Dom::CSS::detail
