// SPDX-License-Identifier: MIT
#include "support/PaddedText.h"
#include "xml/NameTable.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace {

using support::PaddedText;
using Xml::detail::NameMeaning;
using Xml::detail::NameTable;
using Xml::detail::PackName;
using Xml::detail::XmlName;

// Looks a name up as the reader's quick way does: short ones as two words, others from the text.
XmlName* Find(const NameTable& names, std::string_view text) {
    const PaddedText padded(text);
    const int length = static_cast<int>(text.size());
    return length < 16 ? names.FindShort(PackName(padded.begin(), length))
                       : names.FindLonger(padded.begin(), length);
}

// A name of `length` bytes that differs from others in its number only.
std::string NameOf(std::size_t length, unsigned number) {
    std::string name(length, 'n');
    for (std::size_t i = length; i > 0 && number > 0; number /= 26)
        name[--i] = static_cast<char>('a' + number % 26);
    return name;
}

TEST(NameTable, HoldsNamesOfEveryLengthOnce) {
    NameTable names;
    std::set<XmlName*> different;
    for (std::size_t length = 1; length <= 40; ++length) {
        for (const char first : {'a', 'b'}) {
            for (const char last : {'a', 'b'}) {
                std::string text(length, 'x');
                text.front() = first;
                text.back() = last;
                XmlName* const name = names.Intern(text, -1);
                EXPECT_EQ(name->qualified, text);
                EXPECT_EQ(name->local, text);
                EXPECT_EQ(name->prefix, "");
                EXPECT_EQ(name->prefixName, nullptr);
                EXPECT_EQ(name->meaning, NameMeaning::Ordinary);
                EXPECT_FALSE(name->isUnusual);
                EXPECT_EQ(names.Intern(text, -1), name);
                // The reader asks again for names of more than 31 bytes.
                EXPECT_EQ(Find(names, text), length <= 31 ? name : nullptr) << text;
                different.insert(name);
            }
        }
    }
    EXPECT_EQ(different.size(), 2 + 4 * 39u);  // of one byte, first and last are the same
}

TEST(NameTable, FindsOnlyWhatIsThere) {
    NameTable names;
    for (std::size_t length = 1; length <= 40; ++length)
        EXPECT_EQ(Find(names, std::string(length, 'a')), nullptr);
    EXPECT_EQ(Find(names, ""), nullptr);

    // Names whose first or last 16 bytes are the same.
    names.Intern("aaaaaaaaaaaaaaaabbbbbbbb", -1);
    EXPECT_EQ(Find(names, "aaaaaaaaaaaaaaaa"), nullptr);
    EXPECT_EQ(Find(names, "aaaaaaaaaaaaaaaabbbbbbb"), nullptr);
    EXPECT_EQ(Find(names, "aaaaaaaaaaaaaaaabbbbbbbbb"), nullptr);
    EXPECT_EQ(Find(names, "aaaaaaaabbbbbbbb"), nullptr);
    names.Intern(std::string(20, 'a'), -1);
    EXPECT_EQ(Find(names, std::string(20, 'a'))->qualified, std::string(20, 'a'));
    for (const std::size_t length : {16u, 17u, 19u, 21u, 31u})
        EXPECT_EQ(Find(names, std::string(length, 'a')), nullptr) << length;
}

TEST(NameTable, SplitsNamesAtTheColonThatItIsTold) {
    NameTable names;
    const struct {
        std::string_view text;
        int colon;
        std::string_view prefix;
        std::string_view local;
        NameMeaning meaning;
        bool isUnusual;
    } kCases[] = {
        {"p:a", 1, "p", "a", NameMeaning::Ordinary, true},
        {"p:", 1, "p", "", NameMeaning::Ordinary, true},
        {"aVeryLongPrefix16:aVeryLongLocalName", 17, "aVeryLongPrefix16", "aVeryLongLocalName",
         NameMeaning::Ordinary, true},
        {"xmlns", -1, "", "xmlns", NameMeaning::DefaultNamespace, true},
        {"xmlns:p", 5, "xmlns", "p", NameMeaning::Namespace, true},
        {"xml:space", 3, "xml", "space", NameMeaning::Space, true},
        {"xml:lang", 3, "xml", "lang", NameMeaning::Language, true},
        {"xml:id", 3, "xml", "id", NameMeaning::Ordinary, true},
        {"space", -1, "", "space", NameMeaning::Ordinary, false},
        {"xmlnsx", -1, "", "xmlnsx", NameMeaning::Ordinary, false},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.text);
        const XmlName* const name = names.Intern(c.text, c.colon);
        EXPECT_EQ(name->qualified, c.text);
        EXPECT_EQ(name->prefix, c.prefix);
        EXPECT_EQ(name->local, c.local);
        EXPECT_EQ(name->meaning, c.meaning);
        EXPECT_EQ(name->isUnusual, c.isUnusual);
        XmlName* const prefix = c.prefix.empty() ? nullptr : names.Intern(c.prefix, -1);
        EXPECT_EQ(name->prefixName, prefix);
    }
}

