// SPDX-License-Identifier: MIT
#include <espalier/encoding.h>

#include "encoding/Thrown.h"
#include "support/VirtualSlot.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;
using encoding_test::Thrown;

unsigned Length(std::string_view text) { return static_cast<unsigned>(text.size()); }

unsigned ByteCount(const Xml::Encoding& encoding, std::string_view text) {
    return encoding.GetByteCount(text.data(), Length(text));
}

unsigned CharCount(const Xml::Encoding& encoding, const Bytes& bytes) {
    return encoding.GetCharCount(bytes.data(), static_cast<unsigned>(bytes.size()));
}

// What GetBytes() writes into a destination of `capacity` units, which must be all that it touches.
Bytes BytesOf(const Xml::Encoding& encoding, std::string_view text, unsigned capacity,
              std::size_t unitSize = 1) {
    Bytes bytes(capacity * unitSize);
    const unsigned written = encoding.GetBytes(text.data(), Length(text), bytes.data(), capacity);
    EXPECT_LE(written, bytes.size());
    bytes.resize(written);
    return bytes;
}

Bytes PreambleOf(const Xml::Encoding& encoding, unsigned capacity) {
    Bytes bytes(capacity);
    bytes.resize(encoding.GetPreamble(bytes.data(), capacity));
    return bytes;
}

// Message, empty argument, no place.
constexpr char kThrown[] = "Invalid argument: Invalid character in source string () -1:-1";

TEST(Encoding, NamesAndKinds) {
    const Xml::UTF8Encoding utf8;
    const Xml::UnicodeEncoding utf16, utf16Be(true, false, false), utf16Le(false, false, false);
    const Xml::Ucs4UnicodeEncoding ucs4, ucs4Be(true, false, false), ucs4Le(false, false, false);
    const Xml::ASCIIEncoding ascii(false);
    const Xml::Latin1Encoding latin1(false);
    const Xml::SingleByteEncoding own("Own", "x-own", false);
    const struct {
        const Xml::Encoding& encoding;
        const char* encodingName;
        const char* webName;
        bool isSingleByte;
    } kRows[] = {{utf8, "UTF8", "UTF-8", false},          {utf16, "Unicode", "UTF-16", false},
                 {utf16Be, "Unicode", "UTF-16BE", false}, {utf16Le, "Unicode", "UTF-16LE", false},
                 {ucs4, "Unicode", "UTF-16", false},      {ascii, "ASCII", "US-ASCII", true},
                 {latin1, "Latin1", "iso-8859-1", true},  {own, "Own", "x-own", true}};
    for (const auto& row : kRows) {
        EXPECT_EQ(row.encoding.EncodingName(), row.encodingName);
        EXPECT_EQ(row.encoding.WebName(), row.webName);
        EXPECT_EQ(row.encoding.IsSingleByte(), row.isSingleByte);
    }
}

// Deliberate: UCS-4 goes by the web names of UTF-16.
TEST(Encoding, Ucs4HasTheWebNamesOfUtf16) {
    EXPECT_EQ(Xml::Ucs4UnicodeEncoding(true, false, false).WebName(), "UTF-16BE");
    EXPECT_EQ(Xml::Ucs4UnicodeEncoding(false, false, false).WebName(), "UTF-16LE");
    EXPECT_EQ(Xml::Ucs4UnicodeEncoding().WebName(), "UTF-16");
}

TEST(Encoding, SharedEncodingsAreOneEach) {
    Xml::Encoding* (*const kShared[])() = {
        &Xml::Encoding::UTF8,       &Xml::Encoding::Unicode,
        &Xml::Encoding::NativeWide, &Xml::Encoding::BigEndianUnicode,
        &Xml::Encoding::ASCII,      &Xml::Encoding::Latin1};
    std::vector<Xml::Encoding*> seen;
    for (const auto shared : kShared) {
        EXPECT_EQ(shared(), shared());
        for (Xml::Encoding* other : seen)
            EXPECT_NE(shared(), other);
        seen.push_back(shared());
    }
}

