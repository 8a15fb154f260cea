// SPDX-License-Identifier: MIT
#include "dom/TreeSize.h"

#include <malloc.h>
#include <memory>
#include <vector>

namespace bench {

namespace {

// Returns the bytes in use, those with a mapping of their own included.
std::size_t UsedHeap() {
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

}  // namespace

void EmptyHeap() { malloc_trim(0); }

std::size_t HeapOfTrees(const TreeLibrary& library, const CorpusFile& file) {
    TreeTotals totals;
    library.load(file.documents.front())->Walk(totals);  // makes what a library makes only once
    EmptyHeap();
    std::vector<std::unique_ptr<Tree>> trees;
    trees.reserve(file.documents.size());
    const std::size_t before = UsedHeap();
    for (const std::string& document : file.documents) {
        trees.push_back(library.load(document));
    }
    return UsedHeap() - before;
}

}  // namespace bench
