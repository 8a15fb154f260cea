// SPDX-License-Identifier: MIT

// Which selectors are accepted, and what they count.

#include <espalier/dom/css/Specificity.h>

#include <climits>
#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace {

using Dom::CSS::CSS_SPECIFICITY;

struct Case {
    const char* text;
    int specificity;
};

template <std::size_t Count>
void ExpectSpecificities(const Case (&cases)[Count]) {
    for (const Case& c : cases)
        EXPECT_EQ(CSS_SPECIFICITY(c.text), c.specificity) << c.text;
}

std::string Repeated(const char* text, int count) {
    std::string result;
    for (int i = 0; i < count; ++i)
        result += text;
    return result;
}

}  // namespace

TEST(Specificity, PacksThreeCounts) {
    const struct {
        int ids;
        int classes;
        int elements;
        int packed;
    } kCases[] = {
        {0, 0, 0, 0},
        {0, 0, 1, 1},
        {0, 1, 0, 1000},
        {1, 0, 0, 1'000'000},
        {1, 2, 3, 1'002'003},
        {0, 0, 1000, 1000},  // counts are not kept apart
        {0, 1000, 0, 1'000'000},
        {0, 1, 999, 1999},
        {2147, 483, 647, INT_MAX},
        {2147, 483, 646, INT_MAX - 1},
        // Too many for an int.
        {2147, 483, 648, INT_MAX},
        {2148, 0, 0, INT_MAX},
        {0, 2'147'484, 0, INT_MAX},
        {INT_MAX, 0, 0, INT_MAX},
        {0, INT_MAX, 0, INT_MAX},
        {0, 0, INT_MAX, INT_MAX},
        {INT_MAX, INT_MAX, INT_MAX, INT_MAX},
    };
    for (const auto& c : kCases)
        EXPECT_EQ(CSS_SPECIFICITY(c.ids, c.classes, c.elements), c.packed)
            << c.ids << ", " << c.classes << ", " << c.elements;
}

TEST(Specificity, WithoutASelectorItIsZero) {
    ExpectSpecificities({{"", 0}, {" ", 0}, {" \t\n\r\f", 0}, {"{", 0}, {" { a: b }", 0}});
}

TEST(Specificity, CountsIdsClassesAndElements) {
    ExpectSpecificities({
        {"h1", 1},
        {"*", 0},
        {"#a", 1'000'000},
        {"#1a", 1'000'000},  // a name, not an identifier
        {"#-", 1'000'000},
        {".a", 1000},
        {"h1#a", 1'000'001},
        {"h1.a", 1001},
        {"h1.a.b", 2001},
        {"*.a", 1000},
        {"#a#b", 2'000'000},
        {"#a.b", 1'001'000},
        {".a#b", 1'001'000},
        {"-moz-a", 1},
        {"_a", 1},
        {"\xC3\xA9", 1},
        {"h\\31 ", 1},
        {"h1.a:hover > p[x=y] + #z", 1'003'002},
    });
}

TEST(Specificity, CombinatorsCountNothing) {
    ExpectSpecificities({
        {"h1 p", 2},
        {"h1>p", 2},
        {"h1 > p", 2},
        {"h1+p", 2},
        {"h1 \t\n\r\f+ \t\n\r\fp", 2},
        {"div ul > li + li a", 5},
        {".a .b", 2000},
        {"#a .b c", 1'001'001},
        {" h1 ", 1},
        {"* * *", 0},
    });
}

TEST(Specificity, AnAttributeCountsAsAClass) {
    ExpectSpecificities({
        {"h1[a]", 1001},
        {"*[a]", 1000},
        {"h1[ a ]", 1001},
        {"h1[a=b]", 1001},
        {"h1[a=\"b\"]", 1001},
        {"h1[a='b']", 1001},
        {"h1[a=\"\"]", 1001},
        {"h1[ \t\na \t\n= \t\n\"b c\" \t\n]", 1001},
        {"h1[a=\"]{,\"]", 1001},
        {"h1[a='\"']", 1001},
        {"h1[data-a=b-c]", 1001},
        {".a[b]", 2000},
        {"h1:hover[a]", 2001},
        {"h1[a].b[c]", 3001},
        {"#a.b[c]", 1'002'000},
        {"p h1[a] q", 1003},
    });
}

