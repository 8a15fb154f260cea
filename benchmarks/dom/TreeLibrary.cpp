// SPDX-License-Identifier: MIT
#include "dom/TreeLibrary.h"

#include "common/Setting.h"

#include <exception>

namespace bench {

namespace {

bool TakesAll(const CorpusEntry& /*entry*/) { return true; }

// It knows the encodings of Unicode and ISO-8859-1.
bool TakesNoCodePage(const CorpusEntry& entry) { return entry.group != CorpusGroup::CodePage; }

// It reads UTF-8 alone, refuses more than 500 levels, and wants declarations and instructions to be
// in front of everything else.
bool TakesPlainUtf8(const CorpusEntry& entry) {
    const std::string_view name = entry.name;
    return entry.group == CorpusGroup::Utf8 && name != "deep" && name != "markup";
}

#if defined(ESPALIER_HAS_QT) || defined(ESPALIER_HAS_XERCES)
// QDomDocument frees a tree by recursion, which the stack is too small for; the time of Xerces
// grows with the square of the depth.
bool TakesNoDepth(const CorpusEntry& entry) { return std::string_view(entry.name) != "deep"; }
#endif

constexpr TreeContent kWhole = TreeContent::Whole;
constexpr TreeContent kReduced = TreeContent::Reduced;

constexpr TreeLibrary kLibraries[kTreeLibraryCount] = {
    {"espalier", "espalier", LoadEspalierTree, kWhole, TakesAll, EspalierVersion},
    {"libxml2 tree", "libxml2", LoadLibxmlTree, kWhole, TakesAll, LibxmlTreeVersion},
    {"pugixml, full content", "pugi full", LoadPugixmlFullTree, kWhole, TakesNoCodePage,
     PugixmlTreeVersion},
    {"pugixml", "pugixml", LoadPugixmlTree, kReduced, TakesNoCodePage, PugixmlTreeVersion},
    {"tinyxml2", "tinyxml2", LoadTinyxml2Tree, kReduced, TakesPlainUtf8, Tinyxml2TreeVersion},
#ifdef ESPALIER_HAS_QT
    {"QDomDocument", "Qt", LoadQtTree, kReduced, TakesNoDepth, QtTreeVersion},
#endif
#ifdef ESPALIER_HAS_XERCES
    {"Xerces DOM", "Xerces", LoadXercesTree, kWhole, TakesNoDepth, XercesTreeVersion},
#endif
};

std::string Difference(const TreeLibrary& library, const TreeTotals& totals,
                       const TreeTotals& expected) {
    std::string text;
    for (const TreeTotalsField& field : kTreeTotalsFields) {
        const std::int64_t ours = expected.*field.sum;
        const std::int64_t theirs = totals.*field.sum;
        const bool isCompared = field.isOfReducedTrees || library.content == TreeContent::Whole;
        if (!isCompared || theirs == ours) continue;
        text += std::string("  ") + library.title + ": " + std::to_string(theirs) + " " +
                field.name + ", " + kLibraries[kEspalierTree].title + ": " + std::to_string(ours) +
                "\n";
    }
    return text;
}

}  // namespace

std::span<const TreeLibrary, kTreeLibraryCount> TreeLibraries() { return kLibraries; }

TreeTotals VisitTrees(const TreeLibrary& library, const CorpusFile& file) {
    TreeTotals totals;
    for (const std::string& document : file.documents) {
        library.load(document)->Walk(totals);
    }
    return totals;
}

std::string TreeDisagreement(const CorpusFile& file) {
    std::string text;
    TreeTotals expected;
    for (const TreeLibrary& library : TreeLibraries()) {
        if (!library.takes(*file.entry)) continue;
        try {
            const TreeTotals totals = VisitTrees(library, file);
            if (&library == &kLibraries[kEspalierTree]) expected = totals;
            text += Difference(library, totals, expected);
        } catch (const std::exception& error) {
            text += std::string("  ") + library.title + " refuses it: " + error.what() + "\n";
        }
    }
    if (expected.elements == 0) text += "  no element was seen\n";
    return text;
}

}  // namespace bench
