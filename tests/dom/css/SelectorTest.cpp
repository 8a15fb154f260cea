// SPDX-License-Identifier: MIT

// What Selector knows beyond the selectors of a style rule, and what it refuses.

#include <espalier/dom/css/Selector.h>

#include "dom/ExpectDomError.h"
#include "dom/css/Matching.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>

namespace {

using Dom::CSS::Selector;

struct Case {
    const char* selector;
    const char* labels;
};

template <std::size_t Count>
void ExpectSelected(std::string_view xml, const Case (&cases)[Count], const char* pseudo = "") {
    Dom::Document document;
    document.LoadXml(xml);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.selector);
        const Selector selector(c.selector);
        EXPECT_EQ(support::Selected(document,
                                    [&](const Dom::Element& element) {
                                        return selector.Matches(element, pseudo);
                                    }),
                  c.labels);
    }
}

}  // namespace

TEST(Selector, KeepsItsText) {
    EXPECT_EQ(Selector("a").Text(), "a");
    EXPECT_EQ(Selector("ul.menu > li , a[href^='http:']").Text(),
              "ul.menu > li , a[href^='http:']");
}

TEST(Selector, AttributesMayStandAlone) {
    ExpectSelected("<r><a n='1' k='v'/><b n='2' k='w' l='x' id='i'/><b n='3' l='x'/></r>",
                   {
                       {"[k]", "1 2"},
                       {"[k=v]", "1"},
                       {"[k=\"v\"]", "1"},
                       {"[k='v']", "1"},
                       {" [ k = v ] ", "1"},
                       {"[k][l]", "2"},
                       {"[l=x][k=w]", "2"},
                       {"[l=x][k=v]", ""},
                       {"#i[l]", "2"},
                       {"b[k], [k=v]", "1 2"},
                       {"r > [l]", "2 3"},
                       {"a + [l]", "2"},
                       {":not([l])", "r 1"},
                       {"b:not([k])", "3"},
                   });
}

TEST(Selector, AnAttributeHasAWord) {
    ExpectSelected(
        "<r><a n='1' k='x'/><a n='2' k='x y'/><a n='3' k='y  x&#9;z'/><a n='4' k='xy'/>"
        "<a n='5' k=''/><a n='6' k='X'/><a n='7'/><a n='8' k='x-y'/></r>",
        {
            {"[k~=x]", "1 2 3"},
            {"[k~='y']", "2 3"},
            {"[k~=z]", "3"},
            {"[k ~= \"x\"]", "1 2 3"},
            {"[k~='']", ""},
            {"[k~='x y']", ""},
            {"[k~=X]", "6"},
        });
}

TEST(Selector, AnAttributeHasALanguage) {
    ExpectSelected(
        "<r><a n='1' k='en'/><a n='2' k='en-US'/><a n='3' k='english'/>"
        "<a n='4' k='EN'/><a n='5' k=''/><a n='6' k='-x'/><a n='7' k='x en'/></r>",
        {
            {"[k|=en]", "1 2"},
            {"[k|='en-US']", "2"},
            {"[k|=EN]", "4"},
            {"[k|=e]", ""},
            {"[k|='']", "5 6"},
        });
}

TEST(Selector, AnAttributeBeginsEndsOrContains) {
    ExpectSelected(
        "<r><a n='1' k='abc'/><a n='2' k='ab'/><a n='3' k='bc'/><a n='4' k='b'/>"
        "<a n='5' k=''/><a n='6' k='ABC'/><a n='7'/></r>",
        {
            {"[k^=ab]", "1 2"},
            {"[k^='abc']", "1"},
            {"[k^=abcd]", ""},
            {"[k^=\"\"]", ""},
            {"[k$=bc]", "1 3"},
            {"[k$='b']", "2 4"},
            {"[k$=aabc]", ""},
            {"[k$=\"\"]", ""},
            {"[k*=b]", "1 2 3 4"},
            {"[k*='bc']", "1 3"},
            {"[k*=ac]", ""},
            {"[k*=\"\"]", ""},
            {"[k^=A][k$=C]", "6"},
            {"[k^=a][k*=b][k$=c]", "1"},
        });
}

