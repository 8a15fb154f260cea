// SPDX-License-Identifier: MIT
#include "sax/EventLibrary.h"

#include "common/Setting.h"

#include <exception>

namespace bench {

namespace {

#ifdef ESPALIER_HAS_XERCES
// Its time grows with the square of the depth: half a minute for 100,000 levels.
bool TakesNoDepth(const CorpusEntry& entry) { return std::string_view(entry.name) != "deep"; }
#endif

constexpr EventLibrary kLibraries[kEventLibraryCount] = {
    {"espalier, events", "events", MakeEspalierSax<Touch>, MakeEspalierSax<Digest>,
     EspalierVersion},
    {"espalier, pull parser", "pull", MakeEspalierPull<Touch>, MakeEspalierPull<Digest>,
     EspalierVersion},
    {"expat, namespaces", "expat ns", MakeExpatEvents<Touch>, MakeExpatEvents<Digest>,
     ExpatEventsVersion},
    {"libxml2 SAX2", "SAX2", MakeLibxmlEvents<Touch>, MakeLibxmlEvents<Digest>,
     LibxmlEventsVersion},
#ifdef ESPALIER_HAS_QT
    {"QXmlStreamReader", "Qt", MakeQtEvents<Touch>, MakeQtEvents<Digest>, QtEventsVersion,
     TakesAllEvents, true},
#endif
#ifdef ESPALIER_HAS_XERCES
    {"Xerces SAX2", "Xerces", MakeXercesEvents<Touch>, MakeXercesEvents<Digest>,
     XercesEventsVersion, TakesNoDepth, true},
#endif
};

std::string Describe(const EventCounts& counts) {
    return std::to_string(counts.elements) + " elements, " + std::to_string(counts.ends) +
           " ends, " + std::to_string(counts.attributes) + " attributes, " +
           std::to_string(counts.instructions) + " instructions, " +
           std::to_string(counts.textBytes) + " bytes of text";
}

std::string Describe(const EventLibrary& library, const Digest& digest) {
    return std::string("  ") + library.title + ": " + Describe(digest.counts) + ", hash " +
           std::to_string(digest.Hash()) + "\n";
}

}  // namespace

std::span<const EventLibrary, kEventLibraryCount> EventLibraries() { return kLibraries; }

std::string EventDisagreement(const CorpusFile& file) {
    std::string text;
    Digest expected;
    for (const EventLibrary& library : EventLibraries()) {
        if (!library.takes(*file.entry)) continue;
        try {
            const Digest digest = VisitEvents(*library.makeDigesting(), file);
            if (&library == &kLibraries[kEspalierSax]) expected = digest;
            if (digest.counts != expected.counts || digest.Hash() != expected.Hash()) {
                text += Describe(library, digest) + Describe(kLibraries[kEspalierSax], expected);
            }
            EventCounts touched = VisitEvents(*library.makeTouching(), file).counts;
            if (library.countsUnits) touched.textBytes = digest.counts.textBytes;
            if (touched != digest.counts) {
                text += std::string("  ") + library.title + ": " + Describe(touched) +
                        " when it is measured\n";
            }
        } catch (const std::exception& error) {
            text += std::string("  ") + library.title + " refuses it: " + error.what() + "\n";
        }
    }
    if (expected.counts.elements == 0) text += "  no element was seen\n";
    return text;
}

}  // namespace bench
