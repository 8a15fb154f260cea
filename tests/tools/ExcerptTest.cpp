// SPDX-License-Identifier: MIT
#include "Excerpt.h"

#include <gtest/gtest.h>

#include <string>

using Tool::ColumnCount;
using Tool::Excerpt;
using Tool::FindPlace;
using Tool::Place;
using Tool::ShowExcerpt;

namespace {

// A text that comes in pieces of some length.
class PiecedText final : public Tool::SourceText {
public:
    PiecedText(std::string_view text, std::size_t pieceLength)
        : rest_(text), pieceLength_(pieceLength) {}

    const Tool::MarkupTracker& Start() const override { return start_; }

    std::string_view Next() override {
        const std::string_view piece = rest_.substr(0, pieceLength_);
        rest_.remove_prefix(piece.size());
        return piece;
    }

private:
    std::string_view rest_;
    std::size_t pieceLength_;
    Tool::MarkupTracker start_;
};

Excerpt Find(std::string_view text, Place place, ColumnCount count = ColumnCount::People,
             std::size_t pieceLength = 1000) {
    PiecedText pieces(text, pieceLength);
    return FindPlace(pieces, place, count);
}

}  // namespace

TEST(Excerpt, FindsAPlaceInPiecesOfEveryLength) {
    const std::string text = "<p:a>\r\n  <p:b p:c='1'>\xC3\xA9</p:b>\r\n</p:a>\n";
    for (std::size_t length = 1; length <= text.size(); ++length) {
        SCOPED_TRACE(length);
        // The reader counts three colons less than people do.
        const Excerpt excerpt = Find(text, {2, 15}, ColumnCount::Reader, length);
        ASSERT_TRUE(excerpt.found);
        EXPECT_EQ(excerpt.place, (Place{2, 17}));
        EXPECT_EQ(excerpt.before, "  <p:b p:c='1'>\xC3\xA9");
        EXPECT_EQ(excerpt.after, "</p:b>");
        EXPECT_FALSE(excerpt.cutBefore);
        EXPECT_FALSE(excerpt.cutAfter);
    }
}

TEST(Excerpt, ColumnsBehindTheEndOfALineStandAtItsEnd) {
    const struct {
        Place wanted;
        bool found;
        Place place;
        const char* before;
    } kCases[] = {
        {{1, 4}, true, {1, 4}, "<a>"},  // the line feed itself
        {{1, 9}, true, {1, 4}, "<a>"},  {{2, 1}, true, {2, 1}, ""},
        {{2, 7}, true, {2, 5}, "</a>"},  // the end of the text
        {{3, 1}, false, {}, ""},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(testing::Message() << c.wanted.line << ":" << c.wanted.column);
        const Excerpt excerpt = Find("<a>\n</a>", c.wanted);
        EXPECT_EQ(excerpt.found, c.found);
        if (!c.found) continue;
        EXPECT_EQ(excerpt.place, c.place);
        EXPECT_EQ(excerpt.before, c.before);
        EXPECT_EQ(excerpt.isBehind, c.wanted.column > c.place.column);
    }
}

TEST(Excerpt, NoCaretStandsForAPlaceBehindTheLineOrNone) {
    EXPECT_EQ(ShowExcerpt(Find("<a>\n  <b/>\n", {2, 7})),
              "    2 |   <b/>\n"
              "      |       ^\n");
    EXPECT_EQ(ShowExcerpt(Find("<a>\n  <b/>\n", {2, 8})), "    2 |   <b/>\n");
    EXPECT_EQ(ShowExcerpt(Find("<a>\n  <b/>", {2, 9000})), "    2 |   <b/>\n");
    Excerpt unsure = Find("<a>\n  <b/>\n", {2, 3});
    unsure.isUnsure = true;
    EXPECT_EQ(ShowExcerpt(unsure), "    2 |   <b/>\n");
    // The reader's columns leave colons out.
    EXPECT_FALSE(Find("<p:a>", {1, 5}, ColumnCount::Reader).isBehind);
    EXPECT_TRUE(Find("<p:a>", {1, 6}, ColumnCount::Reader).isBehind);
}

