// SPDX-License-Identifier: MIT
// Texts that are cut, endless or deep: Dom::CSS::CssReader throws nothing, comes to an end, and
// takes linear time.
#include <espalier/dom/css/CssReader.h>

#include "dom/css/CssText.h"
#include "support/GeneratedStream.h"
#include "support/PrintAstring.h"
#include "support/TrickleStream.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace {

using Dom::CSS::CssNodeType;
using Dom::CSS::CssReader;
using support::CssText;
using support::NodesOf;
using support::RulesOf;

constexpr std::size_t kTenMegabytes = 10U << 20;

// Reads a text in pieces of one byte.
class ByteByByte {
public:
    explicit ByteByByte(std::string_view text)
        : memory_(reinterpret_cast<const unsigned char*>(text.data()),
                  static_cast<long>(text.size())),
          stream_(memory_, 1),
          reader_(&stream_, astring("UTF-8")) {}

    CssReader& operator*() { return reader_; }

private:
    IO::MemoryStream memory_;
    support::TrickleStream stream_;
    CssReader reader_;
};

std::string Repeated(std::string_view text, std::size_t count) {
    std::string repeated;
    repeated.reserve(text.size() * count);
    for (std::size_t i = 0; i < count; ++i)
        repeated += text;
    return repeated;
}

// Expects that a text has an end for every operation, and is the same when it comes byte by byte.
void ExpectAnEnd(std::string_view text) {
    const std::string nodes = NodesOf(text);
    ASSERT_EQ(nodes.find("and no end"), std::string::npos);
    const std::string rules = RulesOf(text);
    ASSERT_EQ(rules.find("and no end"), std::string::npos);
    ByteByByte forNodes(text);
    ASSERT_EQ(NodesOf(*forNodes, text.size()), nodes);
    ByteByByte forRules(text);
    ASSERT_EQ(RulesOf(*forRules, text.size()), rules);
    CssText reader(text);
    reader->ReadDeclaration();
    reader->ReadAtDeclaration();
    reader->ReadComment();
    reader->ReadSelector();
    reader->ReadProperty();
}

}  // namespace

TEST(CssReaderHostile, EveryTruncationKeepsTheRulesBeforeIt) {
    const struct {
        const char* text;
        const char* rule;
    } kRules[] = {
        {"h1 , h2 {color:red;  /* c */ margin : 0 1px !important}",
         "h1 , h2 { color: red; margin: 0 1px !important }\n"},
        {"\n/* about */\n.x > p[a='b'] {content: 'a;b}\\'' \"\xC3\xA9\" }",
         ".x > p[a='b'] { content: 'a;b}\\'' \"\xC3\xA9\" }\n"},
        {"#y:hover{background:url(a.png) #fff/**/no-repeat;}",
         "#y:hover{ background: url(a.png) #fffno-repeat }\n"},
        {"p{}", "p{  }\n"},
        {"\xE2\x82\xAC{a:\xF0\x9F\x98\x80}", "\xE2\x82\xAC{ a: \xF0\x9F\x98\x80 }\n"},
    };
    std::string sheet;
    for (const auto& rule : kRules)
        sheet += rule.text;
    for (std::size_t length = 0; length <= sheet.size(); ++length) {
        SCOPED_TRACE(length);
        const std::string_view text = std::string_view(sheet).substr(0, length);
        std::string whole;
        std::size_t end = 0;
        for (const auto& rule : kRules) {
            end += std::string_view(rule.text).size();
            if (end <= length) whole += rule.rule;
        }
        EXPECT_EQ(RulesOf(text).substr(0, whole.size()), whole);
        ExpectAnEnd(text);
    }
}

TEST(CssReaderHostile, EveryTruncationOfAtRulesHasAnEnd) {
    constexpr std::string_view kSheet =
        "@charset \"x\"; @import url(a) print;\n@media print { h1 p { a:b; /*c*/ d:'e}' } .f {g:h} "
        "}"
        "@font-face{src:url(i);}@page :first{;j:k;;l:m}a:hover{n:o}{}}-x{-p:q}";
    for (std::size_t length = 0; length <= kSheet.size(); ++length) {
        SCOPED_TRACE(length);
        ExpectAnEnd(kSheet.substr(0, length));
        ExpectAnEnd(kSheet.substr(length));
    }
}

