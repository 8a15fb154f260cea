// SPDX-License-Identifier: MIT

// The scans over runs of characters, beside references that look at one character after the other.
// This file is compiled twice: with the scans of sixteen bytes, and with the portable ones.

#include "support/PaddedText.h"
#include "xml/RunScan.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <random>
#include <string>
#include <string_view>

namespace {

using support::PaddedText;
using std::string_view_literals::operator""sv;
namespace detail = Xml::detail;

constexpr std::size_t kAlignments = 41;

unsigned char ByteAt(std::string_view text, std::size_t i) {
    return static_cast<unsigned char>(text[i]);
}

std::string OneByte(int byte) { return std::string(1, static_cast<char>(byte)); }

// The references.

// How many bytes a lead asks for, whether or not such characters exist.
std::size_t WantedLength(unsigned char lead) {
    if (lead < 0xC0 || lead >= 0xFE) return 1;
    std::size_t length = 0;
    for (unsigned bit = 0x80; (lead & bit) != 0; bit >>= 1)
        ++length;
    return length;
}

// RFC 3629, by decoding the sequence and asking whether its value has no shorter form and is a
// character's.
int ExpectedSequenceLength(std::string_view text, std::size_t i) {
    const unsigned char lead = ByteAt(text, i);
    const std::size_t length = WantedLength(lead);
    if (length == 1) return -1;
    if (text.size() - i < length) return 0;
    if (length > 4) return -1;
    unsigned long code = lead & (0xFFu >> (length + 1));
    for (std::size_t k = 1; k < length; ++k) {
        if ((ByteAt(text, i + k) & 0xC0) != 0x80) return -1;
        code = code << 6 | (ByteAt(text, i + k) & 0x3F);
    }
    constexpr unsigned long kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool isSurrogate = code >= 0xD800 && code <= 0xDFFF;
    if (code < kLeast[length] || code > 0x10FFFF || isSurrogate) return -1;
    return static_cast<int>(length);
}

bool IsExpectedStop(unsigned char byte, std::string_view stops) {
    if (byte < 0x20) return byte != '\t' && byte != '\n' && byte != '\r';
    return stops.find(static_cast<char>(byte)) != std::string_view::npos;
}

std::ptrdiff_t ExpectedStop(std::string_view text, std::string_view stops) {
    std::size_t i = 0;
    while (i < text.size()) {
        int length = 1;
        if (ByteAt(text, i) < 0x80) {
            if (IsExpectedStop(ByteAt(text, i), stops)) break;
        } else {
            length = ExpectedSequenceLength(text, i);
            if (length <= 0) break;
        }
        i += static_cast<std::size_t>(length);
    }
    return static_cast<std::ptrdiff_t>(i);
}

std::ptrdiff_t ExpectedStopInValid(std::string_view text, std::string_view stops) {
    std::size_t i = 0;
    while (i < text.size() && ByteAt(text, i) != 0xFF && !IsExpectedStop(ByteAt(text, i), stops))
        ++i;
    return static_cast<std::ptrdiff_t>(i);
}

bool IsExpectedBlank(char c) { return " \t\r\n"sv.find(c) != std::string_view::npos; }

// Expects of all scans for stops what the references say.
void ExpectStops(std::string_view text, std::size_t before) {
    const PaddedText padded(text, before);
    const unsigned char* const begin = padded.begin();
    const unsigned char* const end = padded.end();
    ASSERT_EQ((padded.Offset(detail::FindStop<'<', '&', ']'>(begin, end))),
              ExpectedStop(text, "<&]"))
        << testing::PrintToString(text);
    ASSERT_EQ((padded.Offset(detail::FindStop<'"', '<', '&'>(begin, end))),
              ExpectedStop(text, "\"<&"))
        << testing::PrintToString(text);
    ASSERT_EQ((padded.Offset(detail::FindStop<'-'>(begin, end))), ExpectedStop(text, "-"))
        << testing::PrintToString(text);
    ASSERT_EQ((padded.Offset(detail::FindStopInValid<'<', '&', ']'>(begin))),
              ExpectedStopInValid(text, "<&]"))
        << testing::PrintToString(text);
    ASSERT_EQ((padded.Offset(detail::FindStopInValid<'?'>(begin))), ExpectedStopInValid(text, "?"))
        << testing::PrintToString(text);
}

// Random texts: mostly whole characters of all lengths, with stops, controls and bad bytes now and
// then.
class RandomTexts {
public:
    std::string Next(std::size_t most) {
        std::string text;
        const std::size_t length = Below(most + 1);
        const std::size_t strange = Below(3) == 0 ? 0 : 4 + Below(40);
        const std::size_t ascii = Below(4);
        while (text.size() < length) {
            if (strange != 0 && Below(strange) == 0) {
                text += OneByte(static_cast<int>(Below(256)));
            } else if (Below(4) <= ascii) {
                text += static_cast<char>('a' + Below(26));
            } else {
                static constexpr std::string_view kCharacters[] = {"\xC2\x80",
                                                                   "\xDF\xBF",
                                                                   "\xC3\xA4",
                                                                   "\xE0\xA0\x80",
                                                                   "\xE2\x82\xAC",
                                                                   "\xED\x9F\xBF",
                                                                   "\xEE\x80\x80",
                                                                   "\xEF\xBF\xBD",
                                                                   "\xF0\x90\x80\x80",
                                                                   "\xF4\x8F\xBF\xBF",
                                                                   " ",
                                                                   "\t",
                                                                   "\r\n"};
                text += kCharacters[Below(std::size(kCharacters))];
            }
        }
        return text;
    }

