// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/Forward.h>

#include <algorithm>  // std::max
#include <array>
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

    /// Tells how many nodes one has to go through to get there again.
    std::size_t Cost() const { return length != kUnknown ? length : index; }
};

/// The places in the lists of children that were used last, for loops within loops.
///
/// The place that goes for another one is the one that is found again at the least cost; each that
/// goes makes those that are not used meanwhile cheaper than those that are.
class ListPlaces {
public:
    /// Returns the place in the list of a node.
    ListPlace& Of(const Node* root, std::uint64_t stamp) {
        Kept* kept = &kept_[0];
        for (Kept& one : kept_) {
            const bool isGood = one.place.stamp == stamp;
            if (isGood && one.place.root == root) {
                one.worth = spent_ + one.place.Cost();
                return one.place;
            }
            if (!isGood) one.worth = 0;
            if (one.worth < kept->worth) kept = &one;
        }
        spent_ = std::max(spent_, kept->worth);
        kept->place = {root, stamp};
        kept->worth = spent_;
        return kept->place;
    }

private:
    struct Kept {
        ListPlace place;
        std::uint64_t worth = 0;
    };

    std::array<Kept, 4> kept_{};
    std::uint64_t spent_ = 0;  // what the last one that went was worth
};

}  // namespace Dom::detail