TEST(Encoding, SharedEncodingsHaveTheirNamesAndMarks) {
    EXPECT_EQ(Xml::Encoding::UTF8()->WebName(), "UTF-8");
    EXPECT_EQ(PreambleOf(*Xml::Encoding::UTF8(), 8), (Bytes{0xEF, 0xBB, 0xBF}));
    EXPECT_EQ(Xml::Encoding::Unicode()->WebName(), "UTF-16LE");
    EXPECT_EQ(PreambleOf(*Xml::Encoding::Unicode(), 8), (Bytes{0xFF, 0xFE}));
    EXPECT_EQ(Xml::Encoding::NativeWide()->WebName(), "UTF-16LE");
    EXPECT_EQ(PreambleOf(*Xml::Encoding::NativeWide(), 8), (Bytes{0xFF, 0xFE}));
    EXPECT_EQ(Xml::Encoding::BigEndianUnicode()->WebName(), "UTF-16BE");
    EXPECT_EQ(PreambleOf(*Xml::Encoding::BigEndianUnicode(), 8), (Bytes{0xFE, 0xFF}));
    EXPECT_EQ(Xml::Encoding::ASCII()->WebName(), "US-ASCII");
    EXPECT_EQ(PreambleOf(*Xml::Encoding::ASCII(), 8), Bytes());
    EXPECT_EQ(Xml::Encoding::Latin1()->WebName(), "iso-8859-1");
    EXPECT_EQ(PreambleOf(*Xml::Encoding::Latin1(), 8), Bytes());
}

TEST(Encoding, SharedEncodingsDoNotThrow) {
    EXPECT_EQ(CharCount(*Xml::Encoding::UTF8(), {0xFF, 'a'}), 2U);
}

TEST(Encoding, PreamblesNeedTheirRoomAndAreWrittenOnlyWhenWanted) {
    const Xml::UTF8Encoding utf8(true, false);
    const Xml::UnicodeEncoding utf16Be(true, true, false), utf16Le(false, true, false);
    const Xml::Ucs4UnicodeEncoding ucs4Be(true, true, false), ucs4Le(false, true, false);
    const struct {
        const Xml::Encoding& encoding;
        Bytes mark;
    } kRows[] = {{utf8, {0xEF, 0xBB, 0xBF}},
                 {utf16Be, {0xFE, 0xFF}},
                 {utf16Le, {0xFF, 0xFE}},
                 {ucs4Be, {0x00, 0x00, 0xFE, 0xFF}},
                 {ucs4Le, {0xFF, 0xFE, 0x00, 0x00}}};
    for (const auto& row : kRows) {
        for (unsigned capacity = 0; capacity <= 5; ++capacity) {
            const bool fits = capacity >= row.mark.size();
            EXPECT_EQ(PreambleOf(row.encoding, capacity), fits ? row.mark : Bytes())
                << row.encoding.WebName() << ' ' << capacity;
        }
    }
    EXPECT_EQ(PreambleOf(Xml::UTF8Encoding(), 8), Bytes());
    EXPECT_EQ(PreambleOf(Xml::UTF8Encoding(false, true), 8), Bytes());
    EXPECT_EQ(PreambleOf(Xml::UnicodeEncoding(), 8), Bytes());
    EXPECT_EQ(PreambleOf(Xml::UnicodeEncoding(true, false, false), 8), Bytes());
    EXPECT_EQ(PreambleOf(Xml::Ucs4UnicodeEncoding(), 8), Bytes());
    EXPECT_EQ(PreambleOf(Xml::Ucs4UnicodeEncoding(true, false, false), 8), Bytes());
}

