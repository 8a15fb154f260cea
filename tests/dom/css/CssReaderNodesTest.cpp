// SPDX-License-Identifier: MIT
// The nodes that Dom::CSS::CssReader finds in each place: outside blocks, in the block of a rule,
// and in that of an at-rule.
#include <espalier/dom/css/CssReader.h>

#include "dom/css/CssText.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Dom::CSS::CssNodeType;
using support::CssText;
using support::NodesOf;
using support::RulesOf;

struct NodeCase {
    const char* text;
    const char* nodes;
};

template <std::size_t kCount>
void ExpectNodes(const NodeCase (&cases)[kCount]) {
    for (const NodeCase& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(NodesOf(c.text), c.nodes);
    }
}

// Returns the nodes of an at-rule's block. ReadRule() alone goes into the state for these, so the
// text begins with a rule that leaves the reader in it.
std::string AtRuleNodesOf(const std::string& block) {
    const std::string text = "@a{ }" + block;
    CssText reader(text);
    EXPECT_EQ(reader->ReadRule(), "@a{  }");
    return NodesOf(*reader, text.size());
}

}  // namespace

TEST(CssReader, HasNoNodeBeforeTheFirstRead) {
    CssText reader("p{}");
    EXPECT_EQ(reader->NodeType(), CssNodeType::Node);
    EXPECT_EQ(reader->Name(), "");
    EXPECT_EQ(reader->Value(), "");
    EXPECT_EQ(reader->Priority(), "");
}

TEST(CssReader, AnEmptyTextHasNoNode) {
    CssText reader("");
    for (int i = 0; i < 3; ++i) {
        EXPECT_FALSE(reader->Read());
        EXPECT_EQ(reader->NodeType(), CssNodeType::Node);
        EXPECT_EQ(reader->Value(), "");
        EXPECT_EQ(reader->ReadRule(), "");
    }
}

TEST(CssReader, NodesOutsideBlocks) {
    const NodeCase kCases[] = {
        {"p{", "Selector[p] StartDecl"},
        {"p{}", "Selector[p] StartDecl EndDecl"},
        {"p {}", "Selector[p ] StartDecl EndDecl"},
        {" \t\r\n\fp{}", "Whitespace Selector[p] StartDecl EndDecl"},
        {"h1 , h2 > a:hover {}", "Selector[h1 , h2 > a:hover ] StartDecl EndDecl"},
        {"/* c */p{}", "Comment[/* c */] Selector[p] StartDecl EndDecl"},
        {"/* c */ /**/p{}",
         "Comment[/* c */] Whitespace Comment[/**/] Selector[p] StartDecl EndDecl"},
        {"/***/", "Comment[/***/]"},
        {"/* * / */ ", "Comment[/* * / */] Whitespace"},
        {"/*/ a */ ", "Comment[/*/ a */] Whitespace"},
        {"/*{}*/p{}", "Comment[/*{}*/] Selector[p] StartDecl EndDecl"},
        {"{}", "StartDecl EndDecl"},
        {"}}{}", "EndDecl EndDecl StartDecl EndDecl"},
        {"}p{}", "EndDecl Selector[p] StartDecl EndDecl"},
        {"/p{}", "Selector[/p] StartDecl EndDecl"},
        {"\vp{}", "Selector[\vp] StartDecl EndDecl"},
        {"p{}q{}", "Selector[p] StartDecl EndDecl Selector[q] StartDecl EndDecl"},
        {"<!-- p{} -->", "Selector[<!-- p] StartDecl EndDecl Whitespace"},
        {"\xC3\xA9 {}", "Selector[\xC3\xA9 ] StartDecl EndDecl"},
        {"\xEF\xBB\xBFp{}", "Selector[\xEF\xBB\xBFp] StartDecl EndDecl"},
        {"@media print {", "Selector[@media print ] StartDecl"},
    };
    ExpectNodes(kCases);
}

TEST(CssReader, DeliberateASelectorRunsToTheNextBraceThroughCommentsAndQuotes) {
    const NodeCase kCases[] = {
        {"p/*{*/{}", "Selector[p/*] StartDecl"},
        {"a[b=\"{\"]{}", "Selector[a[b=\"] StartDecl"},
        {"a; b{}", "Selector[a; b] StartDecl EndDecl"},
        {"a} b{}", "Selector[a} b] StartDecl EndDecl"},
        {"@import url(a); b{}", "Selector[@import url(a); b] StartDecl EndDecl"},
    };
    ExpectNodes(kCases);
}

TEST(CssReader, TextWithoutABraceIsSkippedAtTheEnd) {
    CssText reader("p{} rest of it");
    ASSERT_TRUE(reader.Skip(4));
    EXPECT_EQ(reader->NodeType(), CssNodeType::Whitespace);
    EXPECT_FALSE(reader->Read());
    EXPECT_EQ(reader->NodeType(), CssNodeType::Whitespace) << "a failed read keeps the kind";
    EXPECT_FALSE(reader->Read());
    EXPECT_EQ(reader->ReadRule(), "");
    EXPECT_EQ(reader->Value(), "");
}

