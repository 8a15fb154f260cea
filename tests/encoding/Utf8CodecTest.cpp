// SPDX-License-Identifier: MIT
#include "encoding/CharClass.h"
#include "encoding/CodecCases.h"
#include "encoding/Codecs.h"
#include "encoding/Utf8.h"
#include "support/VirtualSlot.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <string>

using encoding_test::AppendUtf8;
using encoding_test::Bytes;
using encoding_test::EndOf;
using encoding_test::IsSurrogate;
using Xml::detail::CharCodec;
using Xml::detail::ClassOfScalarValue;
using Xml::detail::Utf8Codec;

namespace {

const CharCodec& codec = Utf8Codec();

int ClassOf(const Bytes& bytes) { return codec.ClassAt(bytes.data(), EndOf(bytes)); }
int Decoded(const Bytes& bytes) { return codec.Decode(bytes.data(), EndOf(bytes)); }

TEST(Utf8Codec, IsNamedUtf8) {
    EXPECT_STREQ(codec.Name(), "UTF-8");
    EXPECT_EQ(codec.Kind(), Xml::detail::CodecKind::Utf8);
}

TEST(Utf8Codec, ClassOfCodeKnowsAsciiOnly) {
    for (int code = 1; code < 128; ++code) {
        const Bytes byte{static_cast<unsigned char>(code)};
        EXPECT_EQ(codec.ClassOfCode(code), ClassOf(byte)) << code;
    }
    EXPECT_EQ(codec.ClassOfCode('<'), 9);
    for (const int code : {-1, 0, 128, 0xE9, 0x4E00, 0x10FFFF}) {
        EXPECT_EQ(codec.ClassOfCode(code), 2) << code;
    }
}

// The well-formed byte sequences of Unicode 3.1 and later, table 3-7: lead, range of the second.
bool SecondByteFits(int lead, int second) {
    if (lead >= 0xC2 && lead <= 0xDF) return second >= 0x80 && second <= 0xBF;
    if (lead == 0xE0) return second >= 0xA0 && second <= 0xBF;
    if (lead == 0xED) return second >= 0x80 && second <= 0x9F;
    if (lead >= 0xE1 && lead <= 0xEF) return second >= 0x80 && second <= 0xBF;
    if (lead == 0xF0) return second >= 0x90 && second <= 0xBF;
    if (lead == 0xF4) return second >= 0x80 && second <= 0x8F;
    if (lead >= 0xF1 && lead <= 0xF3) return second >= 0x80 && second <= 0xBF;
    return false;
}

int AnnouncedLength(int lead) {
    if (lead < 0xC0 || lead > 0xFD) return 1;
    if (lead < 0xE0) return 2;
    if (lead < 0xF0) return 3;
    if (lead < 0xF8) return 4;
    return lead < 0xFC ? 5 : 6;
}

int ReferenceValue(const Bytes& bytes, int length) {
    int value = bytes[0] % (1 << (7 - length));
    for (int i = 1; i < length; ++i)
        value = value * 64 + bytes[static_cast<std::size_t>(i)] % 64;
    return value;
}

TEST(Utf8Codec, ClassAtJudgesEveryPairOfFirstTwoBytes) {
    for (int lead = 0x80; lead <= 0xFF; ++lead) {
        const int length = AnnouncedLength(lead);
        for (int second = 0; second <= 0xFF; ++second) {
            Bytes bytes{static_cast<unsigned char>(lead),
                        static_cast<unsigned char>(second),
                        0x80,
                        0xBF,
                        0x80,
                        0x80};
            const bool valid = SecondByteFits(lead, second);
            const int expected = valid ? ClassOfScalarValue(ReferenceValue(bytes, length)) : 1;
            ASSERT_EQ(ClassOf(bytes), expected) << std::hex << lead << ' ' << second;
        }
    }
}

TEST(Utf8Codec, ClassAtJudgesEveryLaterByte) {
    const Bytes kSequences[] = {{0xE2, 0x82, 0xAC}, {0xF0, 0x9F, 0x98, 0x80}};
    for (const Bytes& sequence : kSequences) {
        ASSERT_EQ(ClassOf(sequence), 33);
        for (std::size_t place = 2; place < sequence.size(); ++place) {
            for (int byte = 0; byte <= 0xFF; ++byte) {
                Bytes changed = sequence;
                changed[place] = static_cast<unsigned char>(byte);
                const bool valid = byte >= 0x80 && byte <= 0xBF;
                ASSERT_EQ(ClassOf(changed) != 1, valid) << place << ' ' << byte;
            }
        }
    }
}

TEST(Utf8Codec, ClassAtGivesEndAndCutCharacters) {
    const Bytes nothing;
    EXPECT_EQ(ClassOf(nothing), 0);
    for (int lead = 0xC0; lead <= 0xFD; ++lead) {
        Bytes bytes{static_cast<unsigned char>(lead)};
        for (int length = 1; length < AnnouncedLength(lead); ++length, bytes.push_back(0x80)) {
            EXPECT_EQ(ClassOf(bytes), 2) << std::hex << lead << ' ' << length;
        }
    }
}

TEST(Utf8Codec, ClassAtRefusesFormsOfFiveAndSixBytes) {
    for (int lead = 0xF8; lead <= 0xFD; ++lead) {
        Bytes bytes{static_cast<unsigned char>(lead), 0x88, 0x80, 0x80, 0x80, 0x80};
        bytes.resize(static_cast<std::size_t>(AnnouncedLength(lead)));
        EXPECT_EQ(ClassOf(bytes), 1) << std::hex << lead;
        bytes.pop_back();
        EXPECT_EQ(ClassOf(bytes), 2) << std::hex << lead;
    }
}

TEST(Utf8Codec, ClassAtRefusesContinuationBytesAndFeFf) {
    for (int byte = 0x80; byte <= 0xBF; ++byte) {
        EXPECT_EQ(ClassOf({static_cast<unsigned char>(byte)}), 1) << byte;
    }
    EXPECT_EQ(ClassOf({0xFE}), 1);
    EXPECT_EQ(ClassOf({0xFF}), 1);
}

TEST(Utf8Codec, EveryScalarValueIsClassifiedAndDecoded) {
    for (int code = 0x80; code <= 0x10FFFF; ++code) {
        Bytes bytes;
        AppendUtf8(bytes, code);
        const int expected = IsSurrogate(code) ? 1 : ClassOfScalarValue(code);
        ASSERT_EQ(ClassOf(bytes), expected) << std::hex << code;
        ASSERT_EQ(Decoded(bytes), code) << std::hex << code;
        ASSERT_EQ(codec.ClassOfScalar(code), ClassOfScalarValue(code)) << std::hex << code;
    }
}

TEST(Utf8Codec, DecodeValidatesNothing) {
    const struct {
        Bytes bytes;
        int code;
    } kRows[] = {
        {{0x00}, 0},
        {{0x7F}, 0x7F},
        {{0xC0, 0x80}, 0},     // overlong
        {{0xC3, 0x29}, 0xE9},  // the second byte is no continuation; its low six bits count
        {{0xED, 0xA0, 0x80}, 0xD800},
        {{0xF7, 0xBF, 0xBF, 0xBF}, 0x1FFFFF},
        {{0xF8, 0x88, 0x80, 0x80, 0x80}, 0x200000},
        {{0xFD, 0xBF, 0xBF, 0xBF, 0xBF, 0xBF}, 0x7FFFFFFF},
        {{0x80}, -1},
        {{0xBF, 0x80}, -1},
        {{0xFE, 0x80, 0x80, 0x80, 0x80, 0x80, 0x80}, -1},
        {{0xFF}, -1},
        {{}, -1},
        {{0xC3}, -1},
        {{0xE2, 0x82}, -1},
        {{0xF0, 0x9F, 0x98}, -1},
        {{0xF8, 0x88, 0x80, 0x80}, -1},
        {{0xFC, 0x84, 0x80, 0x80, 0x80}, -1},
    };
    for (const auto& row : kRows)
        EXPECT_EQ(Decoded(row.bytes), row.code) << row.code;
}

// Deliberate: a longer form wants a spare byte of room.
TEST(Utf8Codec, EncodeWantsASpareByteOfRoomForLongerForms) {
    const struct {
        int code, length, room;
    } kRows[] = {{1, 1, 1},      {0x7F, 1, 1},    {0x80, 2, 3},    {0x7FF, 2, 3},  {0x800, 3, 4},
                 {0xFFFF, 3, 4}, {0x10000, 4, 5}, {0xFFFFF, 4, 5}, {0xD800, 3, 4}, {0xFFFE, 3, 4}};
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.code);
        Bytes expected;
        AppendUtf8(expected, row.code);
        for (int room = 0; room <= 6; ++room) {
            Bytes out(8, 0xAA);
            const int written = codec.Encode(row.code, out.data(), out.data() + room);
            EXPECT_EQ(written, room >= row.room ? row.length : -1) << room;
            if (written < 0) {
                EXPECT_EQ(out, Bytes(8, 0xAA));
                continue;
            }
            ASSERT_EQ(expected.size(), static_cast<std::size_t>(written));
            EXPECT_TRUE(std::equal(expected.begin(), expected.end(), out.begin()));
            EXPECT_EQ(out[static_cast<std::size_t>(written)], 0xAA);
        }
    }
}

