// SPDX-License-Identifier: MIT
#include "writer/DocumentWriter.h"

#include "common/Setting.h"

#include <algorithm>
#include <exception>
#include <limits>

namespace bench {

namespace {

std::string NoVersion() { return ""; }

constexpr WriterLibrary kLibraries[kWriterCount] = {
    {"espalier", "espalier", MakeEspalierWriter, EspalierVersion},
    {"tinyxml2 printer", "tinyxml2", MakeTinyxml2Printer, Tinyxml2Version},
    {"pugixml save", "pugixml", MakePugixmlSave, PugixmlVersion},
    {"libxml2 writer", "libxml2", MakeLibxmlWriter, LibxmlWriterVersion},
    {"append loop", "loop", MakePlainLoop, NoVersion},
    {"append loop over runs", "runs", MakeRunLoop, NoVersion},
};

// Returns an empty text when `output` stands for the calls of `expected`.
std::string Difference(std::string_view output, const Recording& expected) {
    const Recording found = Record(output, std::numeric_limits<std::size_t>::max());
    if (found == expected) return "";
    const std::size_t common = std::min(found.calls.size(), expected.calls.size());
    std::size_t i = 0;
    while (i < common && found.calls[i] == expected.calls[i] &&
           found.Name(found.calls[i]) == expected.Name(expected.calls[i]) &&
           found.Value(found.calls[i]) == expected.Value(expected.calls[i])) {
        ++i;
    }
    return "call " + std::to_string(i) + " of " + std::to_string(expected.calls.size()) +
           " reads back as another one";
}

}  // namespace

std::span<const WriterLibrary, kWriterCount> WriterLibraries() { return kLibraries; }

std::string WriterDisagreement(const Recording& recording) {
    std::string text;
    std::string ours;
    for (std::size_t i = 0; i < kWriterCount; ++i) {
        const WriterLibrary& library = kLibraries[i];
        std::string difference;
        try {
            const auto writer = library.make(recording);
            writer->Write();
            writer->Write();  // what is measured is not the first time
            difference = Difference(writer->Output(), recording);
            if (i == kEspalierWriter) ours = writer->Output();
            const bool isLoop = i == kPlainLoop || i == kRunLoop;
            if (isLoop && writer->Output() != ours) difference = "has other bytes than ours";
        } catch (const std::exception& error) {
            difference = error.what();
        }
        if (!difference.empty())
            text += std::string("  ") + library.title + ": " + difference + "\n";
    }
    if (recording.calls.empty()) text += "  no call was recorded\n";
    return text;
}

}  // namespace bench