TEST(CssReader, NodesOfTheBlockOfARule) {
    const NodeCase kCases[] = {
        {"p{a:b}", "Selector[p] StartDecl Property[a=b] EndDecl"},
        {"p{a:b;}", "Selector[p] StartDecl Property[a=b] EndDecl"},
        {"p{;a:b}", "Selector[p] StartDecl Property[a=b] EndDecl"},
        {"p{;}", "Selector[p] StartDecl EndDecl"},
        {"p{a:b;c:d}", "Selector[p] StartDecl Property[a=b] Property[c=d] EndDecl"},
        {"p{ a : b ; c : d }",
         "Selector[p] StartDecl Whitespace Property[a=b] Whitespace Property[c=d] EndDecl"},
        {"p{a\t\r\n\f:b}", "Selector[p] StartDecl Property[a=b] EndDecl"},
        {"p{/*1*/a:b}", "Selector[p] StartDecl Comment[/*1*/] Property[a=b] EndDecl"},
        {"p{/*1*//*2*/}", "Selector[p] StartDecl Comment[/*1*/] Comment[/*2*/] EndDecl"},
        {"p{a:b/*1*/}", "Selector[p] StartDecl Property[a=b] EndDecl"},
        {"p{A-z_9:b}", "Selector[p] StartDecl Property[A-z_9=b] EndDecl"},
        {"p{z:b}", "Selector[p] StartDecl Property[z=b] EndDecl"},
        {"p{Z--:b}", "Selector[p] StartDecl Property[Z--=b] EndDecl"},
        {"p{a:b}q{c:d}",
         "Selector[p] StartDecl Property[a=b] EndDecl Selector[q] StartDecl Property[c=d] EndDecl"},
        {"@media print{p:q}", "Selector[@media print] StartDecl Property[p=q] EndDecl"},
    };
    ExpectNodes(kCases);
}

TEST(CssReader, WhatIsNoPropertyEndsTheBlockOfARule) {
    const NodeCase kCases[] = {
        {"p{a}", "Selector[p] StartDecl"},           {"p{a;b:c}", "Selector[p] StartDecl"},
        {"p{a b:c}", "Selector[p] StartDecl"},       {"p{a/**/:c}", "Selector[p] StartDecl"},
        {"p{:c}", "Selector[p] StartDecl"},          {"p{q{c:d}}", "Selector[p] StartDecl"},
        {"p{{}", "Selector[p] StartDecl"},           {"p{\xC3\xA9:c}", "Selector[p] StartDecl"},
        {"p{a\xC3\xA9:c}", "Selector[p] StartDecl"}, {"p{\\61:c}", "Selector[p] StartDecl"},
        {"p{9a:c}", "Selector[p] StartDecl"},        {"p{\"a\":c}", "Selector[p] StartDecl"},
        {"p{@a:c}", "Selector[p] StartDecl"},        {"p{/a:c}", "Selector[p] StartDecl"},
        {"p{a!b}", "Selector[p] StartDecl"},
    };
    ExpectNodes(kCases);
}

TEST(CssReader, DeliberateNamesBeginWithALetterOnly) {
    const NodeCase kCases[] = {
        {"p{-moz-x:1;a:b}", "Selector[p] StartDecl"},
        {"p{--x:1;a:b}", "Selector[p] StartDecl"},
        {"p{_x:1;a:b}", "Selector[p] StartDecl"},
        {"p{*x:1;a:b}", "Selector[p] StartDecl"},
        {"p{a:b;-x:1}", "Selector[p] StartDecl Property[a=b]"},
    };
    ExpectNodes(kCases);
    EXPECT_EQ(RulesOf("p{-moz-x:1;a:b}q{c:d}"), "p{  }\n");
}

TEST(CssReader, DeliberateTwoSemicolonsMakeOneReadFail) {
    CssText reader("p{a:b;;c:d}");
    ASSERT_TRUE(reader.Skip(3));
    EXPECT_EQ(support::NodeOf(*reader), "Property[a=b]");
    EXPECT_FALSE(reader->Read());
    EXPECT_EQ(reader->NodeType(), CssNodeType::Property) << "a failed read keeps the kind";
    EXPECT_EQ(NodesOf(*reader, 9), "Property[c=d] EndDecl");
}

TEST(CssReader, DeliberateAFailedNameIsReadAllTheSame) {
    // The next read goes on behind it.
    CssText reader("p{a/*x*/b:c}");
    ASSERT_TRUE(reader.Skip(2));
    EXPECT_FALSE(reader->Read());
    EXPECT_EQ(NodesOf(*reader, 9), "Comment[/*x*/] Property[b=c] EndDecl");
}