TEST(Encoding, CopiesHaveAllSettings) {
    const Xml::UnicodeEncoding source(true, true, true);
    const Xml::UnicodeEncoding copy(source);
    EXPECT_EQ(copy.WebName(), "UTF-16BE");
    EXPECT_EQ(PreambleOf(copy, 2), (Bytes{0xFE, 0xFF}));
    EXPECT_EQ(BytesOf(copy, "a", 4, 2), (Bytes{0, 'a'}));

    Xml::UnicodeEncoding assigned;
    assigned = source;
    EXPECT_EQ(assigned.WebName(), "UTF-16BE");
    EXPECT_EQ(PreambleOf(assigned, 2), (Bytes{0xFE, 0xFF}));

    const Xml::UTF8Encoding strict(false, true);
    Xml::UTF8Encoding lax(true, false);
    EXPECT_EQ(CharCount(lax, {0xFF}), 1U);
    lax = strict;
    EXPECT_EQ(PreambleOf(lax, 3), Bytes());
    EXPECT_EQ(Thrown([&] { CharCount(lax, {0xFF}); }), kThrown);

    Xml::Ucs4UnicodeEncoding ucs4;
    ucs4 = Xml::Ucs4UnicodeEncoding(true, true, false);
    EXPECT_EQ(BytesOf(ucs4, "a", 4, 4), (Bytes{0, 0, 0, 'a'}));
    Xml::ASCIIEncoding ascii(false);
    ascii = Xml::ASCIIEncoding(true);
    EXPECT_EQ(ascii.WebName(), "US-ASCII");
    const Xml::Latin1Encoding latin1(false), latin1Copy(latin1);
    EXPECT_EQ(latin1Copy.EncodingName(), "Latin1");
    const Xml::SingleByteEncoding base(latin1);
    EXPECT_EQ(base.WebName(), "iso-8859-1");
}

TEST(Encoding, StringsGiveTheSameAsCharacters) {
    const astring text("na\xC3\xAFve \xF0\x9F\x98\x80", 11);
    const Xml::UnicodeEncoding utf16;
    EXPECT_EQ(utf16.GetByteCount(text), utf16.GetByteCount(text.c_str(), 11));
    Bytes first(64), second(64);
    EXPECT_EQ(utf16.GetBytes(text, first.data(), 32),
              utf16.GetBytes(text.c_str(), 11, second.data(), 32));
    EXPECT_EQ(first, second);
    const astring withNul("a\0b", 3);
    EXPECT_EQ(Xml::UTF8Encoding().GetByteCount(withNul), 3U);
    EXPECT_EQ(Xml::Latin1Encoding(false).GetByteCount(withNul), 3U);
}

TEST(UTF8Encoding, CopiesTheTextUnchanged) {
    const Xml::UTF8Encoding encoding;
    const std::string text = "a\xC3\xA9\xFF\x80";  // valid or not
    EXPECT_EQ(ByteCount(encoding, text), 5U);
    EXPECT_EQ(BytesOf(encoding, text, 5), (Bytes{'a', 0xC3, 0xA9, 0xFF, 0x80}));
    EXPECT_EQ(encoding.GetBytes(nullptr, 0, nullptr, 0), 0U);
}

// Deliberate: the capacity does not limit the copy.
TEST(UTF8Encoding, GetBytesDoesNotLookAtTheCapacity) {
    unsigned char bytes[4] = {};
    EXPECT_EQ(Xml::UTF8Encoding().GetBytes("abc", 3, bytes, 1), 3U);
    EXPECT_EQ(std::string(bytes, bytes + 4), std::string("abc\0", 4));
}

TEST(UTF8Encoding, GetCharCountGoesByBitPatterns) {
    const Xml::UTF8Encoding lax, strict(false, true);
    const struct {
        Bytes bytes;
        unsigned count;
        bool valid;
    } kRows[] = {
        {{}, 0, true},
        {{'a', 'b'}, 2, true},
        {{0x00, 0x7F}, 2, true},
        {{0xC3, 0xA9}, 1, true},
        {{0xE2, 0x82, 0xAC, 'a'}, 2, true},
        {{0xF0, 0x9F, 0x98, 0x80}, 1, true},
        {{0xC0, 0x80}, 1, true},              // overlong, but the patterns are right
        {{0xED, 0xA0, 0x80}, 1, true},        // a surrogate
        {{0xF7, 0xBF, 0xBF, 0xBF}, 1, true},  // above 10FFFF
        {{0x80}, 1, false},
        {{0xBF, 0xBF}, 2, false},
        {{0xC3}, 1, false},  // cut short
        {{0xE2, 0x82}, 2, false},
        {{0xF0, 0x9F, 0x98}, 3, false},
        {{0xC3, 'a'}, 2, false},
        {{0xE2, 'a', 0x82}, 3, false},
        {{0xE2, 0x82, 'a'}, 3, false},
        {{0xF0, 0x9F, 0x98, 'a'}, 4, false},
        {{0xF8, 0x88, 0x80, 0x80, 0x80}, 5, false},
        {{0xFC, 0x84, 0x80, 0x80, 0x80, 0x80}, 6, false},
        {{0xFE}, 1, false},
        {{0xFF, 'a'}, 2, false},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(testing::PrintToString(row.bytes));
        EXPECT_EQ(CharCount(lax, row.bytes), row.count);
        if (row.valid) {
            EXPECT_EQ(CharCount(strict, row.bytes), row.count);
        } else {
            EXPECT_EQ(Thrown([&] { CharCount(strict, row.bytes); }), kThrown);
        }
    }
}

