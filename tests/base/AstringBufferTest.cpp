// SPDX-License-Identifier: MIT

// The buffer of astring: short and long texts, texts that are parts of the string they are put
// into, and the assignments that copy whole blocks.

#include <espalier/base/astring.h>

#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <utility>

namespace {

using std::string;
using std::string_view;

// Around the size of the inner buffer and of the blocks that are copied.
const std::size_t kLengths[] = {0,  1,  2,  7,  14, 15,  16,  17,  30,  31,
                                32, 33, 63, 64, 65, 127, 128, 129, 255, 1000};

string TextOf(std::size_t length, char first = 'a') {
    string text(length, ' ');
    for (std::size_t i = 0; i < length; ++i)
        text[i] = static_cast<char>(first + static_cast<char>(i % 26));
    return text;
}

// The text followed by what makes it readable up to a whole number of blocks, and by nothing more.
class PaddedSource {
public:
    PaddedSource(string_view text, std::size_t room)
        : store_(std::make_unique<char[]>(room)), length_(text.size()) {
        std::memset(store_.get(), '#', room);
        std::memcpy(store_.get(), text.data(), text.size());
    }

    const char* Text() const { return store_.get(); }
    std::size_t Length() const { return length_; }

private:
    std::unique_ptr<char[]> store_;
    std::size_t length_;
};

void ExpectText(const astring& actual, const string& expected) {
    ASSERT_EQ(actual.view(), expected);
    ASSERT_EQ(actual.c_str()[expected.size()], '\0');
    ASSERT_GE(actual.capacity(), actual.length());
}

TEST(AstringBuffer, PaddedTextsAreAssignedFromEveryLengthToEveryOther) {
    for (const std::size_t before : kLengths) {
        for (const std::size_t length : kLengths) {
            const string text = TextOf(length, 'A');
            const PaddedSource source(text, (length + 15) / 16 * 16);
            astring target(TextOf(before));
            target.assign_padded(source.Text(), source.Length());
            ExpectText(target, text);
            target.append("more");
            ExpectText(target, text + "more");
        }
    }
}

TEST(AstringBuffer, ShortTextsAreAssignedToEveryLength) {
    for (const std::size_t before : kLengths) {
        for (std::size_t length = 0; length < 16; ++length) {
            const string text = TextOf(length, 'A');
            const PaddedSource source(text, 16);
            astring target(TextOf(before));
            target.assign_short(source.Text(), source.Length());
            ExpectText(target, text);
            target.append(TextOf(20));
            ExpectText(target, text + TextOf(20));
        }
    }
}

TEST(AstringBuffer, BlocksFitIntoEveryCapacity) {
    for (std::size_t capacity = 0; capacity < 70; ++capacity) {
        astring target;
        target.reserve(capacity);
        ASSERT_GE(target.capacity(), capacity);
        const string text = TextOf(target.capacity(), 'A');
        const PaddedSource source(text, (text.size() + 15) / 16 * 16);
        const char* const data = target.data();
        target.assign_padded(source.Text(), source.Length());
        ExpectText(target, text);
        EXPECT_EQ(target.data(), data);  // there was room
    }
}

TEST(AstringBuffer, AStringIsAssignedToItself) {
    for (const std::size_t length : kLengths) {
        const string text = TextOf(length);
        astring ours(text);
        const astring& same = ours;
        ours = same;
        ExpectText(ours, text);
        ours = ours.view();
        ExpectText(ours, text);
        ours = ours.c_str();
        ExpectText(ours, text);
        ours.assign(ours);
        ExpectText(ours, text);
        astring& moved = ours;
        ours = std::move(moved);
        ExpectText(ours, text);
        ours.swap(moved);
        ExpectText(ours, text);
    }
}

// Puts every part of a text into every place of it, beside a standard string that gets a copy.
TEST(AstringBuffer, PartsOfItselfArePutIntoAString) {
    for (const std::size_t length : {1u, 5u, 14u, 15u, 16u, 20u, 31u, 33u}) {
        const string text = TextOf(length);
        for (std::size_t start = 0; start <= length; start += 1 + length / 7) {
            for (std::size_t count = 0; start + count <= length; count += 1 + length / 9) {
                const string part = text.substr(start, count);
                const auto partOf = [start, count](const astring& whole) {
                    return whole.view().substr(start, count);
                };
                for (const std::size_t capacity : {std::size_t{0}, 4 * length}) {
                    astring assigned(text);
                    assigned.reserve(capacity);
                    assigned.assign(partOf(assigned));
                    ExpectText(assigned, part);

                    astring appended(text);
                    appended.reserve(capacity);
                    appended.append(partOf(appended));
                    ExpectText(appended, text + part);

                    for (std::size_t position = 0; position <= length; position += 3) {
                        astring inserted(text);
                        inserted.reserve(capacity);
                        inserted.insert(position, partOf(inserted));
                        ExpectText(inserted, string(text).insert(position, part));
                        for (const std::size_t removed : {0u, 1u, 4u, 16u, 100u}) {
                            astring replaced(text);
                            replaced.reserve(capacity);
                            replaced.replace(position, removed, partOf(replaced));
                            ExpectText(replaced, string(text).replace(position, removed, part));
                        }
                    }
                }
            }
        }
    }
}

TEST(AstringBuffer, ShortAndLongTextsAreSwappedAndMoved) {
    for (const std::size_t first : kLengths) {
        for (const std::size_t second : kLengths) {
            const string a = TextOf(first);
            const string b = TextOf(second, 'A');
            astring x(a);
            astring y(b);
            x.swap(y);
            ExpectText(x, b);
            ExpectText(y, a);
            using std::swap;
            swap(x, y);
            ExpectText(x, a);
            ExpectText(y, b);
            x = std::move(y);
            ExpectText(x, b);
            y.append(a);  // NOLINT(bugprone-use-after-move): empty, and fit for use
            ExpectText(y, a);
            astring z(std::move(x));
            ExpectText(z, b);
            ExpectText(x, "");  // NOLINT(bugprone-use-after-move): as above
            x = y;
            ExpectText(x, a);
        }
    }
}

TEST(AstringBuffer, ManyChangesInARowGiveWhatAStandardStringHolds) {
    std::mt19937 random(20260108);
    astring ours;
    string theirs;
    for (int i = 0; i < 100000; ++i) {
        const auto below = [&random](std::size_t limit) { return random() % limit; };
        const string text = TextOf(below(3) == 0 ? below(100) : below(20));
        const std::size_t position = below(theirs.size() + 1);
        switch (below(9)) {
        case 0:
            ours.append(text);
            theirs.append(text);
            break;
        case 1:
            ours.insert(position, text);
            theirs.insert(position, text);
            break;
        case 2:
            ours.erase(position, text.size());
            theirs.erase(position, text.size());
            break;
        case 3: {
            const PaddedSource source(text, (text.size() + 15) / 16 * 16);
            ours.assign_padded(source.Text(), source.Length());
            theirs = text;
            break;
        }
        case 4: {
            const string start = text.substr(0, 15);
            const PaddedSource source(start, 16);
            ours.assign_short(source.Text(), source.Length());
            theirs = start;
            break;
        }
        case 5:
            ours.resize(text.size(), 'r');
            theirs.resize(text.size(), 'r');
            break;
        case 6:
            ours.push_back('p');
            theirs.push_back('p');
            break;
        case 7: {
            astring other(std::move(ours));
            ours = std::move(other);
            break;
        }
        default:
            ours.replace(position, 3, ours.view().substr(position));
            theirs.replace(position, 3, theirs.substr(position));
            if (theirs.size() > 2000) {
                ours.clear();
                theirs.clear();
            }
        }
        ExpectText(ours, theirs);
    }
}

}  // namespace
