// SPDX-License-Identifier: MIT
#include "SameEvents.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace differential {

void ExpectSameEvents(const Reading& ours, const Reading& theirs, const char* peer) {
    EXPECT_EQ(theirs.error, "") << peer;
    const auto [mine, other] = std::mismatch(ours.lines.begin(), ours.lines.end(),
                                             theirs.lines.begin(), theirs.lines.end());
    if (mine == ours.lines.end() && other == theirs.lines.end()) return;
    ADD_FAILURE() << "event " << mine - ours.lines.begin() << ":\n  the reader: "
                  << (mine == ours.lines.end() ? "(end)" : mine->substr(0, 500)) << "\n  " << peer
                  << ": " << (other == theirs.lines.end() ? "(end)" : other->substr(0, 500));
}

}  // namespace differential
