// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace bench {

/// Which bars a file of the corpus counts for.
enum class CorpusGroup {
    Utf8,       ///< in the geometric means
    OtherForm,  ///< another encoding: has a bar of its own
    CodePage,   ///< a code page, which the peers leave to iconv: has a bar of its own
    Entities,   ///< declares entities, and is read with all references replaced: has no bar
};

/// A file of the corpus as scripts/make-corpus.py writes it.
struct CorpusEntry {
    const char* name;  ///< as in --file and in names of benchmarks
    const char* path;  ///< below the directory of the corpus; a folder for a set of documents
    const char* title;
    CorpusGroup group;
    const char* origin;     ///< the package that a copied file comes from; null for a generated one
    bool repeatsItsShapes;  ///< whether names, depths and lengths of its second half have all been
                            ///< seen in the first
};

/// A file in memory.
struct CorpusFile {
    const CorpusEntry* entry = nullptr;
    std::vector<std::string> documents;  ///< one, or the documents of a set
    std::size_t bytes = 0;               ///< of all documents
};

/// Returns the files that the benchmarks know, in the order of the tables.
std::span<const CorpusEntry> CorpusEntries();

/// Returns the directory of the corpus: ESPALIER_CORPUS in the environment, else build/corpus.
std::string CorpusDirectory();

/// Returns the file of that name.
/// \throws std::invalid_argument when there is none, with the names that there are
const CorpusEntry& FindCorpusEntry(std::string_view name);

/// Returns the files of CorpusEntries() without those copied from packages that were not installed
/// when the corpus was made; these are named on standard error.
std::vector<const CorpusEntry*> PresentCorpusEntries();

/// Reads a file.
/// \throws std::runtime_error when it is missing or empty, with the command that makes it
CorpusFile LoadCorpusFile(const CorpusEntry& entry);

}  // namespace bench