TEST(UnicodeEncoding, WritesUnitsAndPairs) {
    const Xml::UnicodeEncoding be(true, false, false), le(false, false, false);
    const std::string smile = "\xF0\x9F\x98\x80";
    EXPECT_EQ(BytesOf(be, smile, 2, 2), (Bytes{0xD8, 0x3D, 0xDE, 0x00}));
    EXPECT_EQ(BytesOf(le, smile, 2, 2), (Bytes{0x3D, 0xD8, 0x00, 0xDE}));
    EXPECT_EQ(ByteCount(be, smile), 4U);
    EXPECT_EQ(BytesOf(be, "a\xC3\xA9\xE2\x82\xAC", 3, 2), (Bytes{0, 'a', 0, 0xE9, 0x20, 0xAC}));
    EXPECT_EQ(BytesOf(le, "a\xC3\xA9\xE2\x82\xAC", 3, 2), (Bytes{'a', 0, 0xE9, 0, 0xAC, 0x20}));
    EXPECT_EQ(BytesOf(le, std::string("\0", 1), 3, 2), (Bytes{0, 0}));
    EXPECT_EQ(BytesOf(le, "", 3, 2), Bytes());
}

TEST(UnicodeEncoding, GetBytesStopsWhereTheUnitsEnd) {
    const Xml::UnicodeEncoding encoding;
    const std::string text = "ab\xF0\x9F\x98\x80z";
    const std::size_t kWritten[] = {0, 2, 4, 4, 8, 10, 10};
    for (unsigned capacity = 0; capacity <= 6; ++capacity) {
        EXPECT_EQ(BytesOf(encoding, text, capacity, 2).size(), kWritten[capacity]) << capacity;
    }
}

TEST(UnicodeEncoding, GetBytesWritesIntoUnalignedMemoryAndLongTexts) {
    std::string text;
    for (int i = 0; i < 1000; ++i)
        text += i % 3 == 0 ? "\xF0\x9F\x98\x80" : "x";
    const Xml::UnicodeEncoding encoding(true, false, false);
    Bytes bytes(ByteCount(encoding, text) + 1);
    const unsigned units = static_cast<unsigned>(bytes.size() / 2);
    EXPECT_EQ(encoding.GetBytes(text.data(), Length(text), bytes.data() + 1, units), 2 * units);
    std::size_t at = 1;
    for (int i = 0; i < 1000; ++i) {
        const Bytes expected = i % 3 == 0 ? Bytes{0xD8, 0x3D, 0xDE, 0x00} : Bytes{0, 'x'};
        for (const unsigned char byte : expected)
            ASSERT_EQ(bytes[at++], byte) << i;
    }
    EXPECT_EQ(at, bytes.size());
}

TEST(UnicodeEncoding, GetBytesStopsAtBytesThatCannotBeDecoded) {
    EXPECT_EQ(BytesOf(Xml::UnicodeEncoding(), "a\x80z", 8, 2), (Bytes{'a', 0}));
    EXPECT_EQ(BytesOf(Xml::UnicodeEncoding(), "a\xC3", 8, 2), (Bytes{'a', 0}));
}

