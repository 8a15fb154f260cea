// SPDX-License-Identifier: MIT
// What Dom::CSS::CssReader makes of whole rules and blocks.
#include <espalier/dom/css/CssReader.h>

#include "dom/css/CssText.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Dom::CSS::CssNodeType;
using support::CssText;
using support::NodeOf;
using support::RulesOf;

struct RuleCase {
    const char* text;
    const char* rules;  // each with a line feed behind it
};

template <std::size_t kCount>
void ExpectRules(const RuleCase (&cases)[kCount]) {
    for (const RuleCase& c : cases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(RulesOf(c.text), c.rules);
    }
}

}  // namespace

TEST(CssReaderRule, IsWrittenInOneForm) {
    const RuleCase kCases[] = {
        {"p{}", "p{  }\n"},
        {"p{ }", "p{  }\n"},
        {"p { \n }", "p {  }\n"},
        {"p{a:b}", "p{ a: b }\n"},
        {"p{a:b;}", "p{ a: b }\n"},
        {"p{;a:b}", "p{ a: b }\n"},
        {"p\t{\r\n  a : b ;\r\n  c :d\r\n}\r\n", "p\t{ a: b; c: d }\n\n"},
        {"h1 , h2 {color:red;  /* c */ margin : 0 1px !important}",
         "h1 , h2 { color: red; margin: 0 1px !important }\n"},
        {"p{/*1*/a:b/*2*/;/*3*/c:d;/*4*/}", "p{ a: b; c: d }\n"},
        {"p{a:b}q{c:d}", "p{ a: b }\nq{ c: d }\n"},
        {"p{a:b} q{c:d}", "p{ a: b }\nq{ c: d }\n"},
        {"/*1*/p{a:b}/*2*/ /*3*/q{c:d}", "p{ a: b }\nq{ c: d }\n"},
        {"{a:b}p{c:d}", "\n\np{ c: d }\n"},
        {"}p{c:d}", "p{ c: d }\n"},
        {"p{a:1;a:2}", "p{ a: 1; a: 2 }\n"},
        {"p/*x*/q{a:b}", "p/*x*/q{ a: b }\n"},
    };
    ExpectRules(kCases);
}

TEST(CssReaderRule, EndsWithTheText) {
    const RuleCase kCases[] = {
        {"p", ""},
        {"p{", "p{  }\n"},
        {"p{ ", "p{  }\n"},
        {"p{/*", "p{  }\n"},
        {"p{a", "p{  }\n"},
        {"p{a:b", "p{ a: b }\n"},
        {"p{a:b;", "p{ a: b }\n"},
        {"p{a:b;c", "p{ a: b }\n"},
        {"p{a:b;c:d", "p{ a: b; c: d }\n"},
        {"p{a:b  ", "p{ a: b   }\n"},
        {"p{a:", "p{ a: a: }\n"},
        {"@a{", "@a{  }\n"},
        {"@a{ ", "@a{  }\n"},
        {"@a{b:c", "@a{ b: c; }\n"},
        {"@a{b:c;", "@a{ b: c; }\n"},
        {"@a{p{b:c", "@a{ b: c; }\n"},
        {"@a{b:c;d", "@a{ b: c;  }\n"},
    };
    ExpectRules(kCases);
}

TEST(CssReaderRule, DeliberateAFaultEndsTheSheet) {
    const RuleCase kCases[] = {
        {"p{-moz-x:1}q{c:d}", "p{  }\n"},
        {"p{a:b;*zoom:1}q{c:d}", "p{ a: b }\n"},
        {"p{a:b;--x:1;c:d}q{e:f}", "p{ a: b }\n"},
        {"p{a}q{c:d}", "p{  }\nq{ c: d }\n"},
        {"p{q{a:b}}r{c:d}", "p{  }\n"},
    };
    ExpectRules(kCases);
}

TEST(CssReaderRule, DeliberateTwoSemicolonsLoseTheRestOfTheBlock) {
    // The second one makes a read fail, which ends the rule; the next read goes on in the block,
    // where there is no rule.
    const RuleCase kCases[] = {
        {"p{a:b;;c:d}q{e:f}", "p{ a: b }\n\nq{ e: f }\n"},
        {"p{a:b;;}q{e:f}", "p{ a: b }\nq{ e: f }\n"},
        {"p{;;c:d}q{e:f}", "p{  }\n\nq{ e: f }\n"},
    };
    ExpectRules(kCases);
}