// Deliberate: an attribute follows a type, a class or a pseudo-class only.
TEST(Specificity, DeliberateAnAttributeIsRefusedElsewhere) {
    ExpectSpecificities({
        {"[a]", -1},
        {" [a]", -1},
        {"h1[a][b]", -1},
        {"h1[a] [b]", -1},
        {"#a[b]", -1},
        {"#a [b]", -1},
        {"h1#a[b]", -1},
        {"h1 > [a]", -1},
        {"h1 + [a]", -1},
        {"h1, [a]", -1},
        {"h1,[a]", -1},
        // White space takes nothing away from what stands before it.
        {"h1 [a]", 1001},
        {"* [a]", 1000},
        {".b [a]", 2000},
    });
}

TEST(Specificity, AttributesThatAreNotCompleteAreRefused) {
    for (const char* const text :
         {"a[", "a[b", "a[b=", "a[b=c", "a[b=\"c", "a[b=\"c]", "a[b=\"c\"", "a[]", "a[=c]", "a[b=]",
          "a[1]", "a[b=1]", "a[b=c d]", "a[b c]", "a[b=#c]", "a[b==c]", "a[b=\"c\"d]"})
        EXPECT_EQ(CSS_SPECIFICITY(text), -1) << text;
}

TEST(Specificity, EveryPseudoClassCountsAsTheTableSays) {
    const struct {
        const char* name;
        bool counts;
    } kCases[] = {
        {"active", true},
        {"after", false},
        {"before", false},
        {"checked", true},
        {"contains", true},
        {"disabled", true},
        {"enabled", true},
        {"empty", true},
        {"first-child", true},
        {"first-letter", false},
        {"first-line", false},
        {"first-of-type", true},
        {"focus", true},
        {"hover", true},
        {"indeterminate", true},
        {"lang", true},
        {"last-child", true},
        {"last-of-type", true},
        {"link", true},
        {"not", true},
        {"nth-child", true},
        {"nth-last-child", true},
        {"nth-last-of-type", true},
        {"nth-of-type", true},
        {"only-child", true},
        {"only-of-type", true},
        {"root", true},
        {"selection", false},
        {"target", true},
        {"visited", true},
        // What is not in the table counts nothing.
        {"foo", false},
        {"activ", false},
        {"actives", false},
        {"first", false},
        {"nth", false},
        {"a", false},
        {"zzz", false},
        {"-moz-any", false},
        {"not-child", false},
    };
    for (const auto& c : kCases) {
        const int counted = c.counts ? 1000 : 0;
        EXPECT_EQ(CSS_SPECIFICITY((std::string(":") + c.name).c_str()), counted) << c.name;
        EXPECT_EQ(CSS_SPECIFICITY((std::string("p:") + c.name).c_str()), counted + 1) << c.name;
        EXPECT_EQ(CSS_SPECIFICITY((std::string("p:") + c.name + "(x)").c_str()), counted + 1)
            << c.name;
        EXPECT_EQ(CSS_SPECIFICITY((std::string("p:") + c.name + "[x] q").c_str()), counted + 1002)
            << c.name;
    }
}

// Deliberate: a pseudo-element does not even count as an element.
TEST(Specificity, DeliberateAPseudoElementCountsNothing) {
    ExpectSpecificities({{":before", 0}, {"p:first-line", 1}, {"#a:selection", 1'000'000}});
}

TEST(Specificity, AnArgumentIsSkipped) {
    ExpectSpecificities({
        {":not(.a)", 1000},
        {":not(#a.b.c)", 1000},
        {"p:nth-child(2n+1)", 1001},
        {"p:nth-child( 2n + 1 ) q", 1002},
        {":lang(en)", 1000},
        {":contains(\"a)b\")", 1000},
        {":contains('(')", 1000},
        {":contains(\"a\\\")\")", 1000},
        {":not(:nth-child(2))", 1000},
        {":not(:not(:not(a)))", 1000},
        {":not(a, b), c", 1001},
        {":not({})", 1000},
        {":not()", 1000},
        {":not(a):not(b)", 2000},
        {"p:foo(x)", 1},
    });
}

TEST(Specificity, AnArgumentFollowsItsNameAndEnds) {
    for (const char* const text : {":not(", ":not(a", ":not(\"a)", ":not((a)", ":not (a)",
                                   ":not(a))", ":not)", "p(a)", ".a(b)", "#a(b)", "*(a)"})
        EXPECT_EQ(CSS_SPECIFICITY(text), -1) << text;
}