TEST(UnicodeEncoding, GetByteCountCountsTwoOrFour) {
    const Xml::UnicodeEncoding encoding;
    const struct {
        std::string_view text;
        unsigned count;
    } kRows[] = {{"", 0},
                 {"abc", 6},
                 {"\xC3\xA9", 2},
                 {"\xEF\xBF\xBF", 2},
                 {"\xF0\x90\x80\x80", 4},
                 {"\xF4\x8F\xBF\xBF", 4},
                 {"a\xF0\x9F\x98\x80z", 8},
                 {"\xF0\x80\x80\x80", 2},  // overlong form of U+0000
                 {"a\xC3", 4},             // a cut character counts as one
                 {"\x80\x80", 4}};         // so does each bad byte
    for (const auto& row : kRows)
        EXPECT_EQ(ByteCount(encoding, row.text), row.count) << row.text;
}

TEST(UnicodeEncoding, GetCharCountTakesPairsTogether) {
    const Xml::UnicodeEncoding le(false, false, false), be(true, false, false);
    const struct {
        Bytes bytes;  // big-endian
        unsigned count;
    } kRows[] = {{{}, 0},
                 {{0, 'a'}, 1},
                 {{0, 'a', 0x20, 0xAC}, 2},
                 {{0xD8, 0x3D, 0xDE, 0x00}, 1},
                 {{0xD8, 0x00, 0xDC, 0x00, 0, 'a'}, 2},
                 {{0xDB, 0xFF, 0xDF, 0xFF, 0, 'a'}, 2},
                 {{0xD8, 0x3D, 0, 'a', 0, 'b'}, 2},  // it takes the next unit, whatever it is
                 {{0xDC, 0x00, 0, 'a'}, 2},
                 {{0xD7, 0xFF, 0, 'a'}, 2},
                 {{0, 'a', 0xD8, 0x3D}, 2}};  // nothing follows
    for (const auto& row : kRows) {
        SCOPED_TRACE(testing::PrintToString(row.bytes));
        EXPECT_EQ(CharCount(be, row.bytes), row.count);
        Bytes swapped = row.bytes;
        for (std::size_t i = 0; i + 1 < swapped.size(); i += 2)
            std::swap(swapped[i], swapped[i + 1]);
        EXPECT_EQ(CharCount(le, swapped), row.count);
    }
}

TEST(Ucs4UnicodeEncoding, WritesFourBytesACharacter) {
    const Xml::Ucs4UnicodeEncoding be(true, false, false), le(false, false, false), standard;
    const std::string text = "a\xF0\x9F\x98\x80";
    EXPECT_EQ(BytesOf(be, text, 2, 4), (Bytes{0, 0, 0, 'a', 0x00, 0x01, 0xF6, 0x00}));
    EXPECT_EQ(BytesOf(le, text, 2, 4), (Bytes{'a', 0, 0, 0, 0x00, 0xF6, 0x01, 0x00}));
    EXPECT_EQ(BytesOf(standard, text, 2, 4), BytesOf(le, text, 2, 4));
    EXPECT_EQ(BytesOf(be, text, 1, 4), (Bytes{0, 0, 0, 'a'}));
    EXPECT_EQ(BytesOf(be, text, 0, 4), Bytes());
}

TEST(Ucs4UnicodeEncoding, CountsAreMultiplesOfFour) {
    const Xml::Ucs4UnicodeEncoding encoding;
    EXPECT_EQ(ByteCount(encoding, "a\xC3\xA9"), 12U);  // an upper bound: the bytes, not characters
    EXPECT_EQ(ByteCount(encoding, ""), 0U);
    EXPECT_EQ(CharCount(encoding, Bytes(8)), 2U);
    EXPECT_EQ(CharCount(encoding, Bytes(11)), 2U);
    EXPECT_EQ(CharCount(encoding, Bytes(3)), 0U);
}

TEST(SingleByteEncoding, CountsCharacters) {
    const Xml::Latin1Encoding encoding(false);
    EXPECT_EQ(ByteCount(encoding, "\xC3\xA9"), 1U);
    EXPECT_EQ(ByteCount(encoding, "na\xC3\xAFve \xE2\x82\xAC"), 7U);
    EXPECT_EQ(ByteCount(encoding, "\xFF\x80"), 2U);
    EXPECT_EQ(CharCount(encoding, Bytes(17)), 17U);
    EXPECT_EQ(CharCount(encoding, {}), 0U);
    // The counting encoding is the shared one, which does not throw.
    EXPECT_EQ(ByteCount(Xml::Latin1Encoding(true), "\xFF"), 1U);
}

