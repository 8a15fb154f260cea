// SPDX-License-Identifier: MIT

// The scans of the writer beside references that look at one character after the other. This file
// is compiled for each of their forms: 32 bytes at a time, sixteen, and one.

#include "xml/EscapeScan.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace {

namespace detail = Xml::detail;

// RFC 3629, as a table of what the bytes of a sequence may be.
struct Form {
    unsigned char lead[2];
    unsigned char second[2];
    std::size_t length;
};
constexpr Form kForms[] = {{{0xC2, 0xDF}, {0x80, 0xBF}, 2}, {{0xE0, 0xE0}, {0xA0, 0xBF}, 3},
                           {{0xE1, 0xEC}, {0x80, 0xBF}, 3}, {{0xED, 0xED}, {0x80, 0x9F}, 3},
                           {{0xEE, 0xEF}, {0x80, 0xBF}, 3}, {{0xF0, 0xF0}, {0x90, 0xBF}, 4},
                           {{0xF1, 0xF3}, {0x80, 0xBF}, 4}, {{0xF4, 0xF4}, {0x80, 0x8F}, 4}};

bool IsIn(unsigned char byte, const unsigned char (&range)[2]) {
    return byte >= range[0] && byte <= range[1];
}

// The length of the character that a text begins with, or 0.
std::size_t CharacterLength(std::string_view text) {
    const auto at = [text](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    if (at(0) < 0x80) return 1;
    for (const Form& form : kForms) {
        if (!IsIn(at(0), form.lead)) continue;
        if (text.size() < form.length || !IsIn(at(1), form.second)) return 0;
        for (std::size_t i = 2; i < form.length; ++i) {
            if (!IsIn(at(i), {0x80, 0xBF})) return 0;
        }
        return form.length;
    }
    return 0;
}

bool IsBreak(char c) { return c == '\t' || c == '\n' || c == '\r'; }

bool IsForbidden(char c) { return static_cast<unsigned char>(c) < 0x20 && !IsBreak(c); }

bool IsBad(std::string_view text) {
    while (!text.empty()) {
        const std::size_t length = CharacterLength(text);
        if (length == 0 || IsForbidden(text[0])) return true;
        text.remove_prefix(length);
    }
    return false;
}

std::vector<std::size_t> Escapes(std::string_view text, bool breaksArePlain) {
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isMark = std::strchr("<>&\"'", text[i]) != nullptr && text[i] != '\0';
        if (isMark || IsForbidden(text[i]) || (IsBreak(text[i]) && !breaksArePlain)) {
            places.push_back(i);
        }
    }
    return places;
}

std::vector<std::size_t> FoundEscapes(std::string_view text, bool breaksArePlain) {
    std::vector<std::size_t> places;
    detail::EscapeFinder finder(text, breaksArePlain);
    const char* const end = text.data() + text.size();
    for (const char* at = text.data(); at != end;) {
        const char* const found = finder.Next(at);
        if (found == end) break;
        places.push_back(static_cast<std::size_t>(found - text.data()));
        at = found + 1;
    }
    return places;
}

// Runs all scans over a block of exactly the text's size, so that a sanitizer sees each byte that
// is read too far.
void ExpectScans(const std::string& text) {
    const auto block = std::make_unique<char[]>(text.size());
    std::memcpy(block.get(), text.data(), text.size());
    const std::string_view exact(block.get(), text.size());
    const bool isBad = IsBad(text);
    for (const bool breaksArePlain : {false, true}) {
        const std::vector<std::size_t> escapes = Escapes(text, breaksArePlain);
        const detail::TextNeeds needs = detail::ExamineText(exact, breaksArePlain, true);
        ASSERT_EQ(needs.escapes, !escapes.empty());
        ASSERT_EQ(needs.isBad, isBad);
        const detail::TextNeeds unchecked = detail::ExamineText(exact, breaksArePlain, false);
        ASSERT_EQ(unchecked.escapes, !escapes.empty());
        ASSERT_FALSE(unchecked.isBad);
        ASSERT_EQ(FoundEscapes(exact, breaksArePlain), escapes);

        std::vector<unsigned char> copy(text.size() + detail::kCopySlack);
        const bool isPlain = detail::CopyPlain(copy.data(), exact, breaksArePlain);
        ASSERT_EQ(isPlain, escapes.empty() && !isBad);
        if (isPlain && !text.empty()) {
            ASSERT_EQ(std::memcmp(copy.data(), text.data(), text.size()), 0);
        }
    }
}

