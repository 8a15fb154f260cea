// SPDX-License-Identifier: MIT
#include <espalier/base/astring.h>

#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <compare>
#include <cstring>
#include <functional>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <unordered_set>
#include <utility>

namespace {

using std::string;
using std::string_view;
using std::string_view_literals::operator""sv;

static_assert(std::is_same_v<astring, BasicString<char>>);
static_assert(std::is_convertible_v<astring, string>);
static_assert(std::is_convertible_v<astring, string_view>);
static_assert(std::is_convertible_v<string, astring>);
static_assert(std::is_convertible_v<string_view, astring>);
static_assert(std::is_convertible_v<const char*, astring>);
static_assert(!std::is_convertible_v<std::nullptr_t, astring>);
static_assert(std::is_constructible_v<astring, TstrCharacterRange>);
static_assert(std::is_nothrow_move_constructible_v<astring>);
static_assert(std::is_nothrow_move_assignable_v<astring>);

// Empty, short, with NULs in it, above ASCII, and too long for any small-string buffer.
const string_view kTexts[] = {
    ""sv,
    "a"sv,
    "abc"sv,
    "abd"sv,
    "ab"sv,
    "a\0b"sv,
    "\0"sv,
    "\0\0"sv,
    "\xC3\xA4\xFF"sv,
    "the quick brown fox jumps over the lazy dog, and then over another one"sv,
};
const std::size_t kPositions[] = {0, 1, 2, 3, 20, 70, 71, astring::npos};

TstrCharacterRange Range(string_view text) { return {text.data(), text.data() + text.size()}; }

// Does the same to an astring and to a std::string that both hold `text`, and expects the same
// content, or the same kind of error.
template <typename Change>
void ExpectSame(string_view text, const Change& change) {
    astring ours(text);
    string theirs(text);
    bool threw = false;
    try {
        change(theirs);
    } catch (const std::out_of_range&) {
        threw = true;
    }
    if (threw) {
        EXPECT_THROW(change(ours), std::out_of_range);
    } else {
        EXPECT_NO_THROW(change(ours));
    }
    EXPECT_EQ(string(ours), theirs);
    EXPECT_EQ(ours.c_str()[ours.length()], '\0');
}

TEST(Astring, IsMadeFromEveryKindOfText) {
    for (const string_view text : kTexts) {
        SCOPED_TRACE(testing::PrintToString(text));
        EXPECT_EQ(astring(text).view(), text);
        EXPECT_EQ(astring(string(text)).view(), text);
        EXPECT_EQ(astring(text.data(), text.size()).view(), text);
        EXPECT_EQ(astring(Range(text)).view(), text);
        EXPECT_EQ(astring(string(text).c_str()).view(), text.substr(0, text.find('\0')));
        const astring original(text);
        const astring copy(original);
        EXPECT_EQ(copy.view(), text);
        EXPECT_TRUE(text.empty() || copy.data() != original.data());
        EXPECT_EQ(original.length(), text.size());
        EXPECT_EQ(original.size(), text.size());
        EXPECT_EQ(original.empty(), text.empty());
        EXPECT_GE(original.capacity(), text.size());
    }
    EXPECT_EQ(astring(3, 'x'), "xxx");
    EXPECT_EQ(astring(0, 'x'), "");
    EXPECT_EQ(astring(), "");
    EXPECT_EQ(astring(TstrCharacterRange()), "");
}

TEST(Astring, IsAssignedEveryKindOfText) {
    for (const string_view text : kTexts) {
        SCOPED_TRACE(testing::PrintToString(text));
        astring target("before");
        EXPECT_EQ((target = text).view(), text);
        EXPECT_EQ((target = "between"), "between");
        EXPECT_EQ((target = string(text)).view(), text);
        const string standard(text);
        target.clear();
        EXPECT_EQ((target = standard).view(), text);
        target.clear();
        EXPECT_EQ((target = astring(text)).view(), text);
        target.clear();
        EXPECT_EQ((target = Range(text)).view(), text);
        EXPECT_EQ(target.assign("between"), "between");
        EXPECT_EQ(target.assign(Range(text)).view(), text);
        EXPECT_EQ(target.assign("abc", 2), "ab");
        EXPECT_EQ(target.assign(2, 'y'), "yy");
        EXPECT_EQ(target.assign(astring(text)).view(), text);
        const astring& same = target;
        EXPECT_EQ((target = same).view(), text);
    }
}

TEST(Astring, MovesLeaveAStringThatCanBeUsed) {
    astring from("the quick brown fox jumps over the lazy dog");
    const char* characters = from.data();
    astring to(std::move(from));
    EXPECT_EQ(to.data(), characters);
    from = "again";  // NOLINT(bugprone-use-after-move): that is what is tested
    EXPECT_EQ(from, "again");
    from = std::move(to);
    EXPECT_EQ(from, "the quick brown fox jumps over the lazy dog");
}

TEST(Astring, AppendsLikeTheStandardString) {
    for (const string_view text : kTexts) {
        for (const string_view more : kTexts) {
            SCOPED_TRACE(testing::PrintToString(text) + " and " + testing::PrintToString(more));
            ExpectSame(text, [&](auto& s) { s.append(more); });
            ExpectSame(text, [&](auto& s) { s.append(more.data(), more.size()); });
            ExpectSame(text, [&](auto& s) { s.append(string(more)); });
            ExpectSame(text, [&](auto& s) { s += more; });
            ExpectSame(text, [&](auto& s) { s += string(more); });
            ExpectSame(text, [&](auto& s) { s += string(more).c_str(); });
            EXPECT_EQ(astring(text).append(Range(more)), string(text) + string(more));
            EXPECT_EQ(astring(text).append(astring(more)), string(text) + string(more));
            EXPECT_EQ(astring(text) += astring(more), string(text) + string(more));
        }
        ExpectSame(text, [](auto& s) { s.append(3, 'x'); });
        ExpectSame(text, [](auto& s) { s.append(0, 'x'); });
        ExpectSame(text, [](auto& s) { s += 'x'; });
        ExpectSame(text, [](auto& s) { s.push_back('\0'); });
        ExpectSame(text, [](auto& s) { s.append(s); });  // to itself
        ExpectSame(text, [](auto& s) { s += s; });
    }
}

TEST(Astring, InsertsErasesAndReplacesLikeTheStandardString) {
    for (const string_view text : kTexts) {
        for (const std::size_t position : kPositions) {
            SCOPED_TRACE(testing::PrintToString(text) + " at " + std::to_string(position));
            ExpectSame(text, [=](auto& s) { s.insert(position, "x\0y"sv); });
            ExpectSame(text, [=](auto& s) { s.insert(position, "xyz"); });
            ExpectSame(text, [=](auto& s) { s.insert(position, 3, 'x'); });
            ExpectSame(text, [=](auto& s) { s.insert(position, s); });
            ExpectSame(text, [=](auto& s) { s.erase(position); });
            for (const std::size_t count : kPositions) {
                ExpectSame(text, [=](auto& s) { s.erase(position, count); });
                ExpectSame(text, [=](auto& s) { s.replace(position, count, "x\0yz"sv); });
                ExpectSame(text, [=](auto& s) { s.replace(position, count, ""); });
                ExpectSame(text, [=](auto& s) { s = s.substr(position, count); });
            }
            ExpectSame(text, [=](auto& s) { s = s.substr(position); });
        }
        ExpectSame(text, [](auto& s) { s.erase(); });
        ExpectSame(text, [](auto& s) { s = s.substr(); });
        ExpectSame(text, [](auto& s) { s.clear(); });
    }
}

TEST(Astring, ResizePadsWithNul) {
    for (const string_view text : kTexts) {
        for (const std::size_t length : {0u, 1u, 3u, 40u, 200u}) {
            ExpectSame(text, [=](auto& s) { s.resize(length); });
            ExpectSame(text, [=](auto& s) { s.resize(length, 'x'); });
            ExpectSame(text, [=](auto& s) { s.reserve(length); });
        }
    }
    astring text("ab");
    text.resize(4);
    EXPECT_EQ(text, "ab\0\0"sv);
    text.reserve(1000);
    EXPECT_GE(text.capacity(), 1000u);
    EXPECT_EQ(text, "ab\0\0"sv);
}

TEST(Astring, FindsLikeTheStandardString) {
    for (const string_view text : kTexts) {
        const astring ours(text);
        const string theirs(text);
        for (const std::size_t position : kPositions) {
            for (const char character : {'a', 'b', '\0', 'o', '\xFF'}) {
                EXPECT_EQ(ours.find(character, position), theirs.find(character, position));
                EXPECT_EQ(ours.find(character), theirs.find(character));
            }
            for (const string_view wanted : kTexts) {
                EXPECT_EQ(ours.find(wanted, position), theirs.find(wanted, position));
                EXPECT_EQ(ours.find(astring(wanted)), theirs.find(wanted));
            }
        }
    }
    EXPECT_EQ(astring("abc").find('x'), astring::npos);
}

int Sign(int value) { return value < 0 ? -1 : value > 0 ? 1 : 0; }

TEST(Astring, ComparesLikeTheStandardString) {
    for (const string_view a : kTexts) {
        for (const string_view b : kTexts) {
            SCOPED_TRACE(testing::PrintToString(a) + " and " + testing::PrintToString(b));
            const astring ours(a);
            const string theirs(a);
            const int expected = Sign(theirs.compare(b));
            EXPECT_EQ(Sign(ours.compare(b)), expected);
            EXPECT_EQ(Sign(ours.compare(astring(b))), expected);
            EXPECT_EQ(Sign(ours.compare(string(b))), expected);
            EXPECT_EQ(Sign(ours.compare(Range(b))), expected);
            EXPECT_EQ(Sign(ours.compare(string(b).c_str())),
                      Sign(theirs.compare(string(b).c_str())));

            const bool same = a == b;
            EXPECT_EQ(ours == astring(b), same);
            EXPECT_EQ(ours == string(b), same);
            EXPECT_EQ(ours == b, same);
            EXPECT_EQ(ours == Range(b), same);
            EXPECT_EQ(string(b) == ours, same);
            EXPECT_EQ(b == ours, same);
            EXPECT_EQ(ours != astring(b), !same);
            EXPECT_EQ(ours != b, !same);
            EXPECT_EQ(ours == string(b).c_str(), theirs == string(b).c_str());
            EXPECT_EQ(string(b).c_str() == ours, theirs == string(b).c_str());

            EXPECT_EQ(ours <=> astring(b), expected <=> 0);
            EXPECT_EQ(ours <=> string(b), expected <=> 0);
            EXPECT_EQ(ours <=> b, expected <=> 0);
            EXPECT_EQ(b <=> ours, 0 <=> expected);
            EXPECT_EQ(ours < astring(b), a < b);
            EXPECT_EQ(ours >= b, a >= b);
            EXPECT_EQ(string(b) > ours, b > a);
            EXPECT_EQ(std::hash<astring>()(ours) == std::hash<astring>()(astring(b)), same);
        }
    }
    EXPECT_TRUE(astring("a") == "a");
    EXPECT_TRUE("a" != astring("b"));
    EXPECT_TRUE(astring("a") < "b");
    EXPECT_FALSE(astring("name") == "Name");  // the case counts
}

TEST(Astring, AddsEveryKindOfText) {
    for (const string_view a : kTexts) {
        for (const string_view b : kTexts) {
            const string expected = string(a) + string(b);
            EXPECT_EQ(astring(a) + astring(b), expected);
            EXPECT_EQ(astring(a) + b, expected);
            EXPECT_EQ(astring(a) + string(b), expected);
            EXPECT_EQ(a + astring(b), expected);
            EXPECT_EQ(string(a) + astring(b), expected);
        }
    }
    EXPECT_EQ("End tag '" + astring("a") + "' doesn't match", "End tag 'a' doesn't match");
    EXPECT_EQ(astring("a") + 'b', "ab");
    EXPECT_EQ('a' + astring("b"), "ab");
}

TEST(Astring, CharactersAreReachedByPosition) {
    astring text("abc");
    const astring& constant = text;
    EXPECT_EQ(constant[1], 'b');
    EXPECT_EQ(constant[3], '\0');
    EXPECT_EQ(constant.at(2), 'c');
    EXPECT_THROW(constant.at(3), std::out_of_range);
    EXPECT_THROW(text.at(3), std::out_of_range);
    EXPECT_EQ(constant.front(), 'a');
    EXPECT_EQ(constant.back(), 'c');
    text[0] = 'x';
    text.at(1) = 'y';
    text.back() = 'z';
    EXPECT_EQ(text, "xyz");
    text.front() = 'X';
    EXPECT_EQ(string(text.begin(), text.end()), "Xyz");
    EXPECT_EQ(string(constant.begin(), constant.end()), "Xyz");
    for (char& character : text)
        character = '-';
    EXPECT_EQ(constant, "---");
    EXPECT_EQ(constant.data(), constant.c_str());
    EXPECT_EQ(std::strlen(constant.c_str()), 3u);
    astring other("other");
    text.swap(other);
    EXPECT_EQ(text, "other");
    EXPECT_EQ(other, "---");
}

TEST(Astring, TheBufferIsWrittenDirectly) {
    astring text("abc");
    char* buffer = text.get_buffer(100);
    EXPECT_EQ(string(buffer, 3), "abc");
    std::memcpy(buffer + 3, "defgh", 5);
    text.release_buffer(6);
    EXPECT_EQ(text, "abcdef");
    EXPECT_EQ(text.c_str()[6], '\0');

    // A buffer smaller than the text is as large as the text.
    buffer = text.get_buffer(2);
    buffer[5] = 'F';
    text.release_buffer(6);
    EXPECT_EQ(text, "abcdeF");
    text.get_buffer(0);
    text.release_buffer(0);
    EXPECT_EQ(text, "");
}

TEST(Astring, LivesWellWithTheStandardLibrary) {
    const astring text("a\0b", 3);
    const string standard = text;
    EXPECT_EQ(standard, "a\0b"sv);
    string assigned;
    assigned = text;
    assigned += text;
    EXPECT_EQ(assigned, "a\0ba\0b"sv);
    const string_view view = text;
    EXPECT_EQ(view.data(), text.data());
    EXPECT_EQ(text.str(), "a\0b"sv);

    std::ostringstream out;
    out << text << '|' << astring("c");
    EXPECT_EQ(out.str(), "a\0b|c"sv);

    std::unordered_set<astring> names = {"a", "b", "a"};
    EXPECT_EQ(names.size(), 2u);
    EXPECT_TRUE(names.contains("b"));
    EXPECT_EQ(std::hash<astring>()(text), std::hash<string_view>()(view));

    std::map<astring, int, std::less<>> numbers = {{"one", 1}, {"two", 2}};
    EXPECT_EQ(numbers.find("two"sv)->second, 2);
    EXPECT_EQ(numbers.find(string("three")), numbers.end());
}

TEST(Astring, ARangeIsAViewOfItsCharacters) {
    const string_view text = "abc";
    const TstrCharacterRange range = Range(text);
    EXPECT_EQ(range.begin(), text.data());
    EXPECT_EQ(range.end(), text.data() + 3);
    EXPECT_EQ(range.length(), 3u);
    EXPECT_EQ(string_view(range), "abc");
    EXPECT_EQ(TstrCharacterRange().length(), 0u);
}

}  // namespace
