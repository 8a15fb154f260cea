// SPDX-License-Identifier: MIT

// The counter of lines and columns, beside one that looks at byte after byte.

#include "xml/PlaceCounter.h"
#include "xml/RunScan.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <limits>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace {

using Xml::detail::Place;
using Xml::detail::PlaceCounter;

// A text with the byte before it, which the counter looks at, and the zeros behind it.
class Text {
public:
    explicit Text(std::string_view text, unsigned char byteBefore = 0)
        : store_(std::make_unique<unsigned char[]>(1 + text.size() + Xml::detail::kScanPadding)),
          size_(text.size()) {
        store_[0] = byteBefore;
        if (size_ > 0) std::memcpy(store_.get() + 1, text.data(), size_);
    }

    const unsigned char* At(std::size_t i) const { return store_.get() + 1 + i; }
    std::size_t Size() const { return size_; }

private:
    std::unique_ptr<unsigned char[]> store_;
    std::size_t size_;
};

// The places of all positions of a text, the one behind it included. `colons` do not count.
std::vector<Place> ExpectedPlaces(std::string_view text, const std::vector<std::size_t>& colons,
                                  Place place = {1, 1}) {
    std::vector<Place> places = {place};
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto byte = static_cast<unsigned char>(text[i]);
        const bool isSecondOfPair = byte == '\n' && i > 0 && text[i - 1] == '\r';
        if (byte == '\r' || (byte == '\n' && !isSecondOfPair)) {
            ++place.line;
            place.column = 1;
        } else if (byte != '\n' && (byte < 0x80 || byte > 0xBF) &&
                   std::find(colons.begin(), colons.end(), i) == colons.end()) {
            ++place.column;
        }
        places.push_back(place);
    }
    return places;
}

void ExpectPlace(Place place, Place expected, std::string_view text, std::size_t i) {
    ASSERT_EQ(place.line, expected.line) << testing::PrintToString(text) << " at " << i;
    ASSERT_EQ(place.column, expected.column) << testing::PrintToString(text) << " at " << i;
}

// Expects all places from `from` on.
void ExpectPlaces(const PlaceCounter& counter, const Text& copy, std::string_view text,
                  const std::vector<Place>& expected, std::size_t from) {
    for (std::size_t i = from; i <= text.size(); ++i)
        ExpectPlace(counter.At(copy.At(i)), expected[i], text, i);
}

TEST(PlaceCounter, StartsAtLineOneAndColumnOne) {
    const Text text("ab");
    PlaceCounter counter;
    counter.Start(text.At(0));
    ExpectPlace(counter.At(text.At(0)), {1, 1}, "ab", 0);
    ExpectPlace(counter.At(text.At(1)), {1, 2}, "ab", 1);
    EXPECT_EQ(counter.Anchor(), text.At(0));
    counter.Start(text.At(1), {7, 9});
    ExpectPlace(counter.At(text.At(2)), {7, 10}, "ab", 2);
}

TEST(PlaceCounter, AllShortTextsAdvancedAtEveryPairOfPlaces) {
    constexpr std::string_view kPieces[] = {"a", "\r", "\n", "\xC3\xA4", ":"};
    for (int number = 0; number < 5 * 5 * 5 * 5 * 5; ++number) {
        std::string text;
        std::vector<std::size_t> colons;
        for (int rest = number, i = 0; i < 5; rest /= 5, ++i) {
            const std::string_view piece = kPieces[rest % 5];
            if (piece == ":") colons.push_back(text.size());
            text += piece;
        }
        const Text copy(text);
        const std::vector<Place> expected = ExpectedPlaces(text, colons);
        for (std::size_t first = 0; first <= text.size(); ++first) {
            for (std::size_t second = first; second <= text.size(); ++second) {
                PlaceCounter counter;
                counter.Start(copy.At(0));
                for (const std::size_t colon : colons)
                    counter.SkipColon(copy.At(colon));
                counter.Advance(copy.At(first));
                counter.Advance(copy.At(second));
                ASSERT_EQ(counter.Anchor(), copy.At(second));
                ExpectPlaces(counter, copy, text, expected, second);
            }
        }
    }
}

std::string RandomText(std::mt19937& random, std::size_t length, unsigned breaks) {
    static constexpr std::string_view kPieces[] = {"\xC3\xA4", "\xE2\x82\xAC", "\xF0\x9F\x8D\x80",
                                                   "\r\n",     "\n",           "\r"};
    std::string text;
    while (text.size() < length) {
        const auto choice = random() % 1000;
        if (choice < breaks) {
            text += kPieces[random() % std::size(kPieces)];
        } else {
            text += choice % 50 == 0 ? ':' : 'a';
        }
    }
    return text;
}