// Texts of every length up to a few blocks with `part` at each place.
void ExpectScansAround(const std::string& part, std::size_t mostLength) {
    for (std::size_t length = part.size(); length <= mostLength; ++length) {
        for (std::size_t place = 0; place + part.size() <= length; ++place) {
            std::string text(length, 'x');
            text.replace(place, part.size(), part);
            ASSERT_NO_FATAL_FAILURE(ExpectScans(text)) << "length " << length << " at " << place;
        }
    }
}

TEST(EscapeScan, PlainTextsOfEveryLength) {
    for (std::size_t length = 0; length < 400; ++length)
        ASSERT_NO_FATAL_FAILURE(ExpectScans(std::string(length, 'x'))) << length;
}

TEST(EscapeScan, EveryByteAlone) {
    for (int byte = 0; byte < 256; ++byte) {
        for (const std::size_t length : {1u, 3u, 5u, 9u, 17u, 33u, 70u, 131u}) {
            std::string text(length, 'x');
            text[length / 2] = static_cast<char>(byte);
            ASSERT_NO_FATAL_FAILURE(ExpectScans(text)) << byte << " in " << length;
        }
    }
}

TEST(EscapeScan, EveryPlaceOfWhatIsToBeEscaped) {
    for (const char* part : {"<", "&&", "\n", "\r\n", "\x01"})
        ASSERT_NO_FATAL_FAILURE(ExpectScansAround(part, 140)) << part;
}

TEST(EscapeScan, EveryPairOfBytes) {
    for (int first = 0x7F; first < 256; ++first) {
        for (int second = 0; second < 256; ++second) {
            std::string text(40, 'x');
            text[30] = static_cast<char>(first);
            text[31] = static_cast<char>(second);
            ASSERT_NO_FATAL_FAILURE(ExpectScans(text)) << first << ' ' << second;
        }
    }
}

TEST(EscapeScan, EveryLeadWithEdgesOfTheRangesBehindIt) {
    constexpr unsigned char kEdges[] = {'x', 0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0, 0xBF, 0xC0, 0xE1};
    for (int lead = 0x80; lead < 256; ++lead) {
        for (const unsigned char second : kEdges) {
            for (const unsigned char third : kEdges) {
                for (const unsigned char fourth : kEdges) {
                    std::string text(35, 'x');
                    const unsigned char bytes[] = {static_cast<unsigned char>(lead), second, third,
                                                   fourth};
                    for (std::size_t i = 0; i < 4; ++i)
                        text[30 + i] = static_cast<char>(bytes[i]);
                    ASSERT_NO_FATAL_FAILURE(ExpectScans(text))
                        << lead << ' ' << int{second} << ' ' << int{third} << ' ' << int{fourth};
                }
            }
        }
    }
}

TEST(EscapeScan, CharactersAcrossBlocks) {
    for (const char* part : {"\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x8C\xB3", "\xED\xA0\x80",
                             "\xE2\x82", "\xF0\x9F\x8C", "\xF4\x90\x80\x80", "\xC1\xBF"})
        ASSERT_NO_FATAL_FAILURE(ExpectScansAround(part, 100)) << part;
}

TEST(EscapeScan, LongTextsBeyondACopy) {
    for (const std::size_t length : {1023u, 1024u, 1025u, 2047u, 2048u, 5000u}) {
        std::string text;
        while (text.size() < length)
            text += "\xE2\x82\xAC";
        ASSERT_NO_FATAL_FAILURE(ExpectScans(text)) << length;
        ASSERT_NO_FATAL_FAILURE(ExpectScans(text.substr(0, text.size() - 1))) << length;
        ASSERT_NO_FATAL_FAILURE(ExpectScans("x" + text + "&")) << length;
    }
}

TEST(EscapeScan, RandomTexts) {
    const std::vector<std::string> parts = {
        "a", "bcdefgh", "<", "\n", "\t", "\"", "\xC3\xA9", "\xE2\x82\xAC", "\xF0\x9F\x8C\xB3"};
    const std::vector<std::string> bad = {"\x80", "\xE2", "\x01", "\xFF"};
    std::mt19937 random(20260714);
    const auto pick = [&random](const std::vector<std::string>& from) {
        return from[random() % from.size()];
    };
    for (int round = 0; round < 20000; ++round) {
        std::string text;
        for (auto count = random() % 40; count > 0; --count)
            text += random() % 60 == 0 ? pick(bad) : pick(parts);
        ASSERT_NO_FATAL_FAILURE(ExpectScans(text)) << text;
    }
}

}  // namespace
