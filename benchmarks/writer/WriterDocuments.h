// SPDX-License-Identifier: MIT
#pragma once

#include "common/Corpus.h"
#include "writer/Recording.h"

#include <vector>

namespace bench {

/// Returns the files whose documents are written: records, attributes, texts, and characters that
/// are not ASCII; and one with much to escape, of which these four have hardly anything.
std::vector<const CorpusEntry*> WriterDocuments();

/// Tells whether the file is in the means, and so in the bars: the one with the escapes is not.
bool IsInMeans(const CorpusEntry& entry);

/// Records the first 1.5 MB of the first document of a file.
/// \throws std::runtime_error when the file is missing
Recording RecordFile(const CorpusEntry& entry);

}  // namespace bench
