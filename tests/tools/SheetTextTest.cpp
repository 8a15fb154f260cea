// SPDX-License-Identifier: MIT
#include "SheetText.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

using Tool::Excerpt;
using Tool::Place;
using Tool::SheetText;
using Tool::SourceForm;

// Returns the line with "|" at the place, and what the place is.
std::string LineAt(SheetText& text, Place place) {
    text.MoveTo(place);
    const Excerpt line = text.Line();
    EXPECT_TRUE(line.found);
    return std::to_string(line.place.line) + ":" + std::to_string(line.place.column) + " " +
           (line.cutBefore ? "..." : "") + line.before + "|" + line.after +
           (line.cutAfter ? "..." : "");
}

// Hands the bytes over in pieces of `size` bytes.
void TakeInPieces(SheetText& text, std::string_view bytes, std::size_t size) {
    for (std::size_t at = 0; at < bytes.size(); at += size)
        text.Take(bytes.substr(at, size));
}

}  // namespace

TEST(SheetText, FindsPlacesInPiecesOfAnySize) {
    const struct {
        const char* text;
        Place place;
        const char* expected;
    } kCases[] = {
        {"abc", {1, 1}, "1:1 |abc"},
        {"abc", {1, 3}, "1:3 ab|c"},
        {"a\nbc\nd", {2, 2}, "2:2 b|c"},
        {"a\r\nbc\r\nd", {2, 2}, "2:2 b|c"},
        {"a\r\nbc\r\nd", {2, 1}, "2:1 |bc"},
        {"a\rbc\rd", {2, 1}, "2:1 |bc"},
        {"a\fbc\fd", {3, 1}, "3:1 |d"},
        {"a\n\n\rb", {4, 1}, "4:1 |b"},
        {"\xC3\xA9\xE2\x82\xAC\xF0\x9F\x8D\x90!",
         {1, 4},
         "1:4 \xC3\xA9\xE2\x82\xAC\xF0\x9F\x8D\x90|!"},
        {"\xFF\x80!", {1, 3}, "1:3 \xFF\x80|!"},          // the reader has a "?" for each
        {"\xEF\xBB\xBFp", {1, 2}, "1:2 \xEF\xBB\xBF|p"},  // the mark is a character to it
        {"ab", {2, 1}, "1:3 ab|"},                        // as far as there is text
    };
    for (const auto& c : kCases) {
        for (const std::size_t size : {1U, 2U, 3U, 100U}) {
            SCOPED_TRACE(std::string(c.text) + " in pieces of " + std::to_string(size));
            SheetText text(SourceForm::Utf8);
            TakeInPieces(text, c.text, size);
            EXPECT_EQ(LineAt(text, c.place), c.expected);
        }
    }
}

TEST(SheetText, GoesForwardOnly) {
    SheetText text(SourceForm::Utf8);
    text.Take("ab\r");
    EXPECT_EQ(LineAt(text, {2, 1}), "2:1 |");
    text.Take("\ncd");
    EXPECT_EQ(LineAt(text, {2, 1}), "2:1 |cd");
    EXPECT_EQ(LineAt(text, {2, 2}), "2:2 c|d");
    EXPECT_EQ(LineAt(text, {1, 1}), "2:2 c|d");
}

TEST(SheetText, DecodesWhatIsNotUtf8) {
    using std::string_view_literals::operator""sv;
    const struct {
        SourceForm form;
        std::string_view bytes;
    } kCases[] = {
        {SourceForm::Latin1, "\xE9q"sv},
        {SourceForm::Utf16LE, "\xE9\0q\0"sv},
        {SourceForm::Utf16LE, "\xFF\xFE\xE9\0q\0"sv},
        {SourceForm::Utf16LE, "\xFE\xFF\0\xE9\0q"sv},
    };
    for (const auto& c : kCases) {
        SheetText text(c.form);
        text.Take(c.bytes);
        EXPECT_EQ(LineAt(text, {1, 2}), "1:2 \xC3\xA9|q");
    }
}

TEST(SheetText, KeepsWhatCanBeShownOfALongLine) {
    SheetText text(SourceForm::Utf8);
    const std::string piece(100'000, 'x');
    for (long i = 0; i < 10; ++i) {
        text.Take(piece);
        text.MoveTo({1, 100'000 * i + 99'000});
    }
    EXPECT_EQ(LineAt(text, {1, 999'001}),
              "1:999001 ..." + std::string(512, 'x') + "|" + std::string(512, 'x') + "...");
    text.Take("\nabc");
    EXPECT_EQ(LineAt(text, {1, 1'000'001}), "1:1000001 ..." + std::string(512, 'x') + "|");
    EXPECT_EQ(LineAt(text, {2, 2}), "2:2 a|bc");
}