    std::size_t Below(std::size_t limit) {
        return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_);
    }

private:
    std::mt19937 random_{20260101};
};

TEST(RunScan, ForbiddenControlsAreThoseOfXml) {
    for (int byte = 0; byte < 256; ++byte) {
        const bool isForbidden = byte < 0x20 && byte != 9 && byte != 10 && byte != 13;
        EXPECT_EQ(detail::IsForbiddenControl(static_cast<unsigned char>(byte)), isForbidden)
            << byte;
        const bool isBlank = byte == 0x20 || byte == 9 || byte == 10 || byte == 13;
        EXPECT_EQ(detail::IsBlank(static_cast<unsigned char>(byte)), isBlank) << byte;
    }
}

TEST(RunScan, SequencesOfTwoAndThreeBytesAreJudgedAsRfc3629Says) {
    std::string text = "aaa";
    for (int lead = 0x80; lead < 0x100; ++lead) {
        for (int second = 0; second < 0x100; ++second) {
            for (int third = 0; third < 0x100; ++third) {
                text[0] = static_cast<char>(lead);
                text[1] = static_cast<char>(second);
                text[2] = static_cast<char>(third);
                const auto* const at = reinterpret_cast<const unsigned char*>(text.data());
                for (std::size_t length = 1; length <= 3; ++length) {
                    const int expected =
                        ExpectedSequenceLength(std::string_view(text).substr(0, length), 0);
                    if (detail::SequenceLength(at, at + length) != expected) {
                        FAIL() << lead << ' ' << second << ' ' << third << ", of " << length;
                    }
                }
            }
        }
    }
}

TEST(RunScan, SequencesOfFourBytesAndMoreAreJudgedAsRfc3629Says) {
    constexpr int kBytes[] = {0x00, 0x3C, 0x7F, 0x80, 0x8F, 0x90, 0xBF, 0xC0, 0xFF};
    for (int lead = 0xF0; lead < 0x100; ++lead) {
        for (int second = 0; second < 0x100; ++second) {
            for (const int third : kBytes) {
                for (const int fourth : kBytes) {
                    const std::string text = OneByte(lead) + OneByte(second) + OneByte(third) +
                                             OneByte(fourth) + "\x80\x80";
                    for (std::size_t length = 1; length <= text.size(); ++length) {
                        const PaddedText padded(std::string_view(text).substr(0, length));
                        ASSERT_EQ(detail::SequenceLength(padded.begin(), padded.end()),
                                  ExpectedSequenceLength(text.substr(0, length), 0))
                            << testing::PrintToString(text) << ", of " << length;
                    }
                }
            }
        }
    }
}

TEST(RunScan, EveryByteStopsARunOrNotAtEveryPlace) {
    for (std::size_t before = 0; before < kAlignments; ++before) {
        for (int byte = 0; byte < 256; ++byte) {
            const std::size_t place = (before * 7 + static_cast<std::size_t>(byte)) % 40;
            std::string text(40, 'a');
            text[place] = static_cast<char>(byte);
            ExpectStops(text, before);
        }
    }
    for (std::size_t place = 0; place < 40; ++place) {
        for (int byte = 0; byte < 256; ++byte) {
            std::string text(40, 'a');
            text[place] = static_cast<char>(byte);
            ExpectStops(text, 0);
            // The same behind characters of two and three bytes.
            ExpectStops("\xC3\xA4" + text, 0);
            ExpectStops("\xE2\x82\xAC" + text, 0);
        }
    }
}

TEST(RunScan, RunsOfEveryLengthEndWithTheData) {
    for (std::size_t before = 0; before < kAlignments; ++before) {
        for (std::size_t length = 0; length <= 50; ++length) {
            ExpectStops(std::string(length, 'a'), before);
        }
    }
}

