// SPDX-License-Identifier: MIT
//
// Reads arbitrary bytes as a document with the reader in standard mode and with expat, with
// namespaces and without. Both accept it or both refuse it, and where both accept it they tell the
// same events, character by character. The input is that of ReaderFuzzer.cpp, of which the settings
// and operations are passed over: all entities are expanded.
//
// Expat has the names of the fourth edition of XML 1.0, so characters are replaced beforehand by
// such as both editions class alike. Where else the two may differ is listed below, each place with
// what the recommendation says.

#include "differential/Events.h"
#include "support/NameRanges.h"
#include "support/Utf8Text.h"

#include <expat.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

namespace {

using differential::Detail;
using differential::Names;
using differential::Reading;

constexpr unsigned kMostOperations = 32;

// Names.

// Returns a character that both editions class as this one is classed by the fifth.
char32_t FoldedName(char32_t code) {
    constexpr char32_t kLetter = 0xE9;
    constexpr char32_t kMiddleDot = 0xB7;
    if (code < 0x80) return code;
    if (support::IsNameStart(code)) return kLetter;
    return support::IsNameCharacter(code) ? kMiddleDot : code;
}

// Folds the numbers of character references, which may become names in the texts of entities.
void FoldReferences(std::u32string& text) {
    for (std::size_t at = text.find('#'); at != std::u32string::npos; at = text.find('#', at + 1)) {
        const bool isHex = at + 1 < text.size() && text[at + 1] == 'x';
        const std::size_t begin = at + (isHex ? 2 : 1);
        const std::size_t end =
            text.find_first_not_of(isHex ? U"0123456789abcdefABCDEF" : U"0123456789", begin);
        if (end == std::u32string::npos || end == begin || text[end] != ';') continue;
        const std::string digits(text.begin() + static_cast<std::ptrdiff_t>(begin),
                                 text.begin() + static_cast<std::ptrdiff_t>(end));
        const unsigned long code = std::strtoul(digits.c_str(), nullptr, isHex ? 16 : 10);
        if (code > 0x10FFFF) continue;
        const auto folded = static_cast<unsigned>(FoldedName(static_cast<char32_t>(code)));
        if (folded == code) continue;
        const std::string number = std::to_string(folded);
        text.replace(at + 1, end - at - 1, std::u32string(number.begin(), number.end()));
    }
}

std::u32string Fold(std::u32string text) {
    std::transform(text.begin(), text.end(), text.begin(), FoldedName);
    FoldReferences(text);
    return text;
}

bool IsUtf16(const std::string& document) {
    return document.starts_with("\xFF\xFE") || document.starts_with("\xFE\xFF");
}

// Returns the document in UTF-16, whose units are all characters, with other names.
std::string FoldUtf16(const std::string& document) {
    const std::size_t high = document[0] == '\xFE' ? 0 : 1;  // where a unit has its high byte
    std::u32string text;
    for (std::size_t i = 0; i + 1 < document.size(); i += 2) {
        const auto first = static_cast<unsigned char>(document[i + high]);
        const auto second = static_cast<unsigned char>(document[i + 1 - high]);
        const char32_t unit = static_cast<char32_t>(first) << 8 | second;
        if (unit >= 0xDC00 && unit <= 0xDFFF) {
            text.back() = 0x10000 + ((text.back() & 0x3FF) << 10) + (unit & 0x3FF);
        } else {
            text.push_back(unit);
        }
    }
    std::string folded;
    const auto addUnit = [&folded, high](char32_t unit) {
        const char bytes[] = {static_cast<char>(unit >> 8 & 0xFF), static_cast<char>(unit & 0xFF)};
        folded += bytes[high];
        folded += bytes[1 - high];
    };
    for (const char32_t code : Fold(text)) {
        if (code >= 0x10000) {
            addUnit(0xD800 + ((code - 0x10000) >> 10));
            addUnit(0xDC00 + (code & 0x3FF));
        } else {
            addUnit(code);
        }
    }
    return folded;
}

// Returns the document with names that are names in both editions, or in none.
std::string FoldNames(const std::string& document) {
    if (IsUtf16(document)) return FoldUtf16(document);
    const std::optional<std::u32string> text = support::DecodeUtf8(document);
    if (!text) return document;  // of another encoding, or none: it has letters of Latin at most
    std::string folded;
    for (const char32_t code : Fold(*text))
        support::AppendUtf8(folded, code);
    return folded;
}

// Documents that are not compared.

// Whether both take the bytes for the same encoding when nothing is declared: it is UTF-8, or
// UTF-16 with a whole mark. "Entities encoded in UTF-16 MUST [...] begin with the Byte Order Mark"
// (4.3.3); expat reads them without one.
bool IsCommonEncoding(const std::string& document) {
    const std::string_view mark = std::string_view(document).substr(0, 2);
    if (IsUtf16(document)) {
        return document.size() % 2 == 0 && document.substr(2, 2) != std::string(2, '\0');
    }
    return mark.find_first_of("\xFE\xFF") == std::string_view::npos && mark[0] != 'L' &&
           document.find('\0') == std::string::npos;
}

// Whether the document is in UTF-16 and holds half a pair of surrogates, which is no character
// ([2]); expat overlooks it.
bool HasHalfPair(const std::string& document) {
    if (!IsUtf16(document)) return false;
    const std::size_t high = document[0] == '\xFE' ? 0 : 1;
    bool isOpen = false;
    for (std::size_t i = 0; i + 1 < document.size(); i += 2) {
        const unsigned kind = static_cast<unsigned char>(document[i + high]) & 0xFCU;
        if (isOpen != (kind == 0xDC)) return true;
        isOpen = kind == 0xD8;
    }
    return isOpen;
}

// Differences.

bool Has(const std::string& document, std::string_view text) {
    return document.find(text) != std::string::npos;
}

// Whether the document declares a version that is not [26] VersionNum ::= '1.' [0-9]+, any of which
// expat accepts, the empty one too.
bool HasOtherVersion(const std::string& text) {
    const std::size_t quote = text.find_first_of("'\"", text.find("version"));
    if (quote >= text.find("?>")) return false;
    const std::size_t end = text.find(text[quote], quote + 1);
    const std::string version = text.substr(quote + 1, end - quote - 1);
    return version.size() < 3 || !version.starts_with("1.") ||
           version.find_first_not_of("0123456789", 2) != std::string::npos;
}

// Whether a local name may begin with a character that begins no name. Names in declarations are
// QNames (Namespaces in XML [16] to [21], and [7] to [11]); expat looks at the first character of
// the local part only in tags.
bool HasOtherLocalName(const std::string& text) {
    for (std::size_t at = text.find(':'); at != std::string::npos; at = text.find(':', at + 1)) {
        const std::string_view rest = std::string_view(text).substr(at + 1, 2);
        if (rest.empty()) continue;
        if (std::string_view("-.0123456789\xB7").find(rest[0]) != std::string_view::npos ||
            rest == "\xC2\xB7") {
            return true;
        }
    }
    return false;
}

// Whether a mark and a declaration may contradict each other, which is fatal (4.3.3); expat goes on
// with what is declared.
bool HasMarkAndEncoding(const std::string& document, const std::string& text) {
    return document.starts_with("\xEF\xBB\xBF") && text.find("encoding") < text.find("?>");
}

// Limits on what entities expand to, of which the recommendation says nothing. Expat has others.
constexpr std::string_view kLimits[] = {"Entity expansion limit exceeded",
                                        "Entity nesting limit exceeded",
                                        "Limit on supplied attributes exceeded"};

// Whether the ordinals and the micro sign may stand in a name of a document in ISO-8859-1: expat
// takes them for letters there, which they are in no edition ([4] begins with U+00C0).
bool HasLatinOrdinal(const std::string& text) {
    return Has(text, "encoding") && text.find_first_of("\xAA\xB5\xBA") != std::string::npos;
}

bool MayRefuse(const std::string& document, const Reading& ours, const Reading& expat,
               Names names) {
    const std::string message = ours.error.substr(ours.error.find(": ") + 2);
    std::string text = document;
    std::erase(text, '\0');
    if (std::find(std::begin(kLimits), std::end(kLimits), message) != std::end(kLimits))
        return true;
    if (HasLatinOrdinal(text)) return true;
    // All else is in front of the root element.
    const bool hasStarted =
        std::any_of(ours.lines.begin(), ours.lines.end(),
                    [](const std::string& line) { return line.starts_with("start "); });
    if (hasStarted) return false;
    // "Parameter-entity references MUST NOT occur within markup declarations" of the internal
    // subset (2.8), in internal parameter entities neither; expat lets them stand in literals of
    // those.
    if (message == "PE reference not allowed in parsed entity value") return Has(text, "%");
    // Expat does not look into literals behind a parameter entity that it has not read; they follow
    // their grammar nevertheless ([9], [10]).
    if (expat.hasMissedParameter && Has(text, "<!DOCTYPE")) return true;
    return HasOtherVersion(text) || (names == Names::Qualified && HasOtherLocalName(text)) ||
           HasMarkAndEncoding(document, text);
}

// Whether expat may be wrong to refuse the document: it has a limit on what entities expand to, and
// knows no encodings but those that are asked of all (4.3.3) and two more.
//
// In a standalone document it asks for parameter entities to be declared, and outside of other
// ones. That is a constraint on validity for them ([69]), and one on well-formedness for others
// ([68]).
bool MayAccept(const std::string& document, const Reading& expat) {
    const bool isAboutDeclarations = expat.errorCode == XML_ERROR_UNDEFINED_ENTITY ||
                                     expat.errorCode == XML_ERROR_ENTITY_DECLARED_IN_PE;
    std::string text = document;
    std::erase(text, '\0');
    return expat.errorCode == XML_ERROR_AMPLIFICATION_LIMIT_BREACH ||
           expat.errorCode == XML_ERROR_UNKNOWN_ENCODING ||
           (isAboutDeclarations && expat.failedBeforeRoot && Has(text, "standalone") &&
            Has(text, "%"));
}

[[noreturn]] void Fail(const char* what, const Reading& ours, const Reading& expat) {
    std::fprintf(stderr, "%s\n  the reader: %s\n  expat: %s\n", what, ours.error.c_str(),
                 expat.error.c_str());
    for (std::size_t i = 0; i < std::max(ours.lines.size(), expat.lines.size()); ++i) {
        const std::string mine = i < ours.lines.size() ? ours.lines[i] : "(end)";
        const std::string other = i < expat.lines.size() ? expat.lines[i] : "(end)";
        if (mine == other) continue;
        std::fprintf(stderr, "  the reader: %s\n  expat: %s\n", mine.c_str(), other.c_str());
        break;
    }
    std::abort();
}

void Compare(const std::string& document, Names names) {
    const Reading ours = differential::ReadByStandard(document, Detail::Exact, names);
    const Reading expat = differential::ReadWithExpat(document, Detail::Exact, names);
    if (ours.error.empty() && !expat.error.empty() && !MayAccept(document, expat)) {
        Fail("accepted by the reader alone", ours, expat);
    }
    if (!ours.error.empty() && expat.error.empty() && !MayRefuse(document, ours, expat, names)) {
        Fail("refused by the reader alone", ours, expat);
    }
    const bool isAccepted = ours.error.empty() && expat.error.empty();
    if (isAccepted && ours.lines != expat.lines) Fail("told otherwise", ours, expat);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 3) return 0;
    const std::size_t begin = std::min<std::size_t>(3 + data[2] % kMostOperations, size);
    const std::string input(reinterpret_cast<const char*>(data) + begin, size - begin);
    if (input.size() < 4 || !IsCommonEncoding(input) || HasHalfPair(input)) return 0;
    const std::string document = FoldNames(input);
    Compare(document, Names::Qualified);
    Compare(document, Names::Plain);
    return 0;
}
