// SPDX-License-Identifier: MIT
//
// Reads arbitrary bytes as a document with the reader and with expat. Both accept it or both refuse
// it, but for the differences of the table that the differential tests use; and where both accept
// it they tell the same events. The input is that of ReaderFuzzer.cpp, of which the settings and
// operations are passed over: the reader expands all entities and knows namespaces.

#include "differential/Differences.h"
#include "differential/Events.h"

#include <expat.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

using differential::Detail;
using differential::Difference;
using differential::Effect;
using differential::Reading;

constexpr unsigned kMostOperations = 32;

bool Has(const std::string& document, std::string_view text) {
    return document.find(text) != std::string::npos;
}

// Whether both take the bytes for the same encoding when nothing is declared: it is UTF-8, or
// UTF-16 with a whole mark.
bool IsCommonEncoding(const std::string& document) {
    const std::string_view mark = std::string_view(document).substr(0, 2);
    const bool isUtf16 = mark == "\xFF\xFE" || mark == "\xFE\xFF";
    if (isUtf16) return document.size() % 2 == 0 && document.substr(2, 2) != std::string(2, '\0');
    return mark.find_first_of("\xFE\xFF") == std::string_view::npos && mark[0] != 'L' &&
           document.find('\0') == std::string::npos;
}

// Whether the document is in UTF-16 and holds half a pair of surrogates, which expat overlooks.
bool HasHalfPair(const std::string& document) {
    if (document[0] != '\xFE' && document[0] != '\xFF') return false;
    const std::size_t high = document[0] == '\xFE' ? 0 : 1;  // where a unit has its high byte
    bool isOpen = false;
    for (std::size_t i = 0; i + 1 < document.size(); i += 2) {
        const unsigned kind = static_cast<unsigned char>(document[i + high]) & 0xFCU;
        if (isOpen != (kind == 0xDC)) return true;
        isOpen = kind == 0xD8;
    }
    return isOpen;
}

// Whether a version may be declared that is empty, which expat accepts.
bool MayHaveEmptyVersion(std::string document) {
    std::erase(document, '\0');
    return document.find("version") < document.find("?>") &&
           (Has(document, "''") || Has(document, "\"\""));
}

// Whether expat missed white space behind a value.
bool IsBehindQuote(const std::string& document, std::size_t offset) {
    while (offset > 0 && document[offset - 1] == '\0')
        --offset;
    return offset > 0 && (document[offset - 1] == '"' || document[offset - 1] == '\'');
}

// Whether a difference that shows in the internal subset, or one that shows behind it, explains
// where expat failed. Without a document type there are few ways to be more lenient.
bool IsPlaceFor(std::string_view name, const std::string& document, const Reading& expat) {
    const bool hasType = differential::FindDifference("subset")->MayShowIn(document);
    if (name == "subset") return hasType && expat.failedBeforeRoot;
    if (name == "spaces" && expat.errorCode == XML_ERROR_INVALID_TOKEN) {
        return (hasType && expat.failedBeforeRoot) || IsBehindQuote(document, expat.errorOffset);
    }
    return true;
}

bool MayAccept(const std::string& document, const Reading& expat) {
    if (expat.errorCode == XML_ERROR_AMPLIFICATION_LIMIT_BREACH) return true;
    const auto differences = differential::Differences();
    return std::any_of(differences.begin(), differences.end(), [&](const Difference& difference) {
        return difference.effect == Effect::Accepted && difference.MayShowIn(document) &&
               difference.HasExpatError(expat.errorCode) &&
               IsPlaceFor(difference.name, document, expat);
    });
}

bool MayRefuse(const std::string& document, const Reading& ours) {
    const std::string message = ours.error.substr(ours.error.find(": ") + 2);
    if (message == "Invalid character" && HasHalfPair(document)) return true;
    if (message == "Unexpected token" && MayHaveEmptyVersion(document)) return true;
    const auto differences = differential::Differences();
    return std::any_of(differences.begin(), differences.end(), [&](const Difference& difference) {
        return difference.effect == Effect::Refused && difference.MayShowIn(document) &&
               difference.HasMessage(message);
    });
}

// Whether a reference may stand for a carriage return. Before a line end the reader normalizes both
// together; what expat tells does not show any more which of them was a reference.
bool MayReferToReturn(std::string document) {
    std::erase(document, '\0');
    return Has(document, "#") &&
           (Has(document, "13;") || Has(document, "D;") || Has(document, "d;"));
}

// Whether the reader may tell other events than expat.
bool MayTellOtherwise(const std::string& document) {
    const auto differences = differential::Differences();
    return Has(document, "encoding") || MayReferToReturn(document) ||
           std::any_of(differences.begin(), differences.end(), [&](const Difference& difference) {
               // References to line ends are made alike before events are compared.
               return difference.effect == Effect::Told &&
                      difference.name != std::string_view("references") &&
                      difference.MayShowIn(document);
           });
}

[[noreturn]] void Fail(const char* what, const Reading& ours, const Reading& expat) {
    std::fprintf(stderr, "%s\n  the reader: %s\n  expat: %s\n", what, ours.error.c_str(),
                 expat.error.c_str());
    std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 3) return 0;
    const std::size_t begin = std::min<std::size_t>(3 + data[2] % kMostOperations, size);
    const std::string document(reinterpret_cast<const char*>(data) + begin, size - begin);
    if (document.size() < 4 || !IsCommonEncoding(document)) return 0;
    const Reading ours = differential::ReadWithReader(document, Detail::Whole);
    const Reading expat = differential::ReadWithExpat(document, Detail::Whole);
    if (ours.error.empty() && !expat.error.empty() && !MayAccept(document, expat)) {
        Fail("accepted by the reader alone", ours, expat);
    }
    if (!ours.error.empty() && expat.error.empty() && !MayRefuse(document, ours)) {
        Fail("refused by the reader alone", ours, expat);
    }
    const bool isAccepted = ours.error.empty() && expat.error.empty();
    if (isAccepted && ours.lines != expat.lines && !MayTellOtherwise(document)) {
        Fail("told otherwise", ours, expat);
    }
    return 0;
}