TEST(CssReader, WhatCannotBeReadStaysSo) {
    for (const char* const text : {"p{-a:b}q{}", "p{{", "p{q{}}", "p{9}"}) {
        SCOPED_TRACE(text);
        CssText reader(text);
        ASSERT_TRUE(reader.Skip(2));
        for (int i = 0; i < 100; ++i)
            EXPECT_FALSE(reader->Read());
        EXPECT_EQ(reader->NodeType(), CssNodeType::StartDecl);
        EXPECT_EQ(reader->ReadRule(), "");
    }
}

TEST(CssReader, NodesOfTheBlockOfAnAtRule) {
    const NodeCase kCases[] = {
        {"a:b", "Property[a=b]"},
        {"a : b ;c:d", "Property[a=b] Property[c=d]"},
        {";a:b", "Property[a=b]"},
        {"/*1*/a:b", "Comment[/*1*/] Property[a=b]"},
        {" \n", "Whitespace"},
        {"{", "StartDecl"},
        {"}", "EndDecl"},
        {"}}a:b", "EndDecl EndDecl Property[a=b]"},
        {"p{a:b}", "StartDecl Property[a=b] EndDecl"},
        {"p \n {a:b}", "StartDecl Property[a=b] EndDecl"},
        {"p q{a:b}", "Selector[p ] StartDecl Property[a=b] EndDecl"},
        {"p,q{a:b}", "Selector[p] Selector[,q] StartDecl Property[a=b] EndDecl"},
        {"p", "Selector[p]"},
        {"p ", "Selector[p ]"},
        {"p/*1*/{", "Selector[p] Comment[/*1*/] StartDecl"},
        {".x y{", "Selector[.x y] StartDecl"},
        {"#x{", "Selector[#x] StartDecl"},
        {"*{", "Selector[*] StartDecl"},
        {"-p{", "Selector[-p] StartDecl"},
        {"@b c{a:b}", "Selector[@b c] StartDecl Property[a=b] EndDecl"},
        {".x", ""},
        {";", ""},
        {";;", ""},
    };
    for (const NodeCase& c : kCases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(AtRuleNodesOf(c.text), c.nodes);
    }
}

TEST(CssReader, DeliberateAnElementWithAPseudoClassInAnAtRuleIsAProperty) {
    EXPECT_EQ(AtRuleNodesOf("a:hover {c:d} e:f"),
              "Property[a=hover {c:d] EndDecl Whitespace Property[e=f]");
}

TEST(CssReader, TheNodesOfAReadAheadKeepTheirTexts) {
    // More than 128 characters were read, so what is behind is dropped.
    const std::string blanks(300, ' ');
    const std::string selector(500, 's');
    const std::string text = blanks + selector + "{" + blanks + "name:" + selector + "}" + blanks;
    EXPECT_EQ(NodesOf(text), "Whitespace Selector[" + selector +
                                 "] StartDecl Whitespace Property[name=" + selector +
                                 "] EndDecl Whitespace");
}

TEST(CssReader, TheValueOfOtherNodesIsTheirText) {
    CssText reader(" \t\n/* c */p {");
    ASSERT_TRUE(reader->Read());
    EXPECT_EQ(reader->NodeType(), CssNodeType::Whitespace);
    EXPECT_EQ(reader->Value(), " \t\n");
    ASSERT_TRUE(reader->Read());
    EXPECT_EQ(reader->NodeType(), CssNodeType::Comment);
    EXPECT_EQ(reader->Value(), "/* c */");
    ASSERT_TRUE(reader->Read());
    EXPECT_EQ(reader->NodeType(), CssNodeType::Selector);
    EXPECT_EQ(reader->Value(), "p ");
    EXPECT_EQ(reader->Name(), "");
    EXPECT_EQ(reader->Priority(), "");
    ASSERT_TRUE(reader->Read());
    EXPECT_EQ(reader->NodeType(), CssNodeType::StartDecl);
    EXPECT_EQ(reader->Value(), "{");
}

TEST(CssReader, OnlyAPropertyHasAName) {
    CssText reader("p{a:b}");
    ASSERT_TRUE(reader.Skip(2));
    EXPECT_EQ(reader->Name(), "");
    ASSERT_TRUE(reader->Read());
    EXPECT_EQ(reader->Name(), "a");
    ASSERT_TRUE(reader->Read());
    EXPECT_EQ(reader->Name(), "");
    EXPECT_EQ(reader->Value(), "}");
}

