// SPDX-License-Identifier: MIT
#pragma once

#include "dom/css/computed/StyleData.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <unordered_map>

namespace Dom::CSS::detail {

/// Keeps lists of values apart that have different values: of those that have the same, one is
/// enough for all.
class ListPool {
public:
    /// Returns the list that has the same values as another one and came first; it may be that.
    std::shared_ptr<const ValueList> Share(std::shared_ptr<const ValueList> list);
    /// Returns how many lists are known, those that nobody has any more included.
    std::size_t Size() const { return lists_.size(); }
    /// Forgets the lists that nobody else has any more.
    void DropUnused();

private:
    std::unordered_multimap<std::uint64_t, std::weak_ptr<const ValueList>> lists_;
};

}  // namespace Dom::CSS::detail