TEST(RunScan, EverySequenceIsJudgedAtTheEdgeOfABlock) {
    std::size_t turn = 0;
    for (int lead = 0x80; lead < 0x100; ++lead) {
        for (int second = 0; second < 0x100; ++second) {
            for (const int third : {0x00, 0x3C, 0x61, 0x7F, 0x80, 0x9F, 0xA0, 0xBF, 0xC2, 0xFF}) {
                // An umlaut first, so that the block is one of mixed text.
                std::string text = "\xC3\xA4";
                text.append(turn++ % 17, 'b');
                text += OneByte(lead) + OneByte(second) + OneByte(third) + "\x80" + "cde<";
                ExpectStops(text, 0);
            }
        }
    }
}

TEST(RunScan, TextsAreCutAtEveryByte) {
    const std::string_view kTexts[] = {
        "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x8D\x80z\xC3\xA4\xE2\x82\xAC\xF0\x9F\x8D\x80 end",
        "\xC3\xA4\xC3\xB6\xC3\xBC\xC3\x9F\xC3\xA4\xC3\xB6\xC3\xBC\xC3\x9F\xC3\xA4\xC3\xB6\xC3\xBC",
        "\xE3\x81\x82\xE3\x81\x84\xE3\x81\x86\xE3\x81\x88\xE3\x81\x8A\xE3\x81\x8B\xE3\x81\x8D",
        "\xF8\x88\x80\x80\x80 five", "\xFC\x84\x80\x80\x80\x80 six"};
    for (const std::string_view text : kTexts) {
        for (std::size_t shift = 0; shift < 20; ++shift) {
            for (std::size_t length = 0; length <= text.size(); ++length) {
                ExpectStops(std::string(shift, 'a') + std::string(text.substr(0, length)), 0);
            }
        }
    }
}

TEST(RunScan, RandomMixturesStopWhereTheReferenceStops) {
    RandomTexts texts;
    for (int i = 0; i < 60000; ++i)
        ExpectStops(texts.Next(120), texts.Below(kAlignments));
}

TEST(RunScan, BlanksAreSkippedFromEveryPlaceAndInEveryNumber) {
    constexpr std::string_view kBlanks = " \t\n\r";
    for (std::size_t before = 0; before < kAlignments; ++before) {
        for (std::size_t count = 0; count <= 40; ++count) {
            std::string text;
            for (std::size_t i = 0; i < count; ++i)
                text += kBlanks[(i * i + before) % 4];
            const PaddedText toTheEnd(text, before);
            ASSERT_EQ(detail::SkipBlanks(toTheEnd.begin()), toTheEnd.end());
            text += "x   ";
            const PaddedText padded(text, before);
            ASSERT_EQ(padded.Offset(detail::SkipBlanks(padded.begin())),
                      static_cast<std::ptrdiff_t>(count));
        }
    }
    for (std::size_t count = 0; count <= 20; ++count) {
        for (int byte = 0; byte < 256; ++byte) {
            const std::string text = std::string(count, ' ') + OneByte(byte) + "x";
            const PaddedText padded(text);
            const auto expected = std::find_if_not(text.begin(), text.end(), IsExpectedBlank);
            ASSERT_EQ(padded.Offset(detail::SkipBlanks(padded.begin())), expected - text.begin())
                << byte;
        }
    }
}

void ExpectShortText(std::string_view text, std::size_t before) {
    int length = -1;
    bool isWhitespace = true;
    for (std::size_t i = 0; i < std::min<std::size_t>(text.size(), 16); ++i) {
        const unsigned char byte = ByteAt(text, i);
        if (byte == '<') length = static_cast<int>(i);
        if (byte == '<' || byte >= 0x80 || IsExpectedStop(byte, "&]")) break;
        isWhitespace = isWhitespace && IsExpectedBlank(text[i]);
    }
    const PaddedText padded(text, before);
    const detail::ShortText found = detail::ScanShortText(padded.begin());
    ASSERT_EQ(found.length, length) << testing::PrintToString(text);
    ASSERT_EQ(found.isWhitespace, length >= 0 && isWhitespace) << testing::PrintToString(text);
}

TEST(RunScan, ShortTextsEndAtALessWithinSixteenBytes) {
    for (std::size_t length = 0; length <= 40; ++length) {
        ExpectShortText(std::string(length, ' ') + "<a>", length);
        ExpectShortText(std::string(length, 'a') + "<a>", length);
        ExpectShortText(std::string(length, 'a'), length);
        for (int byte = 0; byte < 256; ++byte) {
            ExpectShortText(std::string(length, 'a') + OneByte(byte) + "<", 0);
            ExpectShortText(std::string(length, '\n') + OneByte(byte) + "<", 0);
            ExpectShortText(std::string(length, ' ') + "<" + OneByte(byte), 0);
        }
    }
    RandomTexts texts;
    for (int i = 0; i < 20000; ++i) {
        std::string text = texts.Next(20);
        text.insert(texts.Below(text.size() + 1), "<");
        ExpectShortText(text, texts.Below(kAlignments));
    }
}

