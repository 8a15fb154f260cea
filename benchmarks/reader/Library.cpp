// SPDX-License-Identifier: MIT
#include "reader/Library.h"

#include "common/Setting.h"

#include <exception>

namespace bench {

namespace {

constexpr Library kLibraries[kLibraryCount] = {
    {"Espalier", "espalier", MakeEspalier, EspalierVersion},
    {"EspalierStandard", "espalier, standard mode", MakeEspalierStandard, EspalierVersion},
    {"LibxmlReader", "libxml2 reader", MakeLibxmlReader, LibxmlVersion},
    {"LibxmlSax2", "libxml2 SAX2", MakeLibxmlSax2, LibxmlVersion},
    {"Expat", "expat", MakeExpat, ExpatVersion},
    {"ExpatNamespaces", "expat, namespaces", MakeExpatNamespaces, ExpatVersion},
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
        try {
            const Totals totals = VisitAll(*library.makeVisitor(file.entry->group), file);
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
