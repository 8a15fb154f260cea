// SPDX-License-Identifier: MIT
#pragma once

#include "common/Corpus.h"
#include "dom/TreeLibrary.h"

#include <cstddef>

namespace bench {

/// Frees what the heap keeps for later, so that what comes next does not profit from what was
/// before, nor pay for it.
void EmptyHeap();

/// Returns how many bytes of the heap the trees of all documents of `file` take at the same time.
std::size_t HeapOfTrees(const TreeLibrary& library, const CorpusFile& file);

}  // namespace bench