TEST(PlaceCounter, RandomTextsOfAllSizes) {
    std::mt19937 random(20260102);
    for (int run = 0; run < 300; ++run) {
        // More than the 255 blocks that are counted together, too.
        const std::size_t length = run % 10 == 0 ? 4000 + random() % 5000 : random() % 300;
        const std::string text = RandomText(random, length, run % 3 == 0 ? 1 : 200);
        const Text copy(text);
        std::vector<std::size_t> colons;
        for (std::size_t i = 0; i < text.size() && colons.size() < 500; ++i) {
            if (text[i] == ':' && random() % 2 == 0) colons.push_back(i);
        }
        const std::vector<Place> expected = ExpectedPlaces(text, colons);
        PlaceCounter counter;
        counter.Start(copy.At(0));
        for (const std::size_t colon : colons)
            counter.SkipColon(copy.At(colon));
        for (std::size_t i = 0; i <= text.size(); i += 1 + random() % (1 + length / 4)) {
            ExpectPlace(counter.At(copy.At(i)), expected[i], text, i);
            ExpectPlace(counter.At(copy.At(text.size())), expected[text.size()], text, i);
            counter.Advance(copy.At(i));
        }
    }
}

TEST(PlaceCounter, GoesOnWhereTheBytesHaveMoved) {
    std::mt19937 random(20260103);
    for (int run = 0; run < 500; ++run) {
        const std::string text = RandomText(random, 60, 300);
        const std::vector<Place> expected = ExpectedPlaces(text, {});
        const Text whole(text);
        PlaceCounter counter;
        counter.Start(whole.At(0));
        const std::size_t split = random() % (text.size() + 1);
        counter.Advance(whole.At(split));
        const unsigned char byteBefore = whole.At(split)[-1];
        const std::string rest = text.substr(split);
        const Text moved(rest, byteBefore);
        counter.Relocate(moved.At(0));
        for (std::size_t i = 0; i <= rest.size(); ++i)
            ExpectPlace(counter.At(moved.At(i)), expected[split + i], text, split + i);
    }
}

TEST(PlaceCounter, ALineFeedBehindACarriageReturnThatIsGoneIsNoBreak) {
    const Text text("\nb", '\r');
    PlaceCounter counter;
    counter.Start(text.At(0), {2, 1});
    ExpectPlace(counter.At(text.At(1)), {2, 1}, "\nb", 1);
    ExpectPlace(counter.At(text.At(2)), {2, 2}, "\nb", 2);
}

// Deliberate: the colon of a qualified name adds nothing to the column.
TEST(PlaceCounter, DeliberateSkippedColonsAddNothing) {
    const Text text("<a:b c:d='e:f'>");
    PlaceCounter counter;
    counter.Start(text.At(0));
    counter.SkipColon(text.At(2));
    counter.SkipColon(text.At(6));
    EXPECT_EQ(counter.At(text.At(2)).column, 3);
    EXPECT_EQ(counter.At(text.At(3)).column, 3);
    EXPECT_EQ(counter.At(text.At(7)).column, 6);
    EXPECT_EQ(counter.At(text.At(12)).column, 11);  // the one in the value counts
}

TEST(PlaceCounter, ColonsAreForgottenFromAPosition) {
    const Text text("a:b c:d");
    PlaceCounter counter;
    counter.Start(text.At(0));
    counter.SkipColon(text.At(1));
    counter.SkipColon(text.At(5));
    counter.ForgetColonsFrom(text.At(5));
    EXPECT_EQ(counter.At(text.At(7)).column, 7);
    counter.ForgetColonsFrom(text.At(1));
    EXPECT_EQ(counter.At(text.At(7)).column, 8);
    counter.ForgetColonsFrom(text.At(0));
    EXPECT_EQ(counter.At(text.At(7)).column, 8);
}

TEST(PlaceCounter, TakesAsManyColonsAsABufferMayHold) {
    std::string text;
    for (int i = 0; i < 512; ++i)
        text += "a:";
    const Text copy(text);
    PlaceCounter counter;
    counter.Start(copy.At(0));
    for (std::size_t i = 1; i < text.size(); i += 2)
        counter.SkipColon(copy.At(i));
    EXPECT_EQ(counter.At(copy.At(text.size())).column, 513);
    counter.Advance(copy.At(512));
    EXPECT_EQ(counter.At(copy.At(text.size())).column, 513);
}

TEST(PlaceCounter, NumbersStayAtTheGreatestWhenTheyReachIt) {
    constexpr int kMost = std::numeric_limits<int>::max();
    const Text text("abc\n\n\nabc");
    PlaceCounter counter;
    counter.Start(text.At(0), {kMost - 1, kMost - 2});
    ExpectPlace(counter.At(text.At(2)), {kMost - 1, kMost}, "abc", 2);
    ExpectPlace(counter.At(text.At(3)), {kMost - 1, kMost}, "abc", 3);
    ExpectPlace(counter.At(text.At(5)), {kMost, 1}, "abc", 5);
    ExpectPlace(counter.At(text.At(8)), {kMost, 3}, "abc", 8);
    counter.Advance(text.At(6));
    ExpectPlace(counter.At(text.At(9)), {kMost, 4}, "abc", 9);
}

}  // namespace
