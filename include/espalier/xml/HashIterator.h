// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/Export.h>
#include <espalier/xml/HashItem.h>
#include <espalier/xml/XmlHash.h>

namespace Xml {

class HashMap;

/// A walk over all entries of a HashMap: by bucket, and within a bucket the newest entry first.
///
/// The map must outlive the walk and must not change during it.
///
/// \code
///     Xml::HashIterator iterator;
///     for (Xml::HashItem item = iterator.First(map); !item.IsNull(); item = iterator.Next()) {
///         Use(item.GetKey(), item.GetKeyLength(), item.GetValue());
///     }
/// \endcode
class ESPALIER_EXPORT HashIterator {
public:
    /// Makes an iterator without a current entry.
    HashIterator() = default;
    HashIterator(const HashIterator&) = default;
    HashIterator& operator=(const HashIterator&) = default;

    /// Starts at the first entry of `map` and returns it; null when the map is empty.
    HashItem First(const HashMap& map);

    /// Goes on to the next entry and returns it; null at the end.
    HashItem Next();

    /// Returns the current entry again; null before First() and after the end.
    HashItem CurrentItem() const { return HashItem(iterator_.item); }

private:
    XmlHashIterator iterator_ = {nullptr, nullptr};
};

}  // namespace Xml
