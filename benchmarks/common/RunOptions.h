// SPDX-License-Identifier: MIT
#pragma once

#include "common/Corpus.h"
#include "common/Measure.h"
#include "common/Table.h"

#include <span>
#include <string>
#include <vector>

namespace bench {

/// What the programs that measure files of the corpus are told on their command lines.
struct RunOptions {
    MeasureOptions measure;
    TableFormat format = TableFormat::Text;
    std::vector<const CorpusEntry*> entries;
    bool offersCheck = true;  ///< set by the program: it knows --check
    bool checkOnly = false;
    bool enforce = false;
    std::string figures;  ///< the file that Publish() writes; empty for none
    bool help = false;
};

// Exit statuses.
inline constexpr int kFailure = 1;
inline constexpr int kUsage = 2;
inline constexpr int kBarMissed = 3;

/// Changes `options` as the arguments say. Files among them replace those of `options`; where there
/// are neither, all files are meant.
/// \throws std::invalid_argument for what it does not understand
void ParseRunOptions(std::span<char*> arguments, RunOptions& options);

/// A program that measures files of the corpus.
struct Program {
    const char* name;
    const char* help;
    int (*run)(const RunOptions& options);  ///< returns the exit status; may throw
};

/// Runs a program with the arguments of main(), or prints its help; errors go to standard error.
/// \return the exit status
int RunProgram(const Program& program, int argc, char** argv, RunOptions options);

}  // namespace bench
