// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

#include "sax/PairIndex.h"

#include <string_view>
#include <vector>

namespace sax::helpers::detail {

/// An attribute that is kept.
struct AttributeRecord {
    astring type;
    astring uri;
    astring localName;
    astring qName;
    astring value;
};

/// The attributes of an AttributesImpl.
///
/// Deliberate: pairs of namespace and local name are those that the attributes were added with.
/// They are only indexed when one is asked for or a name is about to change.
class AttributeStore {
public:
    int Count() const { return static_cast<int>(records_.size()); }

    /// Returns a record, or null.
    const AttributeRecord* Get(int index) const;

    /// Returns a record to change a type or a value of.
    /// \throws std::out_of_range "invalid vector<T> subscript"
    AttributeRecord& At(int index);

    /// Returns a record to change a name of.
    /// \throws std::out_of_range "invalid vector<T> subscript"
    AttributeRecord& AtForNames(int index);

    void Add(AttributeRecord record);
    void Clear();

    /// Returns an index, or -1.
    int Find(std::string_view qName) const;
    int Find(std::string_view uri, std::string_view localName) const;

private:
    void IndexPairs() const;

    std::vector<AttributeRecord> records_;
    mutable sax::detail::PairIndex pairs_;  // of all records, if isIndexed_
    mutable bool isIndexed_ = false;
};

}  // namespace sax::helpers::detail