TEST(NameTable, TakesColonsForLettersWhenItIsToldOfNone) {
    NameTable names;
    const XmlName* const name = names.Intern("xmlns:p", -1);
    EXPECT_EQ(name->local, "xmlns:p");
    EXPECT_EQ(name->prefix, "");
    EXPECT_EQ(name->meaning, NameMeaning::Ordinary);
    EXPECT_EQ(names.Intern("xml:space", -1)->meaning, NameMeaning::Space);
    EXPECT_EQ(names.Intern("xml:lang", -1)->meaning, NameMeaning::Language);
}

TEST(NameTable, GrowsAndKeepsItsNamesWhereTheyAre) {
    constexpr unsigned kNames = 100000;
    NameTable names;
    std::vector<XmlName*> all;
    for (unsigned i = 0; i < kNames; ++i)
        all.push_back(names.Intern(NameOf(6 + i % 35, i), -1));
    EXPECT_TRUE(names.IsLarge());
    for (unsigned i = 0; i < kNames; ++i) {
        const std::string text = NameOf(6 + i % 35, i);
        ASSERT_EQ(all[i]->qualified, text);
        ASSERT_EQ(names.Intern(text, -1), all[i]);
        ASSERT_EQ(Find(names, text), text.size() <= 31 ? all[i] : nullptr);
    }
    EXPECT_EQ(std::set<XmlName*>(all.begin(), all.end()).size(), all.size());
}

TEST(NameTable, TrimKeepsWhatIsMarkedAndItsPrefix) {
    NameTable names;
    for (unsigned i = 0; i < 70000; ++i)
        names.Intern(NameOf(5 + i % 30, i), -1);
    ASSERT_TRUE(names.IsLarge());
    XmlName* const kept = names.Intern("keptPrefix:kept", 10);
    XmlName* const keptLong = names.Intern("aPrefixOfMoreThanSixteen:aVeryLongLocalName", 24);
    XmlName* const prefix = kept->prefixName;
    names.Intern("goes:away", 4);
    kept->kept = true;
    keptLong->kept = true;

    names.Trim();
    EXPECT_FALSE(names.IsLarge());
    EXPECT_EQ(Find(names, "keptPrefix:kept"), kept);
    EXPECT_EQ(Find(names, "keptPrefix"), prefix);
    EXPECT_EQ(names.Intern("keptPrefix", -1), prefix);
    EXPECT_EQ(names.Intern(keptLong->qualified, 24), keptLong);
    EXPECT_EQ(Find(names, "aPrefixOfMoreThanSixteen"), keptLong->prefixName);
    EXPECT_EQ(keptLong->prefixName->qualified, "aPrefixOfMoreThanSixteen");
    for (const std::string_view text : {"goes:away", "goes", "nnnnb"})
        EXPECT_EQ(Find(names, text), nullptr) << text;

    // The marks are used up.
    EXPECT_FALSE(kept->kept);
    EXPECT_FALSE(prefix->kept);
    names.Trim();
    EXPECT_EQ(Find(names, "keptPrefix:kept"), nullptr);
    EXPECT_EQ(Find(names, "keptPrefix"), nullptr);
}

TEST(NameTable, IsLargeLaterWhenMostIsKept) {
    NameTable names;
    std::vector<XmlName*> all;
    for (unsigned i = 0; !names.IsLarge(); ++i)
        all.push_back(names.Intern(NameOf(7, i), -1));
    for (XmlName* const name : all)
        name->kept = true;
    names.Trim();
    EXPECT_FALSE(names.IsLarge());
    for (unsigned i = 0; i < all.size() - 1; ++i)
        names.Intern(NameOf(8, i), -1);
    EXPECT_FALSE(names.IsLarge());
    names.Intern("another", -1);
    EXPECT_TRUE(names.IsLarge());
}

// Many long names take as much memory as very many short ones.
TEST(NameTable, IsLargeByTheLengthOfTheNamesToo) {
    NameTable names;
    unsigned count = 0;
    for (; !names.IsLarge(); ++count)
        names.Intern(NameOf(1024, count), -1);
    EXPECT_GT(count, 1000u);
    EXPECT_LE(count, 16384u);
    names.Trim();
    EXPECT_FALSE(names.IsLarge());
}

TEST(NameTable, ClearForgetsAll) {
    NameTable names;
    for (unsigned i = 0; i < 1000; ++i)
        names.Intern(NameOf(4 + i % 36, i), -1);
    names.Intern("p:a", 1);
    names.Clear();
    EXPECT_EQ(Find(names, "p:a"), nullptr);
    EXPECT_EQ(Find(names, "p"), nullptr);
    // The same text may be another name now.
    EXPECT_EQ(names.Intern("p:a", -1)->local, "p:a");
    for (unsigned i = 0; i < 1000; ++i) {
        const std::string text = NameOf(4 + i % 36, i);
        ASSERT_EQ(names.Intern(text, -1)->qualified, text);
    }
}

}  // namespace
