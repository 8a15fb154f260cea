// SPDX-License-Identifier: MIT
//
// Names by XML 1.0 (fifth edition) [4], [4a] and [5], in every kind of encoding.
#include "support/EscapedText.h"
#include "support/NameRanges.h"
#include "support/StandardReading.h"
#include "support/Utf8Text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <set>
#include <string>

namespace {

using support::ExpectAccepted;
using support::ExpectRefused;
using support::Forms;
using support::ReadByStandard;
using support::RefusedDocument;
using support::StandardOptions;
using support::StandardReading;

constexpr int kAny = RefusedDocument::kAny;

std::string Utf8Of(char32_t code) {
    std::string text;
    support::AppendUtf8(text, code);
    return text;
}

// The ends of all ranges and their neighbours beyond ASCII that are characters.
std::set<char32_t> Boundaries() {
    std::set<char32_t> codes;
    const auto add = [&codes](char32_t code) {
        const bool isCharacter =
            code >= 0x80 && code != 0xFFFE && code != 0xFFFF && (code < 0xD800 || code > 0xDFFF);
        if (isCharacter) codes.insert(code);
    };
    const auto addRange = [&add](const support::CharacterRange& range) {
        add(range.first - 1);
        add(range.first);
        add(range.last);
        add(range.last + 1);
    };
    for (const support::CharacterRange& range : support::kNameStarts)
        addRange(range);
    for (const support::CharacterRange& range : support::kNameOthers)
        addRange(range);
    return codes;
}

// A document with a place for a name; `before` is what of the name stands there already.
struct NamePlace {
    const char* before;
    const char* behind;
};

constexpr NamePlace kPlaces[] = {
    {"<", "/>"},
    {"<a ", "=''/>"},
    {"<?", "?><a/>"},
    {"<!DOCTYPE ", "><a/>"},
    {"<!DOCTYPE a [<!ENTITY ", " ''>]><a/>"},
    {"<!DOCTYPE a [<!ENTITY % ", " ''>]><a/>"},
    {"<!DOCTYPE a [<!NOTATION ", " SYSTEM ''>]><a/>"},
    {"<!DOCTYPE a [<!ELEMENT ", " ANY>]><a/>"},
    {"<!DOCTYPE a [<!ATTLIST a ", " CDATA #IMPLIED>]><a/>"},
};

TEST(StandardModeNames, BeginAndGoOnAtTheBoundariesOfTheRanges) {
    for (const NamePlace& place : kPlaces) {
        for (const char32_t code : Boundaries()) {
            for (const bool isFirst : {true, false}) {
                const std::string name = (isFirst ? "" : "n") + Utf8Of(code) + "m";
                const std::string document = place.before + name + place.behind;
                SCOPED_TRACE(support::Escape(document));
                const StandardReading reading = ReadByStandard(document);
                const bool isName =
                    isFirst ? support::IsNameStart(code) : support::IsNameCharacter(code);
                EXPECT_EQ(reading.message.empty(), isName) << reading.message;
            }
        }
    }
}

TEST(StandardModeNames, AreTheSameInUtf8AndUtf16) {
    for (const char32_t code : Boundaries()) {
        for (const bool isFirst : {true, false}) {
            const std::string name = (isFirst ? "" : "n") + Utf8Of(code);
            SCOPED_TRACE(support::Escape(name));
            const StandardReading reading = support::ReadInForms("<" + name + "/>");
            const bool isName =
                isFirst ? support::IsNameStart(code) : support::IsNameCharacter(code);
            EXPECT_EQ(reading.message.empty(), isName) << reading.message;
            if (isName) {
                EXPECT_EQ(reading.nodes, "<" + support::Escape(name) + "/>");
            } else {
                EXPECT_EQ(reading.line, 1);
                EXPECT_EQ(reading.column, isFirst ? 2 : 3);
            }
        }
    }
}

// Every character below the symbols, and a sample of those above.
TEST(StandardModeNames, AreOfTheCharactersOfTheRanges) {
    constexpr char32_t kSymbols = 0x3100;
    constexpr char32_t kStride = 257;
    for (char32_t code = 0x80; code <= 0x10FFFF; code += code < kSymbols ? 1 : kStride) {
        if (code >= 0xD800 && code <= 0xDFFF) continue;
        const std::string character = Utf8Of(code);
        const StandardReading first = ReadByStandard("<" + character + "/>");
        EXPECT_EQ(first.message.empty(), support::IsNameStart(code))
            << std::hex << std::uint32_t{code};
        const StandardReading second = ReadByStandard("<n " + ("a" + character) + "=''/>");
        EXPECT_EQ(second.message.empty(), support::IsNameCharacter(code))
            << std::hex << std::uint32_t{code};
    }
}

TEST(StandardModeNames, InAsciiHaveTheirOwnFirstCharacters) {
    for (char32_t code = 0x21; code < 0x7F; ++code) {
        const std::string character = Utf8Of(code);
        // These go on otherwise: a tag, a reference in the value, a qualified name.
        if (std::string_view("!/?:<>&=").find(static_cast<char>(code)) != std::string_view::npos) {
            continue;
        }
        SCOPED_TRACE(character);
        EXPECT_EQ(ReadByStandard("<" + character + "/>").message.empty(),
                  support::IsNameStart(code));
        EXPECT_EQ(ReadByStandard("<n" + character + "/>").message.empty(),
                  support::IsNameCharacter(code));
        EXPECT_EQ(ReadByStandard("<n " + character + "=''/>").message.empty(),
                  support::IsNameStart(code));
    }
}

TEST(StandardModeNames, InReferencesAreNames) {
    ExpectAccepted({
        {"<!DOCTYPE a [<!ENTITY \\u{4E2D} 'x'>]><a>&\\u{4E2D};</a>", "<a>x</a>"},
        {"<!DOCTYPE a [<!ENTITY \\u{10400}\\u{B7} 'x'>]><a x='&\\u{10400}\\u{B7};'/>",
         "<a x=\"x\"/>"},
        {"<!DOCTYPE a [<!ENTITY \\u{1200} '&#60;\\u{1200}/>'>]><a>&\\u{1200};</a>",
         "<a><\\u{1200}/></a>"},
    });
    ExpectRefused({
        {"<a>&\\u{B7};</a>", 1, 5, "no first character"},
        {"<a>&e\\u{D7};</a>", 1, 6, "no character of a name"},
        {"<a x='&\\u{300};'/>", 1, 8, "no first character, in a value"},
        {"<a>&-;</a>", 1, 5, "a hyphen"},
        {"<a>&1;</a>", 1, 5, "a digit"},
        {"<a>&.e;</a>", 1, 5, "a full stop"},
    });
}

// A byte above 7F in an encoding of single bytes is the character that it stands for.
TEST(StandardModeNames, InEncodingsOfSingleBytesFollowTheirCharacters) {
    const struct {
        const char* encoding;
        unsigned char byte;
        char32_t code;
    } kCases[] = {
        {"ISO-8859-1", 0xA0, 0xA0},     {"ISO-8859-1", 0xAA, 0xAA},
        {"ISO-8859-1", 0xB5, 0xB5},     {"ISO-8859-1", 0xB7, 0xB7},
        {"ISO-8859-1", 0xBA, 0xBA},     {"ISO-8859-1", 0xBF, 0xBF},
        {"ISO-8859-1", 0xC0, 0xC0},     {"ISO-8859-1", 0xD6, 0xD6},
        {"ISO-8859-1", 0xD7, 0xD7},     {"ISO-8859-1", 0xD8, 0xD8},
        {"ISO-8859-1", 0xF6, 0xF6},     {"ISO-8859-1", 0xF7, 0xF7},
        {"ISO-8859-1", 0xF8, 0xF8},     {"ISO-8859-1", 0xFF, 0xFF},
        {"ISO-8859-1", 0x85, 0x85},     {"windows-1251", 0xC0, 0x410},
        {"windows-1251", 0xFF, 0x44F},  {"windows-1251", 0xB9, 0x2116},
        {"windows-1251", 0xB7, 0xB7},   {"windows-1251", 0xA8, 0x401},
        {"windows-1251", 0x88, 0x20AC}, {"windows-1252", 0x8A, 0x160},
        {"windows-1252", 0xD7, 0xD7},   {"windows-1252", 0xE9, 0xE9},
        {"windows-1252", 0xB7, 0xB7},   {"windows-1252", 0x96, 0x2013},
        {"windows-1250", 0x8A, 0x160},  {"windows-1250", 0xF7, 0xF7},
        {"windows-1254", 0xD0, 0x11E},  {"windows-1257", 0xC0, 0x104},
    };
    for (const auto& c : kCases) {
        const std::string declaration =
            std::string("<?xml version='1.0' encoding='") + c.encoding + "'?>";
        const std::string byte(1, static_cast<char>(c.byte));
        SCOPED_TRACE(support::Escape(declaration + byte));
        for (const int bytesPerRead : {0, 1}) {
            const StandardReading first =
                ReadByStandard(declaration + "<" + byte + "/>", {}, bytesPerRead);
            EXPECT_EQ(first.message.empty(), support::IsNameStart(c.code)) << first.message;
            if (first.message.empty()) {
                EXPECT_EQ(first.nodes, "<" + support::Escape(Utf8Of(c.code)) + "/>");
            }
            const StandardReading second =
                ReadByStandard(declaration + "<n a" + byte + "=''/>", {}, bytesPerRead);
            EXPECT_EQ(second.message.empty(), support::IsNameCharacter(c.code)) << second.message;
        }
    }
}

TEST(StandardModeNames, MayHaveAnyColonsWithoutNamespaces) {
    const StandardOptions plain{false};
    ExpectAccepted(
        {
            {"<:/>", "<:/>"},
            {"<:a/>", "<:a/>"},
            {"<a:/>", "<a:/>"},
            {"<a:b:c x:y:z='1'/>", "<a:b:c x:y:z=\"1\"/>"},
            {"<a:1/>", "<a:1/>"},
            {"<a ::=''/>", "<a ::=\"\"/>"},
            {"<?a:b c?><a/>", "<?a:b c?><a/>"},
            {"<!DOCTYPE a [<!ENTITY e:f 'x'>]><a>&e:f;</a>", "<a>x</a>"},
            {"<!DOCTYPE a [<!NOTATION n:m SYSTEM ''>]><a/>", "<a/>"},
            {"<a xmlns:xmlns='' xmlns:xml='x'/>", "<a xmlns:xmlns=\"\" xmlns:xml=\"x\"/>"},
            {"<xmlns:a/>", "<xmlns:a/>"},
            {"<!DOCTYPE a [<!ELEMENT :a (b:c:d)>]><a/>", "<a/>"},
        },
        plain);
    ExpectRefused(
        {
            {"<a :b='' :b=''/>", 1, kAny, "one name twice"},
            {"<:a></a>", 1, kAny, "another end tag"},
            {"<\\u{B7}:a/>", 1, 2, "no first character"},
        },
        plain);
}

// A tag of which the characters come one at a time, and one of which the name is very long.
TEST(StandardModeNames, OfManyCharactersAreNames) {
    std::string name;
    for (int i = 0; i < 300; ++i)
        name += Utf8Of(0x4E00 + static_cast<char32_t>(i));
    const std::string document = "<" + name + " " + name + "='" + name + "'></" + name + ">";
    const StandardReading reading = support::ReadInForms(document);
    EXPECT_EQ(reading.message, "");
    const std::string shown = support::Escape(name);
    EXPECT_EQ(reading.nodes, "<" + shown + " " + shown + "=\"" + shown + "\"></" + shown + ">");
}

}  // namespace
