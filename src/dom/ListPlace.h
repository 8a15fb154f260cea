// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/Forward.h>

#include <cstddef>
#include <cstdint>

namespace Dom::detail {

/// Where somebody who goes through a list by index was last; good while the stamp is the
/// document's.
struct ListPlace {
    static constexpr std::size_t kUnknown = static_cast<std::size_t>(-1);

    const Node* root = nullptr;
    std::uint64_t stamp = 0;
    std::size_t index = 0;
    Node* node = nullptr;  // null before the first member was asked for
    std::size_t length = kUnknown;

    /// Starts anew unless the place is one in the list of `wantedRoot`, at this stamp.
    void Check(const Node* wantedRoot, std::uint64_t wantedStamp) {
        if (root != wantedRoot || stamp != wantedStamp) *this = {wantedRoot, wantedStamp};
    }
};

}  // namespace Dom::detail
