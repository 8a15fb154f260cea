// SPDX-License-Identifier: MIT
#include "SheetText.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace {

using Tool::Excerpt;
using Tool::Place;
using Tool::SheetText;

// Returns the line with "|" at the place, and what the place is.
std::string LineAt(SheetText& text, Place place) {
    text.MoveTo(place);
    const Excerpt line = text.Line();
    EXPECT_TRUE(line.found);
    return std::to_string(line.place.line) + ":" + std::to_string(line.place.column) + " " +
           (line.cutBefore ? "..." : "") + line.before + "|" + line.after +
           (line.cutAfter ? "..." : "");
}

}  // namespace

TEST(SheetText, FindsPlaces) {
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
        {"\xFF\x80!", {1, 3}, "1:3 \xFF\x80|!"},
        {"ab", {2, 1}, "1:3 ab|"},  // as far as there is text
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.text);
        SheetText text(c.text);
        EXPECT_EQ(LineAt(text, c.place), c.expected);
    }
}

TEST(SheetText, GoesForwardOnly) {
    SheetText text("ab\r\ncd");
    EXPECT_EQ(LineAt(text, {2, 1}), "2:1 |cd");
    EXPECT_EQ(LineAt(text, {2, 2}), "2:2 c|d");
    EXPECT_EQ(LineAt(text, {1, 1}), "2:2 c|d");
}

TEST(SheetText, KeepsWhatCanBeShownOfALongLine) {
    const std::string line(1'000'000, 'x');
    const std::string sheet = line + "\nabc";
    SheetText text(sheet);
    EXPECT_EQ(LineAt(text, {1, 999'001}),
              "1:999001 ..." + std::string(512, 'x') + "|" + std::string(512, 'x') + "...");
    EXPECT_EQ(LineAt(text, {1, 1'000'001}), "1:1000001 ..." + std::string(512, 'x') + "|");
    EXPECT_EQ(LineAt(text, {2, 2}), "2:2 a|bc");
}

TEST(SheetText, CutsNoCharacters) {
    std::string sheet = "a";
    for (int i = 0; i < 1000; ++i)
        sheet += "\xC3\xA9";
    SheetText text(sheet);
    text.MoveTo({1, 901});
    EXPECT_TRUE(text.Line().before.starts_with("\xC3\xA9"));
    EXPECT_GE(text.Line().before.size(), 510U);
}