TEST(CssReaderRule, DeliberateABlockOfCommentsTakesTheNextOnesProperties) {
    const RuleCase kCases[] = {
        {"p{/*x*/}q{a:b}", "p{ a: b }\n"},
        {"p{ /*x*/ }q{a:b;c:d}r{e:f}", "p{ a: b; c: d }\nr{ e: f }\n"},
        {"p{;/*x*/}q{a:b}", "p{ a: b }\n"},
        {"p{/*x*/}", "p{  }\n"},
    };
    ExpectRules(kCases);
}

TEST(CssReaderRule, AtRulesAreWrittenInOneForm) {
    const RuleCase kCases[] = {
        {"@a{b:c}", "@a{ b: c; }\n"},
        {"@a{b:c;}", "@a{ b: c; }\n"},
        {"@a { b : c ; }", "@a { b: c; }\n"},
        {"@a{ }", "@a{  }\n"},
        {"@a{b:c;d:e}", "@a{ b: c; d: e; }\n"},
        {"@a{ b:c; d:e; }", "@a{ b: c; d: e; }\n"},
        {"@font-face {font-family:'x';src:url(x.ttf)}",
         "@font-face { font-family: 'x'; src: url(x.ttf); }\n"},
        {"@a{b:c/*x*/}", "@a{ b: c; }\n"},
        {"@a{/*x*/b:c}", "@a{ b: c; }\n"},
        {"@a{b:c !important}", "@a{ b: c !important; }\n"},
    };
    ExpectRules(kCases);
}

TEST(CssReaderRule, DeliberateOtherNodesAddABlankToAnAtRule) {
    const RuleCase kCases[] = {
        {"@a{b:c;/*x*/d:e}", "@a{ b: c;  d: e; }\n"},
        {"@a{b:c;/*x*//*y*/d:e}", "@a{ b: c;   d: e; }\n"},
        {"@a{b:c;/*x*/}", "@a{ b: c;  }\n"},
        {"@a{b:c;p{d:e}}", "@a{ b: c;  d: e; }\n"},
        {"@a{b:c;.p{d:e}}", "@a{ b: c;   d: e; }\n"},
    };
    for (const RuleCase& c : kCases) {
        SCOPED_TRACE(c.text);
        CssText reader(c.text);
        EXPECT_EQ(reader->ReadRule().str() + "\n", c.rules);
    }
}

TEST(CssReaderRule, DeliberateABraceEndsAnAtRuleWhicheverItIs) {
    CssText reader("@media print { p { color: red } }");
    EXPECT_EQ(reader->ReadRule(), "@media print { color: red; }");
    EXPECT_EQ(NodeOf(*reader), "EndDecl");
    ASSERT_TRUE(reader->Read());
    EXPECT_EQ(NodeOf(*reader), "Whitespace");
    ASSERT_TRUE(reader->Read());
    EXPECT_EQ(NodeOf(*reader), "EndDecl");
    EXPECT_FALSE(reader->Read());
}

TEST(CssReaderRule, DeliberateTheRuleBehindABlockOfRulesIsReadAsOneOfThem) {
    const RuleCase kCases[] = {
        // one name and a brace are the start of a block
        {"@media print{p{a:b}} h1 {c:d}", "@media print{ a: b; }\n\n"},
        {"@media print{p{a:b}} h1 {c:d} h2 {e:f}", "@media print{ a: b; }\n\n"},
        // a pseudo-class is a property
        {"@media print{p{a:b}} a:hover {c:d}", "@media print{ a: b; }\n\n"},
        // the first name of several is all of the selector
        {"@media print{p{a:b}} h1 p {c:d}", "@media print{ a: b; }\nh1 { c: d }\n"},
        {"@media print{p{a:b}} h1,p {c:d}", "@media print{ a: b; }\nh1{ c: d }\n"},
        // no name, no harm; and that is the end of it
        {"@media print{p{a:b}} .x {c:d}", "@media print{ a: b; }\n.x { c: d }\n"},
        {"@media print{p{a:b}} .x {c:d} h1 {e:f}",
         "@media print{ a: b; }\n.x { c: d }\nh1 { e: f }\n"},
        // within the block it is the same
        {"@media print{p{a:b}q{c:d}}", "@media print{ a: b; }\n\n"},
        {"@media print{p{a:b}.x y{c:d}}", "@media print{ a: b; }\n.x y{ c: d }\n\n"},
        {"@media print{p{a:b}q r{c:d}}", "@media print{ a: b; }\nq { c: d }\n\n"},
    };
    ExpectRules(kCases);
}

