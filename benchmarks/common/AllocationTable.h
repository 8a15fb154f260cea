// SPDX-License-Identifier: MIT
#pragma once

#include "common/Corpus.h"
#include "common/Figures.h"
#include "common/Table.h"

#include <cstdint>
#include <string>
#include <vector>

namespace bench {

/// What was asked of the heap while the second half of a document was handled.
struct AllocationCounts {
    std::uint64_t pieces = 0;  ///< nodes or events
    std::uint64_t allocations = 0;
};

/// The table of several documents, and whether any of those that repeat themselves asked for a
/// block. New names and depths come to the end of the others, and entities are expanded on the
/// heap: these have no bar.
class AllocationTable {
public:
    /// Starts a table; its heads say what is counted, "nodes" and "a node" for example.
    AllocationTable(const char* pieces, const char* aPiece);

    /// Adds a document.
    void Add(const CorpusEntry& entry, const AllocationCounts& counts);

    /// Returns the table.
    std::string Format(TableFormat format) const { return FormatTable(rows_, format); }

    /// Returns the bar: the most of all documents that have one. `title` is what was done.
    Bar Judge(const std::string& title) const;

private:
    std::vector<TableRow> rows_;
    double most_ = 0;  // blocks of a document that has a bar
};

}  // namespace bench
