// SPDX-License-Identifier: MIT
#pragma once

#include "common/Corpus.h"
#include "reader/Totals.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace bench {

/// A parser that is kept from document to document, in the way in which its library is reused best.
class Visitor {
public:
    virtual ~Visitor() = default;

    /// Visits every event of `document`, touches every name and value, and adds their lengths to
    /// `totals`.
    /// \throws std::exception when the document is refused
    virtual void Visit(std::string_view document, Totals& totals) = 0;
};

/// The libraries, in the order of Libraries().
enum LibraryIndex {
    kEspalier,
    kEspalierStandard,
    kLibxmlReader,
    kLibxmlSax2,
    kExpat,
    kExpatNamespaces,
    kLibraryCount
};

/// A library to compare.
struct Library {
    const char* name;   ///< as in names of benchmarks: no blanks
    const char* title;  ///< as in tables
    std::unique_ptr<Visitor> (*makeVisitor)(CorpusGroup);
    std::string (*version)();
};

// One file each. The visitor is set up for files of that group.
std::unique_ptr<Visitor> MakeEspalier(CorpusGroup group);
std::unique_ptr<Visitor> MakeEspalierStandard(CorpusGroup group);
std::unique_ptr<Visitor> MakeLibxmlReader(CorpusGroup group);
std::unique_ptr<Visitor> MakeLibxmlSax2(CorpusGroup group);
std::unique_ptr<Visitor> MakeExpat(CorpusGroup group);
std::unique_ptr<Visitor> MakeExpatNamespaces(CorpusGroup group);
std::string LibxmlVersion();
std::string ExpatVersion();

/// Returns all libraries, ours in both modes first.
std::span<const Library, kLibraryCount> Libraries();

/// Visits all documents of `file` once.
Totals VisitAll(Visitor& visitor, const CorpusFile& file);

/// Visits `file` with every library and compares the sums.
/// \return an empty text when they agree, else which library counted what differently, or refused
///     the file
std::string Disagreement(const CorpusFile& file);

}  // namespace bench
