// SPDX-License-Identifier: MIT
#pragma once

#include "reader/Corpus.h"
#include "reader/Measure.h"
#include "reader/Table.h"

#include <span>
#include <vector>

namespace bench {

/// What the programs that measure files of the corpus are told on their command lines.
struct RunOptions {
    MeasureOptions measure;
    TableFormat format = TableFormat::Text;
    std::vector<const CorpusEntry*> entries;
    bool checkOnly = false;
    bool enforce = false;
    bool help = false;
};

/// Changes `options` as the arguments say; without a file among them, all files are meant.
/// \throws std::invalid_argument for what it does not understand
void ParseRunOptions(std::span<char*> arguments, RunOptions& options);

}  // namespace bench
