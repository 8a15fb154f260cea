// SPDX-License-Identifier: MIT
#include "reader/Library.h"

#include "common/Setting.h"

#include <exception>

namespace bench {

namespace {

#ifdef ESPALIER_HAS_XERCES
// Its time grows with the square of the depth: half a minute for 100,000 levels.
bool TakesNoDepth(const CorpusEntry& entry) { return std::string_view(entry.name) != "deep"; }
#endif

constexpr Library kLibraries[kLibraryCount] = {
    {"Espalier", "espalier", "espalier", MakeEspalier, EspalierVersion},
    {"EspalierStandard", "espalier, standard mode", "standard", MakeEspalierStandard,
     EspalierVersion},
    {"LibxmlReader", "libxml2 reader", "reader", MakeLibxmlReader, LibxmlVersion},
    {"LibxmlSax2", "libxml2 SAX2", "SAX2", MakeLibxmlSax2, LibxmlVersion},
    {"Expat", "expat", "expat", MakeExpat, ExpatVersion},
    {"ExpatNamespaces", "expat, namespaces", "expat ns", MakeExpatNamespaces, ExpatVersion},
#ifdef ESPALIER_HAS_QT
    {"QtReader", "QXmlStreamReader", "Qt", MakeQtReader, QtVersion, MakeComparableQtReader},
#endif
#ifdef ESPALIER_HAS_XERCES
    {"XercesSax2", "Xerces SAX2", "Xerces", MakeXercesSax2, XercesVersion, MakeComparableXercesSax2,
     TakesNoDepth},
#endif
};

std::string Difference(const Library& library, const Totals& totals, const Totals& expected) {
    std::string text;
    for (const TotalsField& field : kComparedFields) {
        const std::int64_t ours = expected.*field.sum;
        const std::int64_t theirs = totals.*field.sum;
        if (theirs == Totals::kNotDelivered || theirs == ours) continue;
        text += std::string("  ") + library.title + ": " + std::to_string(theirs) + " " +
                field.name + ", " + kLibraries[kEspalier].title + ": " + std::to_string(ours) +
                "\n";
    }
    return text;
}

}  // namespace

std::span<const Library, kLibraryCount> Libraries() { return kLibraries; }

Totals VisitAll(Visitor& visitor, const CorpusFile& file) {
    Totals totals;
    for (const std::string& document : file.documents) {
        visitor.Visit(document, totals);
    }
    return totals;
}

std::string Disagreement(const CorpusFile& file) {
    std::string text;
    Totals expected;
    for (const Library& library : Libraries()) {
        if (!library.takes(*file.entry)) continue;
        const auto make =
            library.makeComparable == nullptr ? library.makeVisitor : library.makeComparable;
        try {
            const Totals totals = VisitAll(*make(file.entry->group), file);
            if (&library == &kLibraries[kEspalier]) expected = totals;
            text += Difference(library, totals, expected);
        } catch (const std::exception& error) {
            text += std::string("  ") + library.title + " refuses it: " + error.what() + "\n";
        }
    }
    if (expected.elements == 0) text += "  no element was seen\n";
    return text;
}

}  // namespace bench