TEST(Excerpt, AnEmptyTextHasAStart) {
    const Excerpt excerpt = Find("", {1, 1});
    EXPECT_TRUE(excerpt.found);
    EXPECT_EQ(ShowExcerpt(excerpt), "");
}

TEST(Excerpt, ShowsTheLineAndACaret) {
    EXPECT_EQ(ShowExcerpt(Find("<a>\n  <b></c>\n", {2, 6})),
              "    2 |   <b></c>\n"
              "      |      ^\n");
}

TEST(Excerpt, LongLineNumbersMoveBothLines) {
    EXPECT_EQ(ShowExcerpt(Find(std::string(1234566, '\n') + "<a>", {1234567, 2})),
              "1234567 | <a>\n"
              "        |  ^\n");
}

TEST(Excerpt, TheCaretCanStandBehindTheLine) {
    EXPECT_EQ(ShowExcerpt(Find("<a", {1, 3})),
              "    1 | <a\n"
              "      |   ^\n");
}

TEST(Excerpt, BlankLinesAreNotShown) {
    EXPECT_EQ(ShowExcerpt(Find("<a>\n \t\n", {2, 1})), "");
    EXPECT_EQ(ShowExcerpt(Find("<a>\n", {2, 1})), "");
}

TEST(Excerpt, TabsAndWideAndCombiningCharactersKeepTheCaretInPlace) {
    const struct {
        const char* text;
        long column;
        const char* expected;
    } kCases[] = {
        {"\t<a>\t&", 6, "    1 | \t<a>\t&\n      | \t   \t^\n"},
        {"\xE6\x9F\xBF<", 2, "    1 | \xE6\x9F\xBF<\n      |   ^\n"},          // two columns
        {"\xF0\x9F\x8D\x90<", 2, "    1 | \xF0\x9F\x8D\x90<\n      |   ^\n"},  // an emoji
        {"e\xCC\x81<", 3, "    1 | e\xCC\x81<\n      |  ^\n"},                 // no column
        {"\x1B[31m\xE2\x80\xAE<", 7, "    1 | \xEF\xBF\xBD[31m\xEF\xBF\xBD<\n      |       ^\n"},
        {"a\x93z", 2, "    1 | a\xEF\xBF\xBDz\n      |  ^\n"},  // no UTF-8
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(ShowExcerpt(Find(c.text, {1, c.column})), c.expected);
    }
}

TEST(Excerpt, LongLinesAreCutAroundTheCaret) {
    std::string text(5000, 'x');
    text[2500] = '!';
    const Excerpt excerpt = Find(text, {1, 2501});
    EXPECT_EQ(ShowExcerpt(excerpt), "    1 | ..." + std::string(45, 'x') + "!" +
                                        std::string(24, 'x') + "...\n      | " +
                                        std::string(48, ' ') + "^\n");
    EXPECT_LT(excerpt.before.size() + excerpt.after.size(), 2500U);
}

TEST(Excerpt, LongLinesAreCutOnTheSideThatIsLong) {
    std::string text(200, 'x');
    text[10] = text[190] = '!';
    EXPECT_EQ(ShowExcerpt(Find(text, {1, 11})),
              "    1 | xxxxxxxxxx!" + std::string(59, 'x') + "...\n      |           ^\n");
    EXPECT_EQ(ShowExcerpt(Find(text, {1, 191})), "    1 | ..." + std::string(60, 'x') +
                                                     "!xxxxxxxxx\n      | " + std::string(63, ' ') +
                                                     "^\n");
}

TEST(Excerpt, LongLinesOfLongCharactersAreCutBetweenCharacters) {
    std::string text;
    for (int i = 0; i < 3000; ++i)
        text += "\xE2\x82\xAC";
    const std::string shown = ShowExcerpt(Find(text, {1, 1501}));
    EXPECT_EQ(shown.find("\xEF\xBF\xBD"), std::string::npos) << shown;
}

TEST(Excerpt, TheCaretCanBeColored) {
    EXPECT_EQ(ShowExcerpt(Find("<a", {1, 1}), "(", ")"),
              "    1 | <a\n"
              "      | (^)\n");
}
