// SPDX-License-Identifier: MIT
#include "encoding/CodecCases.h"
#include "support/Sanitizers.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

// The bulk operations of the code pages against those that take one character at a time.

using encoding_test::AllPages;
using encoding_test::Bytes;
using encoding_test::CharacterByCharacter;
using encoding_test::DoubleBytePages;
using encoding_test::EndOf;
using encoding_test::InOneRun;
using encoding_test::PageCase;
using encoding_test::WindowsPages;
using support::kStride;
using Xml::detail::CharCodec;
using Xml::detail::CodecKind;
using Xml::detail::DecodeEnd;

namespace {

// A text with runs of ASCII and of other characters of many lengths.
Bytes Mixture(const CharCodec& codec) {
    std::mt19937 random(5);  // any fixed number
    Bytes bytes;
    for (unsigned run = 0; run <= 40; ++run) {
        for (unsigned i = 0; i < run; ++i)
            bytes.push_back(static_cast<unsigned char>('a' + i % 26));
        for (unsigned i = 0; i < run * 7 % 40; ++i) {
            if (codec.Kind() == CodecKind::SingleByte) {
                bytes.push_back(static_cast<unsigned char>(0x80 + random() % 0x80));
                continue;
            }
            // Rows that are full: punctuation, and letters of two and three bytes in UTF-8.
            const unsigned char kRows[] = {0xA1, 0xA4, 0xB0, 0xC7};
            bytes.push_back(kRows[random() % std::size(kRows)]);
            bytes.push_back(static_cast<unsigned char>(0xA1 + random() % 83));
            if (i % 5 == 0) bytes.push_back(' ');
        }
    }
    return bytes;
}

void ExpectSame(const CharCodec& codec, const Bytes& source, std::size_t room) {
    const auto expected = CharacterByCharacter(codec, source, room);
    const auto result = InOneRun(codec, source, room);
    ASSERT_TRUE(result == expected)
        << codec.Name() << " room " << room << ", used " << result.consumed << " and not "
        << expected.consumed << ' ' << testing::PrintToString(source);
}

TEST(CodePageRun, GivesTheSameAtEveryCutOfTheSource) {
    for (const PageCase& page : AllPages()) {
        const Bytes whole = Mixture(page.codec);
        for (std::size_t cut = 0; cut <= whole.size(); cut += kStride) {
            const Bytes source(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(cut));
            ASSERT_NO_FATAL_FAILURE(ExpectSame(page.codec, source, 2 * whole.size()));
        }
    }
}

TEST(CodePageRun, GivesTheSameForEveryRoom) {
    for (const PageCase& page : AllPages()) {
        const Bytes source = Mixture(page.codec);
        for (std::size_t room = 0; room <= 2 * source.size() && room <= 1500; room += kStride)
            ASSERT_NO_FATAL_FAILURE(ExpectSame(page.codec, source, room));
    }
}

TEST(CodePageRun, GivesTheSameOnRandomBytes) {
    std::mt19937 random(21);  // any fixed number
    for (const PageCase& page : AllPages()) {
        for (int round = 0; round < 4000; ++round) {
            Bytes source(random() % 100);
            const unsigned ascii = random() % 4;  // how much of it, in thirds
            for (unsigned char& byte : source) {
                byte = random() % 3 < ascii ? static_cast<unsigned char>(random() % 0x80)
                                            : static_cast<unsigned char>(0xA1 + random() % 94);
                if (random() % 200 == 0) byte = static_cast<unsigned char>(random());
            }
            ASSERT_NO_FATAL_FAILURE(ExpectSame(page.codec, source, random() % 300));
        }
    }
}

TEST(CodePageRun, ToUtf8GivesTheSameBytes) {
    for (const PageCase& page : AllPages()) {
        const Bytes source = Mixture(page.codec);
        const auto expected = InOneRun(page.codec, source, 2 * source.size());
        // Once as a whole and once character by character.
        Bytes whole(2 * source.size()), single;
        const unsigned char* position = source.data();
        unsigned char* destination = whole.data();
        page.codec.ToUtf8(position, EndOf(source), destination, whole.data() + whole.size());
        whole.resize(static_cast<std::size_t>(destination - whole.data()));
        EXPECT_EQ(whole, expected.text);
        for (position = source.data(); position < EndOf(source);) {
            unsigned char bytes[4] = {};
            destination = bytes;
            const unsigned char* const end = page.codec.Next(position);
            ASSERT_GT(page.codec.ToUtf8(position, end, destination, bytes + 4), 0);
            ASSERT_EQ(position, end);
            single.insert(single.end(), bytes, destination);
        }
        EXPECT_EQ(single, expected.text);
    }
}

TEST(CodePageRun, StopsExactlyAtInvalidBytes) {
    const Bytes kInvalid[] = {{0x80},       {0xA0},       {0xFF},      {0xA1, 'a'},
                              {0xA1, 0xA0}, {0xA1, 0xFF}, {0xFE, 0xA1}};  // the last row is empty
    for (const PageCase& page : DoubleBytePages()) {
        for (const Bytes& invalid : kInvalid) {
            for (std::size_t before = 0; before <= 40; ++before) {
                Bytes source;
                for (std::size_t i = 0; i < before; ++i)
                    source.insert(source.end(), {0xB0, 0xA1});
                source.insert(source.end(), invalid.begin(), invalid.end());
                source.insert(source.end(), 20, 'y');
                const auto result = InOneRun(page.codec, source, 200);
                ASSERT_EQ(result.end, DecodeEnd::Invalid) << page.codec.Name() << ' ' << before;
                ASSERT_EQ(result.consumed, 2 * before);
                ASSERT_EQ(result.text.size(), 3 * before);
            }
        }
    }
}

TEST(CodePageRun, EncodedLengthIsWhatTheTextTakes) {
    for (const PageCase& page : AllPages()) {
        const Bytes source = Mixture(page.codec);
        for (std::size_t length = 0; length <= source.size(); ++length) {
            const Bytes part(source.begin(), source.begin() + static_cast<std::ptrdiff_t>(length));
            const auto decoded = InOneRun(page.codec, part, 2 * part.size());
            ASSERT_EQ(page.codec.EncodedLength(decoded.text.data(), EndOf(decoded.text)),
                      decoded.consumed)
                << page.codec.Name() << ' ' << length;
        }
    }
}

TEST(CodePageRun, MatchAsciiComparesCharacterByCharacter) {
    for (const PageCase& page : AllPages()) {
        const Bytes text = {'C', 'D', 'A', 'T', 'A', 0xC1, 0xC1};
        const unsigned char* matchedEnd = nullptr;
        EXPECT_TRUE(page.codec.MatchAscii(text.data(), EndOf(text), "CDATA", matchedEnd));
        EXPECT_EQ(matchedEnd, text.data() + 5);
        EXPECT_FALSE(page.codec.MatchAscii(text.data(), EndOf(text), "CDaTA", matchedEnd));
        EXPECT_EQ(matchedEnd, text.data() + 2);
        EXPECT_FALSE(page.codec.MatchAscii(text.data() + 5, EndOf(text), "A", matchedEnd));
        EXPECT_EQ(matchedEnd, text.data() + 5);
        EXPECT_FALSE(page.codec.MatchAscii(text.data(), text.data() + 4, "CDATA", matchedEnd));
        EXPECT_EQ(matchedEnd, text.data() + 4);
    }
}

}  // namespace