TEST(Selector, SiblingsMayStandAnywhereBefore) {
    ExpectSelected(
        "<r><a n='1'/><b n='2'/>t<c n='3'/><b n='4'><b n='5'/><c n='6'/></b><c n='7'/>"
        "</r>",
        {
            {"a ~ c", "3 7"},
            {"a~c", "3 7"},
            {"b ~ c", "3 6 7"},
            {"c ~ a", ""},
            {"c ~ b", "4"},
            {"c ~ c", "7"},
            {"a ~ b ~ c", "3 7"},
            {"a ~ b + c", "3 7"},
            {"a + b ~ c", "3 7"},
            {"c + b ~ c", "7"},
            {"c + b > b ~ c", "6"},
            {"a ~ b c", "6"},
            {"r > a ~ *", "2 3 4 7"},
            {"* ~ *", "2 3 4 6 7"},
        });
}

TEST(Selector, PseudoElementsHaveOneColonOrTwo) {
    const char* const xml = "<r><p n='1' class='k'/><p n='2'/></r>";
    for (const char* const name : {"after", "before", "first-letter", "first-line", "selection"}) {
        for (const char* const colons : {":", "::"}) {
            const std::string selector = std::string("p.k") + colons + name;
            const std::string group = selector + ", p";
            ExpectSelected(xml, {{selector.c_str(), ""}, {group.c_str(), "1 2"}});
            ExpectSelected(xml, {{selector.c_str(), "1"}, {group.c_str(), "1"}, {"p", ""}}, name);
            ExpectSelected(xml, {{selector.c_str(), ""}}, "other");
        }
    }
}

TEST(Selector, StatesThatOnlyAUserMakesNeverHold) {
    for (const char* const name :
         {"hover", "active", "focus", "visited", "indeterminate", "target"})
        ExpectSelected("<r><a n='1' href='#x' id='x'/></r>",
                       {{(std::string(":") + name).c_str(), ""},
                        {(std::string("a:not(:") + name + ")").c_str(), "1"}});
}

TEST(Selector, GroupsHaveCommas) {
    ExpectSelected("<r><a n='1'/><b n='2'/><c n='3'/></r>", {
                                                                {"a,b", "1 2"},
                                                                {" a \t\n, b ,c ", "1 2 3"},
                                                                {"x, c", "3"},
                                                                {"a, a", "1"},
                                                            });
}

TEST(Selector, EscapesStandForCharacters) {
    ExpectSelected("<r><a n='1' id='1.5' class='a:b'/><a n='2' k='\"'/></r>",
                   {
                       {"#\\31 \\.5", "1"},
                       {".a\\:b", "1"},
                       {"[k=\"\\\"\"]", "2"},
                       {"[k='\\22 ']", "2"},
                       {"\\61", "1 2"},
                   });
}

TEST(Selector, RefusesWhatIsNoSelector) {
    for (const char* const text :
         {"",        " ",     ",",       "a,",     ",a",      "a,,b",    "> a",    "a >",
          "a > > b", "+ a",   "~ a",     "a ~",    "a + + b", "#",       "# a",    ".",
          ". a",     ".1",    ":",       "::",     "a:",      ": hover", "[",      "[]",
          "[a",      "[a=",   "[a=b",    "[a=]",   "[=b]",    "[1]",     "[a=1]",  "[a='b]",
          "[a=b c]", "[a~b]", "[a~ =b]", "[a!=b]", "[a==b]",  ":not(",   ":not(a", ":not()",
          "1",       "1a",    "--a",     "\"a\"",  "@media",  "a{",      "a {}",   "a }",
          "a;",      "a!",    "a$b",     "a)",     "a]",      "a/**",    "a<b",    "a=b"})
        EXPECT_DOM_ERROR(Selector{text}, "12 Syntax error in selector") << text;
}

TEST(Selector, MayHoldNoNul) {
    EXPECT_DOM_ERROR(Selector{std::string_view("a\0b", 3)}, "12 Syntax error in selector");
}

TEST(Selector, ReadsAPartOfAText) {
    const std::string text = "ab > cd";
    const Selector selector(std::string_view(text).substr(0, 1));
    Dom::Document document;
    document.LoadXml("<a/>");
    EXPECT_TRUE(selector.Matches(*document.DocumentElement()));
    EXPECT_EQ(selector.Text(), "a");
}

TEST(Selector, Moves) {
    Dom::Document document;
    document.LoadXml("<a/>");
    const Dom::Element& element = *document.DocumentElement();
    Selector first("a");
    Selector second(std::move(first));
    EXPECT_TRUE(second.Matches(element));
    EXPECT_EQ(second.Text(), "a");
    Selector third("b");
    EXPECT_FALSE(third.Matches(element));
    third = std::move(second);
    EXPECT_TRUE(third.Matches(element));
    EXPECT_EQ(third.Text(), "a");
}