TEST(CssReader, InAnAtRuleANameMayBeginOtherNodes) {
    CssText reader("@m{x:y h {a:b} k ");
    EXPECT_EQ(reader->ReadRule(), "@m{ x: y h {a:b; }");
    ASSERT_TRUE(reader.Skip(2));
    EXPECT_EQ(reader->NodeType(), CssNodeType::Selector);
    EXPECT_EQ(reader->Name(), "k");
    EXPECT_EQ(reader->Value(), "k ");
}

TEST(CssReader, ClosedItReadsNothing) {
    CssText reader("p{a:b}q{c:d}");
    ASSERT_TRUE(reader.Skip(3));
    for (int i = 0; i < 2; ++i) {
        reader->Close();
        EXPECT_FALSE(reader->Read());
        EXPECT_EQ(reader->Value(), "");
        EXPECT_EQ(reader->Name(), "");
        EXPECT_EQ(reader->Priority(), "");
        EXPECT_EQ(reader->ReadComment(), "");
        EXPECT_EQ(reader->ReadSelector(), "");
        EXPECT_EQ(reader->ReadRule(), "");
        EXPECT_EQ(reader->ReadDeclaration(), "");
    }
}

TEST(CssReader, ClosedItEndsTheBlockOfAnAtRule) {
    CssText reader("@a{b:c}");
    ASSERT_TRUE(reader.Skip(2));
    ASSERT_EQ(reader->NodeType(), CssNodeType::StartDecl);
    reader->Close();
    EXPECT_EQ(reader->ReadAtDeclaration(), "");
}

TEST(CssReader, TellsWhereANodeBegins) {
    const std::string text = "/*\xC3\xA9*/p {\n  a: b /*x\ny*/;\n  c: d }\nq{";
    const struct {
        const char* node;
        int line;
        int column;
    } kNodes[] = {
        {"Comment[/*\xC3\xA9*/]", 1, 1},
        {"Selector[p ]", 1, 6},
        {"StartDecl", 1, 8},
        {"Whitespace", 1, 9},
        {"Property[a=b ]", 2, 3},
        {"Whitespace", 3, 5},
        {"Property[c=d]", 4, 3},
        {"EndDecl", 4, 8},
        {"Whitespace", 4, 9},
        {"Selector[q]", 5, 1},
        {"StartDecl", 5, 2},
    };
    CssText reader(text);
    for (const auto& node : kNodes) {
        SCOPED_TRACE(node.node);
        ASSERT_TRUE(reader->Read());
        EXPECT_EQ(support::NodeOf(*reader), node.node);
        EXPECT_EQ(reader->LineNumber(), node.line);
        EXPECT_EQ(reader->LinePos(), node.column);
    }
    EXPECT_FALSE(reader->Read());
}

TEST(CssReader, TellsPlacesFarBehindTheBegin) {
    constexpr int kRules = 2000;
    std::string lines;
    std::string line;
    for (int i = 0; i < kRules; ++i) {
        lines += "\xE2\x82\xAC{a:b}\n";
        line += "\xE2\x82\xAC{a:b}";
    }
    CssText inLines(lines);
    CssText inALine(line);
    for (int i = 0; i < kRules; ++i) {
        ASSERT_TRUE(inLines->Read());
        ASSERT_EQ(inLines->LineNumber(), i + 1);
        ASSERT_EQ(inLines->LinePos(), 1);
        ASSERT_TRUE(inLines.Skip(4));
        ASSERT_TRUE(inALine->Read());
        ASSERT_EQ(inALine->LineNumber(), 1);
        ASSERT_EQ(inALine->LinePos(), 6 * i + 1);
        ASSERT_TRUE(inALine.Skip(3));
    }
}

TEST(CssReader, TheEndIsToldFromAFault) {
    const struct {
        const char* text;
        bool isAtEnd;  // after the first read that fails
    } kCases[] = {
        {"", true},        {" ", true},        {"p{}", true},
        {"p{}\n", true},   {"p{", true},       {"p{a:b", true},
        {"p{a:b;", true},  {"/*", true},

        {"p", false},      {"p{}q", false},    {"p{a}", false},
        {"p{a", false},    {"p{-a:b}", false}, {"p{a:b;;c:d}", false},
        {"p{q{}}", false}, {"@a;", false},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.text);
        CssText reader(c.text);
        while (reader->Read()) {
        }
        EXPECT_EQ(reader->IsAtEnd(), c.isAtEnd);
    }
}

TEST(CssReader, AFaultIsNotTheEndForAsLongAsItStays) {
    CssText reader("p{-a:b}");
    ASSERT_TRUE(reader.Skip(2));
    EXPECT_FALSE(reader->IsAtEnd());
    for (int i = 0; i < 3; ++i) {
        EXPECT_FALSE(reader->Read());
        EXPECT_FALSE(reader->IsAtEnd());
        EXPECT_EQ(reader->LinePos(), 3);
    }
    reader->Close();
    EXPECT_TRUE(reader->IsAtEnd());
}
