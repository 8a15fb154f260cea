// SPDX-License-Identifier: MIT
#include "writer/WriterDocuments.h"

#include <string_view>

namespace bench {

namespace {

constexpr char kEscapes[] = "references";

}  // namespace

std::vector<const CorpusEntry*> WriterDocuments() {
    std::vector<const CorpusEntry*> entries;
    for (const char* name : {"records", "attributes", "text", "unicode", kEscapes}) {
        entries.push_back(&FindCorpusEntry(name));
    }
    return entries;
}

bool IsInMeans(const CorpusEntry& entry) { return std::string_view(entry.name) != kEscapes; }

Recording RecordFile(const CorpusEntry& entry) {
    // Much of what is usual, and little enough for the caches, so that what is measured is the
    // writing and not the memory.
    constexpr std::size_t kMostBytes = 1'500'000;
    return Record(LoadCorpusFile(entry).documents.front(), kMostBytes);
}

}  // namespace bench
