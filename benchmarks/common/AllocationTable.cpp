// SPDX-License-Identifier: MIT
#include "common/AllocationTable.h"

#include <algorithm>

namespace bench {

namespace {

bool HasBar(const CorpusEntry& entry) {
    return entry.repeatsItsShapes && entry.group != CorpusGroup::Entities;
}

}  // namespace

AllocationTable::AllocationTable(const char* pieces, const char* aPiece)
    : rows_({{"second half of", pieces, "allocations", aPiece, "bar"}}) {}

void AllocationTable::Add(const CorpusEntry& entry, const AllocationCounts& counts) {
    const char* verdict = "-";
    if (HasBar(entry)) {
        verdict = counts.allocations == 0 ? "OK" : "MISS";
        most_ = std::max(most_, static_cast<double>(counts.allocations));
    }
    const double each =
        static_cast<double>(counts.allocations) / static_cast<double>(counts.pieces);
    rows_.push_back({entry.title, std::to_string(counts.pieces), std::to_string(counts.allocations),
                     FormatNumber(each, 6), verdict});
}

Bar AllocationTable::Judge(const std::string& title) const {
    return {title + ", most of all files that repeat themselves", 0, most_, "allocations", true};
}

}  // namespace bench