TEST(CssReaderRule, DeliberateAtRulesWithoutABlockTakeThatOfTheNextRule) {
    const RuleCase kCases[] = {
        {"@import url(a); p {c:d}", "@import url(a); p { c: d; }\n"},
        {"@charset \"x\"; p {c:d}", "@charset \"x\"; p { c: d; }\n"},
        {"@charset \"x\";@import 'y';p{c:d}", "@charset \"x\";@import 'y';p{ c: d; }\n"},
        {"@import url(a);", ""},
    };
    ExpectRules(kCases);
}

TEST(CssReaderRule, DeliberateAnEmptyAtRuleTakesTheNextBlock) {
    const RuleCase kCases[] = {
        {"@a{}p{b:c}", "@a{ b: c; }\n"},
        {"@a{}", "@a{  }\n"},
    };
    ExpectRules(kCases);
}

TEST(CssReaderRule, BeginsAtTheCurrentSelector) {
    CssText reader("p{a:b}q{c:d}");
    ASSERT_TRUE(reader->Read());
    EXPECT_EQ(NodeOf(*reader), "Selector[p]");
    EXPECT_EQ(reader->ReadRule(), "p{ a: b }");
    EXPECT_EQ(NodeOf(*reader), "EndDecl");
    EXPECT_EQ(reader->ReadRule(), "q{ c: d }");
    EXPECT_EQ(reader->ReadRule(), "");
    EXPECT_EQ(reader->ReadRule(), "");
}

TEST(CssReaderRule, DoesNotBeginWithinABlock) {
    CssText reader("p{a:b}q{c:d}");
    ASSERT_TRUE(reader.Skip(2));
    EXPECT_EQ(reader->ReadRule(), "");
    ASSERT_TRUE(reader->Read());
    EXPECT_EQ(reader->ReadRule(), "");
    EXPECT_EQ(NodeOf(*reader), "Property[a=b]");
    ASSERT_TRUE(reader->Read());
    EXPECT_EQ(reader->ReadRule(), "q{ c: d }");
}

TEST(CssReaderRule, ReadsABlock) {
    const struct {
        const char* text;
        const char* block;
        const char* node;  // where it ends
    } kCases[] = {
        {"p{a:b;c:d}q{}", "a: b; c: d", "EndDecl"},
        {"p{ a:b }q{}", "a: b", "EndDecl"},
        {"p{}", "", "EndDecl"},
        {"p{ }", "", "EndDecl"},
        {"p{a:b;c:d", "a: b; c: d", "Property"},
        {"p{color: red !important}", "color: red !important", "EndDecl"},
        {"p{/**/a:b;/**/c:d}", "a: b; c: d", "EndDecl"},
        {"/**/ p{a:b}", "a: b", "EndDecl"},
        {"{a:b}", "a: b", "EndDecl"},
        {"p{a:b;-c:d}", "a: b", "Property"},
        {"p", "", "Node"},
        {"", "", "Node"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.text);
        CssText reader(c.text);
        EXPECT_EQ(reader->ReadDeclaration(), c.block);
        EXPECT_EQ(reader->NodeType().ToString(), c.node);
    }
}

TEST(CssReaderRule, ABlockBeginsAtTheCurrentBrace) {
    CssText reader("p{a:b}q{c:d}");
    ASSERT_TRUE(reader.Skip(2));
    EXPECT_EQ(reader->ReadDeclaration(), "a: b");
    EXPECT_EQ(reader->ReadDeclaration(), "c: d");
    EXPECT_EQ(reader->ReadDeclaration(), "");
}

TEST(CssReaderRule, ReadsTheBlockOfAnAtRuleOnce) {
    // It goes on while the reader is within an at-rule: here it is not, so one node is all.
    const struct {
        const char* text;
        const char* block;
    } kCases[] = {
        {"p{a:b;c:d}", "a: b;"}, {"p{ a:b}", ""}, {"p{", ""}, {"p", ""}, {"", ""},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.text);
        CssText reader(c.text);
        EXPECT_EQ(reader->ReadAtDeclaration(), c.block);
    }
}

