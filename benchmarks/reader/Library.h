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
#ifdef ESPALIER_HAS_QT
    kQtReader,
#endif
#ifdef ESPALIER_HAS_XERCES
    kXercesSax2,
#endif
    kLibraryCount
};

/// Says yes.
constexpr bool TakesAll(const CorpusEntry& /*entry*/) { return true; }

/// A library to compare.
struct Library {
    const char* name;  ///< as in names of benchmarks: no blanks
    const char* title;
    const char* shortTitle;  ///< as in tables
    std::unique_ptr<Visitor> (*makeVisitor)(CorpusGroup);
    std::string (*version)();
    /// Makes a visitor that counts in UTF-8 although the library has UTF-16, for comparing; null
    /// where that is what makeVisitor makes.
    std::unique_ptr<Visitor> (*makeComparable)(CorpusGroup) = nullptr;
    bool (*takes)(const CorpusEntry& entry) = TakesAll;  ///< whether a file is measured with it
};

// One file each. The visitor is set up for files of that group.
std::unique_ptr<Visitor> MakeEspalier(CorpusGroup group);
std::unique_ptr<Visitor> MakeEspalierStandard(CorpusGroup group);
std::unique_ptr<Visitor> MakeLibxmlReader(CorpusGroup group);
std::unique_ptr<Visitor> MakeLibxmlSax2(CorpusGroup group);
std::unique_ptr<Visitor> MakeExpat(CorpusGroup group);
std::unique_ptr<Visitor> MakeExpatNamespaces(CorpusGroup group);
std::unique_ptr<Visitor> MakeQtReader(CorpusGroup group);
std::unique_ptr<Visitor> MakeComparableQtReader(CorpusGroup group);
std::unique_ptr<Visitor> MakeXercesSax2(CorpusGroup group);
std::unique_ptr<Visitor> MakeComparableXercesSax2(CorpusGroup group);
std::string LibxmlVersion();
std::string ExpatVersion();
std::string QtVersion();
std::string XercesVersion();

/// Returns all libraries, ours in both modes first.
std::span<const Library, kLibraryCount> Libraries();

/// Visits all documents of `file` once.
Totals VisitAll(Visitor& visitor, const CorpusFile& file);

/// Visits `file` with every library that takes it and compares the sums.
/// \return an empty text when they agree, else which library counted what differently, or refused
///     the file
std::string Disagreement(const CorpusFile& file);

}  // namespace bench
