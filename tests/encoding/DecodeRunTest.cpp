// SPDX-License-Identifier: MIT
#include "encoding/CharClass.h"
#include "encoding/CodecCases.h"
#include "support/Sanitizers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

// DecodeRun() against the operations that take one character at a time: the same bytes, the same
// stop, whatever the length, the alignment and the room.

using encoding_test::AllCodecs;
using encoding_test::AppendCharacter;
using encoding_test::AppendUnit;
using encoding_test::AppendUtf8;
using encoding_test::Bytes;
using encoding_test::CharacterByCharacter;
using encoding_test::CodecCase;
using encoding_test::Decoded;
using encoding_test::EndOf;
using encoding_test::InOneRun;
using encoding_test::IsSurrogate;
using encoding_test::TextBytes;
using support::kStride;
using Xml::detail::DecodeEnd;

namespace encoding_test {

static void PrintTo(const Decoded& decoded, std::ostream* out) {
    *out << decoded.consumed << " bytes, end " << static_cast<int>(decoded.end) << ", text "
         << testing::PrintToString(decoded.text);
}

}  // namespace encoding_test

namespace {

void ExpectSame(const CodecCase& codecCase, const Bytes& source, std::size_t room) {
    const Decoded expected = CharacterByCharacter(codecCase.codec, source, room);
    ASSERT_EQ(InOneRun(codecCase.codec, source, room), expected)
        << codecCase.label << " room " << room << ' ' << testing::PrintToString(source);
}

// A text with ASCII runs of many lengths, controls and characters of every length.
std::u32string Mixture(const CodecCase& codecCase) {
    const char32_t kSpecial[] = {0xE9, 0x20AC, 0x1F600, 0x7FF, 0x800, 0xFFFF, 0x80, 0x10FFFF};
    std::u32string text;
    for (std::size_t run = 0; run <= 36; ++run) {
        for (std::size_t i = 0; i < run; ++i)
            text += static_cast<char32_t>('a' + i % 26);
        const char32_t special = kSpecial[run % std::size(kSpecial)];
        if (static_cast<int>(special) <= codecCase.lastCode) text += special;
        if (run % 7 == 0) text += std::u32string(run / 2, U'\u00E9');
        if (run % 5 == 0) text += static_cast<char32_t>(run % 0x20);
    }
    return text;
}

TEST(DecodeRun, GivesTheSameAtEveryCutOfTheSource) {
    for (const CodecCase& codecCase : AllCodecs()) {
        const Bytes whole = TextBytes(codecCase, Mixture(codecCase));
        for (std::size_t cut = 0; cut <= whole.size(); cut += kStride) {
            const Bytes source(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(cut));
            ASSERT_NO_FATAL_FAILURE(ExpectSame(codecCase, source, 4 * whole.size()));
        }
    }
}

TEST(DecodeRun, GivesTheSameForEveryRoom) {
    for (const CodecCase& codecCase : AllCodecs()) {
        const Bytes source = TextBytes(codecCase, Mixture(codecCase));
        for (std::size_t room = 0; room <= 2 * source.size() && room <= 1200; room += kStride) {
            ASSERT_NO_FATAL_FAILURE(ExpectSame(codecCase, source, room));
        }
    }
}

TEST(DecodeRun, GivesTheSameAtEveryAlignment) {
    for (const CodecCase& codecCase : AllCodecs()) {
        const Bytes text = TextBytes(codecCase, Mixture(codecCase));
        for (std::size_t shift = 0; shift < 32; ++shift) {
            Bytes shifted(shift, 0xFF);
            shifted.insert(shifted.end(), text.begin(), text.end());
            Bytes out(4 * text.size() + shift);
            const unsigned char* position = shifted.data() + shift;
            unsigned char* destination = out.data() + shift;
            EXPECT_EQ(codecCase.codec.DecodeRun(position, EndOf(shifted), destination,
                                                out.data() + out.size()),
                      DecodeEnd::SourceUsed);
            const Decoded expected = CharacterByCharacter(codecCase.codec, text, 4 * text.size());
            EXPECT_EQ(position, EndOf(shifted));
            EXPECT_EQ(Bytes(out.data() + shift, destination), expected.text) << codecCase.label;
        }
    }
}

TEST(DecodeRun, ConvertsEveryScalarValue) {
    for (const CodecCase& codecCase : AllCodecs()) {
        Bytes source, expected;
        for (int code = 0; code <= codecCase.lastCode; ++code) {
            if (IsSurrogate(code)) continue;
            AppendCharacter(source, codecCase, code);
            AppendUtf8(expected, code);
        }
        const Decoded result = InOneRun(codecCase.codec, source, expected.size());
        EXPECT_EQ(result.end, DecodeEnd::SourceUsed) << codecCase.label;
        EXPECT_EQ(result.consumed, source.size()) << codecCase.label;
        EXPECT_TRUE(result.text == expected) << codecCase.label;
    }
}

// A unit that differs from ASCII in one byte only, or in one bit, must not pass for it.
TEST(DecodeRun, FindsEveryCharacterAmongAscii) {
    constexpr std::size_t kBlock = 16;
    for (const CodecCase& codecCase : AllCodecs()) {
        for (int code = 0x80; code <= std::min(codecCase.lastCode, 0xFFFF); ++code) {
            if (IsSurrogate(code)) continue;
            const std::size_t place = static_cast<std::size_t>(code) % kBlock;
            std::u32string text(2 * kBlock, U'A');
            text[place] = static_cast<char32_t>(code);
            Bytes expected(place, 'A');
            AppendUtf8(expected, code);
            expected.resize(expected.size() + 2 * kBlock - 1 - place, 'A');
            const Bytes source = TextBytes(codecCase, text);
            ASSERT_EQ(InOneRun(codecCase.codec, source, expected.size()).text, expected)
                << codecCase.label << ' ' << std::hex << code;
        }
    }
}

// Bytes that are no character, at every distance from the start of a run.
TEST(DecodeRun, StopsExactlyAtInvalidBytes) {
    for (const CodecCase& codecCase : AllCodecs()) {
        std::vector<Bytes> invalid;
        auto addUnits = [&](std::initializer_list<unsigned> units) {
            Bytes bytes;
            for (const unsigned unit : units) {
                AppendUnit(bytes, unit, codecCase.unit, codecCase.bigEndian);
            }
            invalid.push_back(bytes);
        };
        switch (codecCase.codec.Kind()) {
        case Xml::detail::CodecKind::Utf8:
            invalid = {{0x80},
                       {0xC0, 0x80},
                       {0xE0, 0x80, 0x80},
                       {0xED, 0xA0, 0x80},
                       {0xF4, 0x90, 0x80, 0x80},
                       {0xF8, 0x88, 0x80, 0x80, 0x80},
                       {0xFF}};
            break;
        case Xml::detail::CodecKind::Utf16:
            addUnits({0xDC00, 'a'});
            addUnits({0xDFFF, 0xD800});
            addUnits({0xD800, 'a'});
            addUnits({0xDBFF, 0xDBFF});
            break;
        case Xml::detail::CodecKind::Ucs4:
            addUnits({0xD800});
            addUnits({0xDFFF});
            addUnits({0x110000});
            addUnits({0x80000041});
            addUnits({0xFFFFFFFF});
            break;
        default: continue;
        }
        for (const Bytes& broken : invalid) {
            for (std::size_t before = 0; before <= 40; ++before) {
                Bytes source = TextBytes(codecCase, std::u32string(before, U'x'));
                source.insert(source.end(), broken.begin(), broken.end());
                const Bytes rest = TextBytes(codecCase, std::u32string(20, U'y'));
                source.insert(source.end(), rest.begin(), rest.end());
                const Decoded result = InOneRun(codecCase.codec, source, 4 * source.size());
                ASSERT_EQ(result.end, DecodeEnd::Invalid) << codecCase.label << ' ' << before;
                ASSERT_EQ(result.text, Bytes(before, 'x'));
                ASSERT_EQ(result.consumed, before * static_cast<std::size_t>(codecCase.unit));
                ASSERT_NO_FATAL_FAILURE(ExpectSame(codecCase, source, 4 * source.size()));
            }
        }
    }
}

TEST(DecodeRun, GivesTheSameOnRandomBytes) {
    std::mt19937 random(20);  // any fixed number
    for (const CodecCase& codecCase : AllCodecs()) {
        for (int round = 0; round < 20000; ++round) {
            Bytes source(random() % 48);
            for (unsigned char& byte : source) {
                // Mostly bytes that are often part of something valid.
                const unsigned char kLikely[] = {0, 0, 'a', 0xC3, 0xA9, 0xE2, 0x82, 0xD8, 0xDC};
                byte = random() % 4 != 0 ? kLikely[random() % std::size(kLikely)]
                                         : static_cast<unsigned char>(random());
            }
            ASSERT_NO_FATAL_FAILURE(ExpectSame(codecCase, source, random() % 64));
        }
    }
}

TEST(EncodedLength, IsWhatTheTextTakes) {
    for (const CodecCase& codecCase : AllCodecs()) {
        const std::u32string mixture = Mixture(codecCase);
        for (std::size_t length = 0; length <= mixture.size(); ++length) {
            const std::u32string_view part = std::u32string_view(mixture).substr(0, length);
            Bytes utf8;
            for (const char32_t c : part)
                AppendUtf8(utf8, static_cast<int>(c));
            ASSERT_EQ(codecCase.codec.EncodedLength(utf8.data(), EndOf(utf8)),
                      TextBytes(codecCase, part).size())
                << codecCase.label << ' ' << length;
        }
    }
}

TEST(MatchAscii, ComparesCharacterByCharacter) {
    const struct {
        std::u32string_view text;
        const char* literal;
        std::size_t matched;  // characters
        bool result;
    } kRows[] = {{U"CDATA[", "CDATA", 5, true},
                 {U"CDATA", "CDATA", 5, true},
                 {U"CDAT", "CDATA", 4, false},
                 {U"CDaTA", "CDATA", 2, false},
                 {U"xCDATA", "CDATA", 0, false},
                 {U"", "CDATA", 0, false},
                 {U"", "", 0, true},
                 {U"a", "", 0, true},
                 {U"CD\u00C1TA", "CDATA", 2, false}};
    for (const CodecCase& codecCase : AllCodecs()) {
        for (const auto& row : kRows) {
            SCOPED_TRACE(std::string(codecCase.label) + " " + row.literal);
            const Bytes text = TextBytes(codecCase, row.text);
            const unsigned char* matchedEnd = nullptr;
            EXPECT_EQ(codecCase.codec.MatchAscii(text.data(), EndOf(text), row.literal, matchedEnd),
                      row.result);
            EXPECT_EQ(static_cast<std::size_t>(matchedEnd - text.data()),
                      row.matched * static_cast<std::size_t>(codecCase.unit));
        }
    }
}

TEST(MatchAscii, DoesNotMatchACutCharacter) {
    for (const CodecCase& codecCase : AllCodecs()) {
        if (codecCase.unit == 1) continue;
        Bytes text = TextBytes(codecCase, U"ab");
        text.pop_back();
        const unsigned char* matchedEnd = nullptr;
        EXPECT_FALSE(codecCase.codec.MatchAscii(text.data(), EndOf(text), "ab", matchedEnd));
        EXPECT_EQ(matchedEnd, text.data() + codecCase.unit);
    }
}

// The low byte alone must not decide.
TEST(MatchAscii, LooksAtWholeUnits) {
    for (const CodecCase& codecCase : AllCodecs()) {
        if (codecCase.unit == 1) continue;
        const Bytes text = TextBytes(codecCase, U"\u0141");  // 0x41 is A
        const unsigned char* matchedEnd = nullptr;
        EXPECT_FALSE(codecCase.codec.MatchAscii(text.data(), EndOf(text), "A", matchedEnd));
        EXPECT_EQ(matchedEnd, text.data());
    }
}

}  // namespace