TEST(CssReaderRule, ReadsTheNextComment) {
    CssText reader("/*1*/p{/*2*/a:b;c:d/*3*/}/*4*/");
    EXPECT_EQ(reader->ReadComment(), "/*1*/");
    EXPECT_EQ(reader->ReadComment(), "/*1*/") << "the current node counts";
    ASSERT_TRUE(reader->Read());
    EXPECT_EQ(reader->ReadComment(), "/*2*/");
    ASSERT_TRUE(reader->Read());
    EXPECT_EQ(NodeOf(*reader), "Property[a=b]");
    EXPECT_EQ(reader->ReadComment(), "/*4*/") << "the third was skipped with the value";
    EXPECT_FALSE(reader->Read());
}

TEST(CssReaderRule, ReadsTheNextSelector) {
    CssText reader(" /**/p {a:b}q{}");
    EXPECT_EQ(reader->ReadSelector(), "p ");
    EXPECT_EQ(reader->ReadSelector(), "p ") << "the current node counts";
    ASSERT_TRUE(reader->Read());
    EXPECT_EQ(reader->ReadSelector(), "q");
    ASSERT_TRUE(reader->Read());
    EXPECT_EQ(reader->ReadSelector(), "");
}

TEST(CssReaderRule, ReadsTheNextProperty) {
    CssText reader("p{/**/a:b;c:d}q{e:f}");
    EXPECT_TRUE(reader->ReadProperty());
    EXPECT_EQ(NodeOf(*reader), "Property[a=b]");
    EXPECT_TRUE(reader->ReadProperty());
    EXPECT_EQ(NodeOf(*reader), "Property[a=b]") << "the current node counts";
    ASSERT_TRUE(reader->Read());
    EXPECT_EQ(NodeOf(*reader), "Property[c=d]");
    ASSERT_TRUE(reader->Read());
    EXPECT_TRUE(reader->ReadProperty());
    EXPECT_EQ(NodeOf(*reader), "Property[e=f]");
    ASSERT_TRUE(reader->Read());
    EXPECT_FALSE(reader->ReadProperty());
    EXPECT_EQ(reader->NodeType(), CssNodeType::EndDecl);
}

TEST(CssReaderRule, WithoutOneTheNextNodeIsNone) {
    for (const char* const text : {"", " ", "p", "p{}", "p{-a:b}", "p{a:b"}) {
        SCOPED_TRACE(text);
        CssText reader(text);
        EXPECT_EQ(reader->ReadComment(), "");
    }
    for (const char* const text : {"", " ", "p", "p{}", "p{-a:b}", "p{/**/}"}) {
        SCOPED_TRACE(text);
        CssText reader(text);
        EXPECT_FALSE(reader->ReadProperty());
    }
    for (const char* const text : {"", " ", "p", "{a:b}", "/*p*/", "}"}) {
        SCOPED_TRACE(text);
        CssText reader(text);
        EXPECT_EQ(reader->ReadSelector(), "");
    }
}

TEST(CssReaderRule, DeliberateASemicolonIsInTheTextOfWhatFollows) {
    CssText reader("p{a:b;/*1*/;\n}@c{d:e; f{g:h}");
    ASSERT_TRUE(reader.Skip(3));
    for (const char* const text : {";/*1*/", ";\n", "}"}) {
        ASSERT_TRUE(reader->Read());
        EXPECT_EQ(reader->Value(), text);
    }
    EXPECT_EQ(reader->LinePos(), 1);
    EXPECT_EQ(reader->LineNumber(), 2);
    EXPECT_EQ(CssText("p{a:b;/*1*/}")->ReadComment(), "/*1*/") << "it is stepped over here";
}

// The kind of the node before stays when a read fails; what was passed over is no such node.
TEST(CssReaderRule, WhatCouldNotBeReadIsNoRule) {
    CssText reader("@m { h1 %");
    EXPECT_EQ(reader->ReadRule(), "@m {  }");
    EXPECT_EQ(reader->ReadRule(), "");
    CssText other("@m { h1 %");
    EXPECT_EQ(other->ReadRule(), "@m {  }");
    EXPECT_EQ(other->ReadSelector(), "");
}

TEST(CssReaderRule, SemicolonsAreSteppedOverOnTheWay) {
    CssText reader("p{;a:b;/*1*/}");
    EXPECT_TRUE(reader->ReadProperty());
    EXPECT_EQ(NodeOf(*reader), "Property[a=b]");
    EXPECT_EQ(reader->ReadComment(), "/*1*/");
    CssText twice("p{;;a:b}");
    EXPECT_FALSE(twice->ReadProperty());
    EXPECT_TRUE(twice->ReadProperty());
    EXPECT_EQ(NodeOf(*twice), "Property[a=b]");
}