TEST(CssReaderHostile, AllShortTextsHaveAnEnd) {
    constexpr std::string_view kAlphabet = "a{}:;/*'@ ";
    constexpr int kLongest = 4;
    int count = 0;
    for (int length = 0; length <= kLongest; ++length) {
        std::string text(static_cast<std::size_t>(length), kAlphabet[0]);
        std::string indexes(text.size(), '\0');
        for (bool more = true; more; ++count) {
            for (std::size_t i = 0; i < text.size(); ++i)
                text[i] = kAlphabet[static_cast<std::size_t>(indexes[i])];
            ExpectAnEnd(text);
            ASSERT_FALSE(HasFailure()) << text;
            ExpectAnEnd("@b{" + text);
            ASSERT_FALSE(HasFailure()) << "@b{" << text;
            ExpectAnEnd("p{" + text);
            ASSERT_FALSE(HasFailure()) << "p{" << text;
            std::size_t at = 0;
            while (at < indexes.size() && ++indexes[at] == static_cast<char>(kAlphabet.size()))
                indexes[at++] = '\0';
            more = at < indexes.size();
        }
    }
    EXPECT_EQ(count, 11111);
}

TEST(CssReaderHostile, RandomBytesHaveAnEnd) {
    constexpr std::string_view kAlphabet("ap-_09{}:;/*'\"\\@!,.#() \t\n\0\x7F\x80\xC3\xA9\xE2\xFF",
                                         32);
    unsigned state = 1;
    for (int i = 0; i < 5000; ++i) {
        std::string text;
        while (text.size() < 60) {
            state = state * 1664525U + 1013904223U;
            text += kAlphabet[(state >> 16) % kAlphabet.size()];
        }
        ExpectAnEnd(text);
        ASSERT_FALSE(HasFailure()) << testing::PrintToString(text);
    }
}

TEST(CssReaderHostile, ANulDoesNotStallIt) {
    const std::string text("p{a:b}\0q{c:d}", 13);
    ExpectAnEnd(text);
    EXPECT_EQ(RulesOf(text).substr(0, 10), "p{ a: b }\n");
}

TEST(CssReaderHostile, WhatIsNotTerminatedEndsWithTheText) {
    const std::string much(kTenMegabytes, 'x');
    const struct {
        const char* name;
        const char* begin;
        const char* end;
        const char* nodes;  // that come before
        const char* valueBegin;
        const char* valueEnd;
    } kCases[] = {
        {"comment", "/*", "", "", "/*", ""},
        {"comment with an end", "/*", "*/", "", "/*", "*/"},
        {"selector", "", "{", "", "", ""},
        {"selector of an at-rule", "@", "{", "", "@", ""},
        {"comment in a block", "p{/*", "", "Selector[p] StartDecl", "/*", ""},
        {"name", "p{", ":y}", "Selector[p] StartDecl", "y", nullptr},
        {"value", "p{a:", "", "Selector[p] StartDecl", "", ""},
        {"value with an end", "p{a:", ";}", "Selector[p] StartDecl", "", ""},
        {"string", "p{a:'", "", "Selector[p] StartDecl", "'", ""},
        {"string with an end", "p{a:\"", "\"}", "Selector[p] StartDecl", "\"", "\""},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        const std::string text = c.begin + much + c.end;
        CssText reader(text);
        std::string nodes;
        const std::size_t skipped = *c.nodes == '\0' ? 0 : 2;
        for (std::size_t i = 0; i < skipped; ++i) {
            ASSERT_TRUE(reader->Read());
            nodes += (i > 0 ? " " : "") + support::NodeOf(*reader);
        }
        EXPECT_EQ(nodes, c.nodes);
        ASSERT_TRUE(reader->Read());
        const std::string expected =
            c.valueEnd == nullptr ? c.valueBegin : c.valueBegin + much + c.valueEnd;
        EXPECT_TRUE(reader->Value() == expected);
        if (c.valueEnd == nullptr) {
            EXPECT_TRUE(reader->Name() == much);
        }
        while (reader->Read()) {
        }
    }
}