TEST(Specificity, WhatIsNoTokenIsRefused) {
    for (const char* const text :
         {"#",       ".",       ":",        "# a",       ". a",   ": a",     ".1",      ".#a",
          ":.a",     "::",      "::before", "p::before", "p ~ q", "p~q",     "a|b",     "*|a",
          "|a",      "1",       "1a",       "--a",       "-",     "\"a\"",   "'a'",     "@media",
          "a/**/",   "a/**/b",  "/",        "a}",        "}",     "a;",      "a!",      "a=b",
          "a)",      "a]",      "(",        "a$",        "a&b",   "a%",      "p[a~=b]", "p[a|=b]",
          "p[a^=b]", "p[a$=b]", "p[a*=b]",  "a <b",      "a, 1",  "a, b, #", "a b :",   "a:1"})
        EXPECT_EQ(CSS_SPECIFICITY(text), -1) << text;
}

// Deliberate: the numbers of all selectors of a group are added.
TEST(Specificity, DeliberateAGroupIsSummed) {
    ExpectSpecificities({
        {"h1, h2", 2},
        {"h1,h2", 2},
        {"h1 \t\n, \t\nh2 ,h3", 3},
        {".a, .a", 2000},
        {"#a, .b, c", 1'001'001},
        {"#a,#b,#c", 3'000'000},
        {"a b, c > d", 4},
        {"*, *", 0},
        {"p:before, p:after", 2},
        {"a, b { c, d: e }", 2},
    });
}

TEST(Specificity, EndsAtABrace) {
    ExpectSpecificities({
        {"h1{", 1},
        {"h1 {", 1},
        {"h1 { color: 1 }", 1},
        {"h1{1", 1},
        {"h1[a=\"{\"] { }", 1001},
        {"h1 {,", 1},
    });
    EXPECT_EQ(CSS_SPECIFICITY("1 { }"), -1);
}

// Combinators and commas are counted as nothing wherever they stand.
TEST(Specificity, NothingIsSaidAgainstCombinatorsWithoutASide) {
    ExpectSpecificities({
        {"> p", 1},
        {"p >", 1},
        {"p > > q", 2},
        {"+ > p +", 1},
        {"p,", 1},
        {"p, ", 1},
    });
}

TEST(Specificity, TooManyAreTheLargestNumber) {
    EXPECT_EQ(CSS_SPECIFICITY(Repeated("#a", 2147).c_str()), 2'147'000'000);
    EXPECT_EQ(CSS_SPECIFICITY(Repeated("#a", 2148).c_str()), INT_MAX);
    EXPECT_EQ(CSS_SPECIFICITY(Repeated("#a, ", 2148).c_str()), INT_MAX);
    EXPECT_EQ(CSS_SPECIFICITY(Repeated("#a", 10'000).c_str()), INT_MAX);
    EXPECT_EQ(CSS_SPECIFICITY((Repeated("#a", 2147) + Repeated(".a", 483)).c_str()), 2'147'483'000);
    EXPECT_EQ(CSS_SPECIFICITY((Repeated("#a", 2147) + Repeated(".a", 484)).c_str()), INT_MAX);
}

TEST(SpecificityHostile, LongTextsTakeLinearTimeAndNoStack) {
    constexpr int kMany = 1'000'000;
    EXPECT_EQ(CSS_SPECIFICITY(Repeated(".a", kMany).c_str()), 1'000'000'000);
    EXPECT_EQ(CSS_SPECIFICITY(Repeated("a ", kMany).c_str()), kMany);
    EXPECT_EQ(CSS_SPECIFICITY(Repeated("a,", kMany).c_str()), kMany);
    EXPECT_EQ(CSS_SPECIFICITY(Repeated("a:not(b)", 100'000).c_str()), 100'100'000);
    EXPECT_EQ(CSS_SPECIFICITY((":not" + Repeated("(", kMany) + Repeated(")", kMany)).c_str()),
              1000);
    EXPECT_EQ(CSS_SPECIFICITY((":not" + Repeated("(", kMany)).c_str()), -1);
    EXPECT_EQ(CSS_SPECIFICITY(
                  (std::string(5'000'000, ' ') + "a" + std::string(5'000'000, ' ') + "b").c_str()),
              2);
    EXPECT_EQ(CSS_SPECIFICITY(("a[b=\"" + std::string(5'000'000, '[')).c_str()), -1);
}