// Deliberate: the last plane cannot be written.
TEST(Utf8Codec, EncodeRefusesTheLastPlane) {
    unsigned char out[8];
    for (const int code : {0x100000, 0x10FFFD, 0x10FFFF, 0x110000, 0x7FFFFFFF}) {
        EXPECT_EQ(codec.Encode(code, out, out + 8), -1) << std::hex << code;
    }
}

TEST(Utf8Codec, EncodeWritesNothingForCodesBelowOne) {
    unsigned char out[8] = {0xAA};
    for (const int code : {0, -1, -1000}) {
        EXPECT_EQ(codec.Encode(code, out, out + 8), 0) << code;
        EXPECT_EQ(codec.Encode(code, out, out), 0) << code;
    }
    EXPECT_EQ(out[0], 0xAA);
}

TEST(Utf8Codec, NextGoesByTheLeadByte) {
    unsigned char bytes[8] = {};
    for (int lead = 0; lead <= 0xFF; ++lead) {
        bytes[0] = static_cast<unsigned char>(lead);
        EXPECT_EQ(codec.Next(bytes) - bytes, AnnouncedLength(lead)) << std::hex << lead;
    }
}

TEST(Utf8Codec, IsCharDecodesUpToSixBytes) {
    const unsigned char euro[6] = {0xE2, 0x82, 0xAC};
    EXPECT_TRUE(codec.IsChar(euro, 0x20AC));
    EXPECT_FALSE(codec.IsChar(euro, 0x20AD));
    const unsigned char six[6] = {0xFD, 0xBF, 0xBF, 0xBF, 0xBF, 0xBF};
    EXPECT_TRUE(codec.IsChar(six, 0x7FFFFFFF));
    const unsigned char ascii[6] = {'x'};
    EXPECT_TRUE(codec.IsChar(ascii, 'x'));
    const unsigned char broken[6] = {0x80};
    EXPECT_TRUE(codec.IsChar(broken, -1));
}