TEST(SingleByteEncoding, WritesAByteACharacter) {
    const Xml::Latin1Encoding latin1(false);
    const Xml::ASCIIEncoding ascii(false);
    EXPECT_EQ(BytesOf(latin1, "na\xC3\xAFve\xC3\xBF", 6), (Bytes{'n', 'a', 0xEF, 'v', 'e', 0xFF}));
    EXPECT_EQ(BytesOf(ascii, "a\xC3\xA9", 2), (Bytes{'a', 0xE9}));
    EXPECT_EQ(BytesOf(latin1, std::string("a\0b", 3), 3), (Bytes{'a', 0, 'b'}));
}

// The bytes before and after a destination of `capacity` bytes must stay.
Bytes Written(const Xml::Encoding& encoding, std::string_view text, unsigned capacity,
              unsigned result) {
    Bytes memory(capacity + 8, 0xAA);
    EXPECT_EQ(encoding.GetBytes(text.data(), Length(text), memory.data() + 4, capacity), result);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(memory[i], 0xAA);
        EXPECT_EQ(memory[memory.size() - 1 - i], 0xAA);
    }
    return Bytes(memory.begin() + 4, memory.end() - 4);
}

// Deliberate: a character that cannot be written moves the output back by one byte.
TEST(SingleByteEncoding, AnImpossibleCharacterMovesTheOutputBack) {
    const Xml::Latin1Encoding encoding(false);
    const struct {
        std::string_view text;
        Bytes bytes;
        unsigned result;
    } kRows[] = {
        {"ab\xC4\x80z", {'a', 'z', 0xAA, 0xAA}, 4},  // z replaces b
        {"ab\xC4\x80\xC4\x80yz", {'y', 'z', 0xAA, 0xAA}, 6},
        {"abc\xC4\x80", {'a', 'b', 'c', 0xAA}, 4},
        {"\xC4\x80"
         "abc",
         {'b', 'c', 0xAA, 0xAA},
         4},  // a falls before the start
        {"\xC4\x80\xC4\x80"
         "abc",
         {'c', 0xAA, 0xAA, 0xAA},
         5},
        {"a\x80"
         "b",
         {'b', 0xAA, 0xAA, 0xAA},
         3},                                    // no UTF-8
        {"ab\xC3", {'a', 'b', 0xAA, 0xAA}, 3},  // cut short
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(Written(encoding, row.text, 4, row.result), row.bytes);
    }
}

// Deliberate: the result counts characters, also those for which there is no room.
TEST(SingleByteEncoding, TheResultCountsCharactersWithoutRoom) {
    const Xml::Latin1Encoding encoding(false);
    EXPECT_EQ(Written(encoding, "abcdef", 3, 6), (Bytes{'a', 'b', 'c'}));
    EXPECT_EQ(Written(encoding, "abc", 0, 3), Bytes());
    // Without room the room is what is missed first, so nothing moves back.
    EXPECT_EQ(Written(encoding, "abc\xC4\x80z", 3, 5), (Bytes{'a', 'b', 'c'}));
}

TEST(Encoding, TheVirtualFunctionsHaveTheirPlaces) {
    if (!support::kKnowsVirtualSlots) GTEST_SKIP() << "another ABI";
    using support::VirtualSlot;
    using Xml::Encoding;
    using Count = unsigned (Encoding::*)(const char*, unsigned) const;
    using Write = unsigned (Encoding::*)(const char*, unsigned, unsigned char*, unsigned) const;
    // 0 and 1 are the destructor.
    EXPECT_EQ(VirtualSlot(static_cast<Count>(&Encoding::GetByteCount)), 2);
    EXPECT_EQ(VirtualSlot(static_cast<Write>(&Encoding::GetBytes)), 3);
    EXPECT_EQ(VirtualSlot(&Encoding::GetCharCount), 4);
    EXPECT_EQ(VirtualSlot(&Encoding::GetPreamble), 5);
}

}  // namespace