TEST(RunScan, NamesInABlockEndAtWhatEndsThemInTags) {
    for (std::size_t length = 0; length <= 20; ++length) {
        for (int byte = 0; byte < 256; ++byte) {
            const std::string text = std::string(length, 'n') + OneByte(byte);
            const bool ends = byte <= ' ' || byte == '=' || byte == '/' || byte == '>';
            // What follows the data, a zero, ends it at the latest.
            const std::size_t expected = std::min<std::size_t>(ends ? length : length + 1, 16);
            const PaddedText padded(text, length);
            ASSERT_EQ(detail::NameLengthInBlock(padded.begin()), static_cast<int>(expected))
                << length << ' ' << byte;
        }
    }
    const PaddedText empty(""sv);
    EXPECT_EQ(detail::NameLengthInBlock(empty.end() + 16), 0);  // the last block of the padding
}

TEST(RunScan, NamesArePackedWithZerosBehindThem) {
    const std::string text =
        "\xC3\xA4"
        "bcdefghijklmnopqrstuvwxyz0123456";
    for (std::size_t before = 0; before < kAlignments; ++before) {
        const PaddedText padded(text, before);
        for (std::size_t length = 0; length <= 16; ++length) {
            for (std::size_t start = 0; start + length <= text.size(); ++start) {
                unsigned char bytes[16] = {};
                std::memcpy(bytes, text.data() + start, length);
                const detail::PackedName packed =
                    detail::PackName(padded.begin() + start, static_cast<int>(length));
                ASSERT_EQ(packed, detail::LoadName(bytes)) << start << ' ' << length;
            }
        }
    }
    unsigned char word[8] = {1, 0, 0, 0, 0, 0, 0, 0x80};
    std::uint64_t expected = 0;
    std::memcpy(&expected, word, sizeof word);
    EXPECT_EQ(detail::LoadWord(word), expected);
}

#if defined(ESPALIER_BLOCK_SCAN)

// Expects that a block is called free of doubt only when it is valid, and always when it is made
// of characters of up to three bytes.
void ExpectCheckedBlock(std::string_view text) {
    ASSERT_GE(text.size(), 20u);
    bool isValid = true;
    bool isUsual = true;
    std::size_t i = 0;
    while (i < 16) {
        const int length = ByteAt(text, i) < 0x80 ? 1 : ExpectedSequenceLength(text, i);
        const bool crosses = i + WantedLength(ByteAt(text, i)) > 16;
        if (crosses) break;  // the next block decides
        isValid = isValid && length > 0;
        isUsual = isUsual && ByteAt(text, i) < 0xF0;
        if (length <= 0) break;
        i += static_cast<std::size_t>(length);
    }
    const PaddedText padded(text);
    const detail::BlockCheck check = detail::CheckBlock(detail::ByteBlock(padded.begin()));
    ASSERT_EQ(check.doubtful & ~0xFFFFu, 0u);
    if (check.doubtful == 0) {
        ASSERT_TRUE(isValid) << testing::PrintToString(text);
        ASSERT_EQ(check.whole, static_cast<int>(i)) << testing::PrintToString(text);
    } else if (isValid && isUsual && i >= 14 && ByteAt(text, i) < 0xF0) {
        // What is cut at the end may be wrong already where its second byte shows it.
        const bool cutsWrong = i == 14 && ExpectedSequenceLength(text, i) < 0;
        const bool startsWrong = i < 16 && ByteAt(text, i) < 0xC2;
        ASSERT_TRUE(cutsWrong || startsWrong) << testing::PrintToString(text);
    }
}

TEST(RunScan, BlocksWithoutDoubtAreValid) {
    RandomTexts texts;
    for (int i = 0; i < 60000; ++i) {
        std::string text = texts.Next(40);
        text.append(20, 'a');
        ExpectCheckedBlock(text);
    }
    for (int lead = 0; lead < 0x100; ++lead) {
        for (int second = 0; second < 0x100; ++second) {
            for (std::size_t place = 0; place < 16; ++place) {
                std::string text(24, 'a');
                text[place] = static_cast<char>(lead);
                text[place + 1] = static_cast<char>(second);
                text[place + 2] = '\x80';
                ExpectCheckedBlock(text);
            }
        }
    }
}

#endif

}  // namespace