TEST(CssReaderHostile, TenMegabytesWithoutANodeAreSkipped) {
    for (const char* const begin : {"", "p{a:b}", "@"}) {
        SCOPED_TRACE(begin);
        const std::string text = begin + std::string(kTenMegabytes, 'x');
        CssText reader(text);
        if (begin[0] == 'p') {
            EXPECT_EQ(reader->ReadRule(), "p{ a: b }");
        }
        EXPECT_FALSE(reader->Read());
        EXPECT_FALSE(reader->Read());
    }
}

TEST(CssReaderHostile, TenMegabytesOfBlanksAreOneNode) {
    const std::string blanks(kTenMegabytes, ' ');
    const std::string top = blanks + "p{a:" + blanks + "b" + blanks + "}";
    EXPECT_EQ(NodesOf(top), "Whitespace Selector[p] StartDecl Property[a=b] EndDecl");
    const std::string inside = "p{a:b" + blanks + "c}";
    CssText reader(inside);
    ASSERT_TRUE(reader.Skip(3));
    EXPECT_TRUE(reader->Value() == "b" + blanks + "c");
}

TEST(CssReaderHostile, MillionsOfSmallPartsTakeLinearTime) {
    constexpr std::size_t kCount = 1000000;
    const struct {
        const char* begin;
        const char* part;
        const char* end;
        const char* value;  // of the property, when it is a part that is repeated or nothing
    } kCases[] = {
        {"p{a:b", "/**/", "}", ""},     {"p{a:", "/**/", "b}", ""}, {"p{a:b", "''", "}", "''"},
        {"p{a:b", " c", "}", " c"},     {"p{a:b", "/", "}", "/"},   {"p{a:b", " /**/", "c}", " "},
        {"p{a:b'", "\\'", "'}", "\\'"}, {"p{a:b", "*", "}", "*"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.part);
        const std::string text = c.begin + Repeated(c.part, kCount) + c.end;
        CssText reader(text);
        ASSERT_TRUE(reader.Skip(3));
        EXPECT_EQ(reader->Name(), "a");
        const std::size_t parts = std::string_view(c.value).size() * kCount;
        EXPECT_GE(reader->Value().length(), parts);
        EXPECT_LE(reader->Value().length(), parts + 4);
        ASSERT_TRUE(reader->Read());
        EXPECT_EQ(reader->NodeType(), CssNodeType::EndDecl);
    }
}

TEST(CssReaderHostile, MillionsOfNodesTakeLinearTime) {
    constexpr long kCount = 1000000;
    for (const char* const part : {"}", " /**/", "{}", "p{a:b}", "/**/"}) {
        SCOPED_TRACE(part);
        support::GeneratedStream stream;
        stream.Add(part, kCount);
        CssReader reader(&stream, astring("UTF-8"));
        long nodes = 0;
        while (reader.Read())
            ++nodes;
        EXPECT_EQ(nodes % kCount, 0);
        EXPECT_GE(nodes, kCount);
    }
}

TEST(CssReaderHostile, ADeclarationOfManyPropertiesTakesLinearTime) {
    constexpr std::size_t kCount = 200000;
    const std::string text = "p{" + Repeated("a:b;", kCount) + "}";
    CssText reader(text);
    EXPECT_TRUE(reader->ReadRule() == "p{ " + Repeated("a: b; ", kCount - 1) + "a: b }");
    const std::string atRule = "@p{" + Repeated("a:b;", kCount) + "}";
    CssText atReader(atRule);
    EXPECT_TRUE(atReader->ReadRule() == "@p{ " + Repeated("a: b; ", kCount) + "}");
}

TEST(CssReaderHostile, DeepBracesNeedNoStack) {
    constexpr std::size_t kDepth = 100000;
    const struct {
        const char* part;
        const char* rules;
    } kCases[] = {
        {"{", "\n"},           {"a{", "a{  }\n"},         {"@a{", "@a{  }\n"},
        {"@a{b{", "@a{  }\n"}, {"@a{b:c;", "@a{ b: c; "},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.part);
        const std::string text = Repeated(c.part, kDepth);
        const std::string rules = RulesOf(text);
        const std::string_view expected(c.rules);
        if (expected.ends_with('\n')) {
            EXPECT_EQ(rules, expected);
        } else {
            EXPECT_EQ(rules.substr(0, expected.size()), expected);
        }
        EXPECT_EQ(rules.find("and no end"), std::string::npos);
    }
}