TEST(Utf8Codec, ToUtf8CopiesWholeSequencesThatFit) {
    const Bytes text{'a', 0xC3, 0xA9, 0xE2, 0x82, 0xAC, 0xF0, 0x9F, 0x98, 0x80, 'z'};
    const std::size_t kStarts[] = {0, 1, 3, 6, 10, 11};
    for (std::size_t cut = 0; cut <= text.size(); ++cut) {
        for (std::size_t room = 0; room <= text.size(); ++room) {
            const std::size_t limit = std::min(cut, room);
            const std::size_t* after =
                std::upper_bound(std::begin(kStarts), std::end(kStarts), limit);
            const std::size_t expected = *(after - 1);
            Bytes out(text.size() + 1, 0xAA);
            const unsigned char* position = text.data();
            unsigned char* destination = out.data();
            const int written =
                codec.ToUtf8(position, text.data() + cut, destination, out.data() + room);
            ASSERT_EQ(static_cast<std::size_t>(written), expected) << cut << ' ' << room;
            ASSERT_EQ(position, text.data() + expected);
            ASSERT_EQ(destination, out.data() + expected);
            ASSERT_EQ(std::memcmp(out.data(), text.data(), expected), 0);
            ASSERT_EQ(out[expected], 0xAA);
        }
    }
}

TEST(Utf8Codec, ToUtf8DoesNotValidate) {
    const Bytes text{0x80, 0xC0, 0x80, 0xED, 0xA0, 0x80, 0xFF, 0xFC, 1, 2, 3, 4, 5};
    Bytes out(32);
    const unsigned char* position = text.data();
    unsigned char* destination = out.data();
    EXPECT_EQ(codec.ToUtf8(position, EndOf(text), destination, out.data() + out.size()), 13);
    EXPECT_EQ(position, EndOf(text));
    out.resize(13);
    EXPECT_EQ(out, text);
}

TEST(Utf8Codec, ToUtf16WritesUnitsAndPairs) {
    const Bytes text{'a', 0xC3, 0xA9, 0xE2, 0x82, 0xAC, 0xF0, 0x9F, 0x98, 0x80, 'z'};
    const std::u16string expected = u"a\u00E9\u20AC\xD83D\xDE00z";
    const int kConsumed[] = {0, 1, 3, 6, 6, 10, 11};  // by room: a pair is not taken apart
    const int kUnits[] = {0, 1, 2, 3, 3, 5, 6};
    for (int room = 0; room <= 6; ++room) {
        std::u16string out(7, u'\xAAAA');
        const unsigned char* position = text.data();
        char16_t* destination = out.data();
        EXPECT_EQ(codec.ToUtf16(position, EndOf(text), destination, out.data() + room),
                  kUnits[room]);
        EXPECT_EQ(position - text.data(), kConsumed[room]) << room;
        EXPECT_EQ(destination - out.data(), kUnits[room]);
        const auto units = static_cast<std::size_t>(kUnits[room]);
        EXPECT_EQ(out.substr(0, units), expected.substr(0, units));
        EXPECT_EQ(out[units], u'\xAAAA');
    }
}

TEST(Utf8Codec, ToUcs4WritesOneUnitACharacter) {
    const Bytes text{'a', 0xC3, 0xA9, 0xE2, 0x82, 0xAC, 0xF0, 0x9F, 0x98, 0x80, 'z'};
    const std::u32string expected = U"a\u00E9\u20AC\U0001F600z";
    const int kConsumed[] = {0, 1, 3, 6, 10, 11};
    for (int room = 0; room <= 5; ++room) {
        std::u32string out(6, U'\xAAAA');
        const unsigned char* position = text.data();
        char32_t* destination = out.data();
        EXPECT_EQ(codec.ToUcs4(position, EndOf(text), destination, out.data() + room), room);
        EXPECT_EQ(position - text.data(), kConsumed[room]);
        EXPECT_EQ(destination - out.data(), room);
        EXPECT_EQ(out.substr(0, static_cast<std::size_t>(room)),
                  expected.substr(0, static_cast<std::size_t>(room)));
        EXPECT_EQ(out[static_cast<std::size_t>(room)], U'\xAAAA');
    }
}

TEST(Utf8Codec, WideConversionsStopAtWhatCannotBeDecoded) {
    const Bytes kTails[] = {{0x80}, {0xFF}, {0xC3}, {0xE2, 0x82}, {0xF0, 0x9F, 0x98}};
    for (const Bytes& tail : kTails) {
        Bytes text{'a', 'b'};
        text.insert(text.end(), tail.begin(), tail.end());
        char16_t units[8];
        char16_t* unitsEnd = units;
        const unsigned char* position = text.data();
        EXPECT_EQ(codec.ToUtf16(position, EndOf(text), unitsEnd, units + 8), 2);
        EXPECT_EQ(position, text.data() + 2);
        char32_t wide[8];
        char32_t* wideEnd = wide;
        position = text.data();
        EXPECT_EQ(codec.ToUcs4(position, EndOf(text), wideEnd, wide + 8), 2);
        EXPECT_EQ(position, text.data() + 2);
    }
}

TEST(Utf8Codec, ToUtf16StopsAtValuesThatHaveNoPair) {
    const Bytes text{'a', 0xF4, 0x90, 0x80, 0x80};  // 110000
    char16_t units[8];
    char16_t* unitsEnd = units;
    const unsigned char* position = text.data();
    EXPECT_EQ(codec.ToUtf16(position, EndOf(text), unitsEnd, units + 8), 1);
    EXPECT_EQ(position, text.data() + 1);
}

TEST(CharCodec, TheVirtualFunctionsHaveTheirPlaces) {
    if (!support::kKnowsVirtualSlots) GTEST_SKIP() << "another ABI";
    using support::VirtualSlot;
    using Xml::detail::CharCodec;
    // 0 and 1 are the destructor.
    EXPECT_EQ(VirtualSlot(&CharCodec::ClassOfCode), 2);
    EXPECT_EQ(VirtualSlot(&CharCodec::ClassAt), 3);
    EXPECT_EQ(VirtualSlot(&CharCodec::Decode), 4);
    EXPECT_EQ(VirtualSlot(&CharCodec::Encode), 5);
    EXPECT_EQ(VirtualSlot(&CharCodec::Next), 6);
    EXPECT_EQ(VirtualSlot(&CharCodec::IsChar), 7);
    EXPECT_EQ(VirtualSlot(&CharCodec::MatchAscii), 8);
    EXPECT_EQ(VirtualSlot(&CharCodec::ToUtf8), 9);
    EXPECT_EQ(VirtualSlot(&CharCodec::ToUtf16), 10);
    EXPECT_EQ(VirtualSlot(&CharCodec::ToUcs4), 11);
}

}  // namespace
