// SPDX-License-Identifier: MIT

// Which elements of a document the selectors of a style rule select.

#include <espalier/dom/css/CSSStyleRule.h>

#include "dom/ExpectDomError.h"
#include "dom/LoadText.h"
#include "dom/css/Matching.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace {

using Dom::CSS::CSSRule;
using Dom::CSS::CSSStyleRule;

// The labels of what a rule with this selector selects.
std::string Select(Dom::Document& document, const std::string& selector, const char* pseudo = "") {
    CSSStyleRule rule(nullptr, nullptr, CSSRule::Author);
    rule.SetCssText((selector + " { }").c_str());
    return support::Selected(
        document, [&](Dom::Element& element) { return rule.MatchesSelector(&element, pseudo); });
}

struct Case {
    const char* selector;
    const char* labels;
};

template <std::size_t Count>
void ExpectSelected(std::string_view xml, const Case (&cases)[Count]) {
    Dom::Document document;
    document.LoadXml(xml);
    for (const Case& c : cases) {
        SCOPED_TRACE(c.selector);
        EXPECT_EQ(Select(document, c.selector), c.labels);
    }
}

}  // namespace

TEST(MatchesSelector, TypesAreLocalNamesAsTheyAreWritten) {
    ExpectSelected(
        "<r xmlns:x='u:x'><p n='1'/><P n='2'/><x:p n='3'/><q xmlns='u:q' n='4'><p n='5'/>"
        "</q><pp n='6'/></r>",
        {
            {"p", "1 3 5"},
            {"P", "2"},
            {"q", "4"},
            {"r", "r"},
            {"x", ""},
            {"*", "r 1 2 3 4 5 6"},
        });
}

TEST(MatchesSelector, IdsAndClassesAreAttributes) {
    ExpectSelected(
        "<r><a n='1' id='x' class='k'/><b n='2' class='k l'/><a n='3' class=' l&#9;k&#10;m '/>"
        "<a n='4' class='kk'/><b n='5' class='K' id='X'/><a n='6' class=''/><a n='7' id=''/>"
        "<a n='8' class='k-l'/><a n='9' id='x'/></r>",
        {
            {"#x", "1 9"},    {"#X", "5"},   {"#y", ""},      {".k", "1 2 3"}, {".K", "5"},
            {".l", "2 3"},    {".m", "3"},   {".kk", "4"},    {".k-l", "8"},   {".k.l", "2 3"},
            {".l.k.m", "3"},  {".k.n", ""},  {"a.k", "1 3"},  {"b#x", ""},     {"a#x.k", "1"},
            {"*.k", "1 2 3"}, {".k#x", "1"}, {"#x#x", "1 9"}, {"#x#y", ""},
        });
}

TEST(MatchesSelector, AttributesHaveAValueOrAreThere) {
    ExpectSelected(
        "<r><a n='1' k='v'/><a n='2' k=''/><a n='3' k='V'/><a n='4' K='v'/><a n='5'/>"
        "<b n='6' k='v w'/><b n='7' k='&lt;&#233;\"'/></r>",
        {
            {"*[k]", "1 2 3 6 7"},
            {"a[k]", "1 2 3"},
            {"*[K]", "4"},
            {"*[k=v]", "1"},
            {"*[k=\"v\"]", "1"},
            {"*[k='v']", "1"},
            {"*[ k = v ]", "1"},
            {"*[k=\"\"]", "2"},
            {"*[k=\"v w\"]", "6"},
            {"*[k=w]", ""},
            {"*[k='<\xC3\xA9\"']", "7"},
            {"*[m]", ""},
            {"*[m=\"\"]", ""},
            {"a[n=\"5\"]", "5"},
            // White space does not end the compound as far as acceptance goes; it is a descendant.
            {"r [k=v]", "1"},
            {"a [k=v]", ""},
        });
}

TEST(MatchesSelector, CombinatorsLookUpAndBack) {
    ExpectSelected(
        "<r><a n='1'><b n='2'><c n='3'/></b><c n='4'/></a>t<c n='5'/><!-- --><b n='6'>"
        "<c n='7'/>t<?p?><c n='8'/></b><c n='9'/></r>",
        {
            {"a c", "3 4"},
            {"r c", "3 4 5 7 8 9"},
            {"r r", ""},
            {"a > c", "4"},
            {"a>c", "4"},
            {"b > c", "3 7 8"},
            {"r > c", "5 9"},
            {"r > a > b > c", "3"},
            {"a b c", "3"},
            {"b a c", ""},
            {"a + c", "5"},
            {"a+c", "5"},
            {"b + c", "4 9"},
            {"c + b", "6"},
            {"c + c", "8"},
            {"c + b + c", "9"},
            {"a + c + b > c", "7 8"},
            {"a + c + b > c + c", "8"},
            {"r b + c", "4 9"},
            {"a b + c", "4"},
            {"r > b + c", "9"},
            {"* + *", "4 5 6 8 9"},
            {"* > * > *", "2 3 4 7 8"},
            {"* * * *", "3"},
            {"c, b", "2 3 4 5 6 7 8 9"},
            {"b > c , r > c", "3 5 7 8 9"},
        });
}

// The nearest ancestor or sibling that fits may be the wrong one.
TEST(MatchesSelector, AnotherAncestorMayBeTheRightOne) {
    ExpectSelected(
        "<r><a n='1' class='k'><b n='2'><a n='3'><b n='4'><c n='5'/></b></a></b></a>"
        "<a n='6'><b n='7'><c n='8'/></b></a></r>",
        {
            {".k > b c", "5"},
            {".k b > c", "5"},
            {".k a > b c", "5"},
            {".k > b > a c", "5"},
            {"r > a > b c", "5 8"},
            {"r > a b > c", "5 8"},
            {".k > a c", ""},
            {"a > a c", ""},
            {".k + a c", "8"},
            {"a + a > b c", "8"},
            {"a b a b c", "5"},
        });
}

TEST(MatchesSelector, ChildrenAreCountedAmongElements) {
    ExpectSelected("<r>t<a n='1'/>t<!-- --><b n='2'/><?p?><a n='3'><a n='4'/></a><b n='5'/>t</r>",
                   {
                       {"r > :first-child", "1"},
                       {"r :first-child", "1 4"},
                       {"r > :last-child", "5"},
                       {"r :last-child", "4 5"},
                       {"r :only-child", "4"},
                       {"a:first-child", "1 4"},
                       {"a:last-child", "4"},
                       {"b:first-child", ""},
                       {"b:last-child", "5"},
                       {"r > a:first-of-type", "1"},
                       {"r > b:first-of-type", "2"},
                       {"r > :first-of-type", "1 2"},
                       {"r > :last-of-type", "3 5"},
                       {"r :only-of-type", "4"},
                       {"r > a:only-of-type", ""},
                       {"r > a:first-child + b:nth-child(2)", "2"},
                   });
}

TEST(MatchesSelector, PositionsAreNumbersOddEvenOrAFormula) {
    std::string xml = "<r>";
    for (int i = 1; i <= 10; ++i)
        xml += "<a n='" + std::to_string(i) + "'/>";
    xml += "</r>";
    ExpectSelected(xml, {
                            {"a:nth-child(1)", "1"},
                            {"a:nth-child(10)", "10"},
                            {"a:nth-child(+3)", "3"},
                            {"a:nth-child(0)", ""},
                            {"a:nth-child(11)", ""},
                            {"a:nth-child(-1)", ""},
                            {"a:nth-child(odd)", "1 3 5 7 9"},
                            {"a:nth-child(even)", "2 4 6 8 10"},
                            {"a:nth-child( odd )", "1 3 5 7 9"},
                            {"a:nth-child(2n+1)", "1 3 5 7 9"},
                            {"a:nth-child(2n)", "2 4 6 8 10"},
                            {"a:nth-child(2n+0)", "2 4 6 8 10"},
                            {"a:nth-child(2n-1)", "1 3 5 7 9"},
                            {"a:nth-child( 3n + 2 )", "2 5 8"},
                            {"a:nth-child(3n - 2)", "1 4 7 10"},
                            {"a:nth-child(n)", "1 2 3 4 5 6 7 8 9 10"},
                            {"a:nth-child(+n)", "1 2 3 4 5 6 7 8 9 10"},
                            {"a:nth-child(n+8)", "8 9 10"},
                            {"a:nth-child(n-8)", "1 2 3 4 5 6 7 8 9 10"},
                            {"a:nth-child(-n+3)", "1 2 3"},
                            {"a:nth-child(-n)", ""},
                            {"a:nth-child(-2n+7)", "1 3 5 7"},
                            {"a:nth-child(0n+4)", "4"},
                            {"a:nth-child(4n+15)", ""},
                            {"a:nth-child(5n-20)", "5 10"},
                            {"a:nth-child(2N+1)", "1 3 5 7 9"},
                            {"a:nth-last-child(1)", "10"},
                            {"a:nth-last-child(2)", "9"},
                            {"a:nth-last-child(odd)", "2 4 6 8 10"},
                            {"a:nth-last-child(-n+3)", "8 9 10"},
                            {"a:nth-child(n+3):nth-last-child(n+7)", "3 4"},
                        });
}

TEST(MatchesSelector, PositionsAmongTheSameTypeLeaveOthersOut) {
    ExpectSelected("<r><a n='1'/><b n='2'/><a n='3'/>t<a n='4'/><b n='5'/><c n='6'/><a n='7'/></r>",
                   {
                       {"a:nth-of-type(2)", "3"},
                       {"a:nth-of-type(odd)", "1 4"},
                       {"a:nth-last-of-type(1)", "7"},
                       {"a:nth-last-of-type(2n)", "1 4"},
                       {"b:nth-of-type(2)", "5"},
                       {"r > :nth-of-type(2)", "3 5"},
                       {"r > :nth-last-of-type(2)", "2 4"},
                       {"c:only-of-type", "6"},
                       {"a:nth-child(odd)", "1 3 7"},
                       {"b:nth-child(2)", "2"},
                   });
}

TEST(MatchesSelector, AFormulaThatIsNoneSelectsNothing) {
    ExpectSelected("<r><a n='1'/><a n='2'/></r>", {
                                                      {"a:nth-child(x)", ""},
                                                      {"a:nth-child()", ""},
                                                      {"a:nth-child", ""},
                                                      {"a:nth-child(2x)", ""},
                                                      {"a:nth-child(1 2)", ""},
                                                      {"a:nth-child(2n+)", ""},
                                                      {"a:nth-child(n1)", ""},
                                                      {"a:nth-child(99999999999999999999)", ""},
                                                  });
}

TEST(MatchesSelector, TheRootIsTheOutermostElement) {
    ExpectSelected("<!-- --><?p?><r><r n='1'/></r>", {{":root", "r"},
                                                      {"r:root", "r"},
                                                      {"r :root", ""},
                                                      {":root > r", "1"},
                                                      {"r:not(:root)", "1"}});
}

TEST(MatchesSelector, EmptyIsWithoutElementsAndText) {
    ExpectSelected(
        "<r><a n='1'/><a n='2'></a><a n='3'>t</a><a n='4'><b n='5'/></a>"
        "<a n='6'><!-- --><?p?></a><a n='7' xml:space='preserve'> </a>"
        "<a n='8'><![CDATA[t]]></a></r>",
        {{"*:empty", "1 2 5 6"}, {"a:empty", "1 2 6"}, {"b:empty", "5"}});
}

TEST(MatchesSelector, NotTurnsACompoundRound) {
    ExpectSelected(
        "<r><a n='1' class='k'/><a n='2' class='k l'/><b n='3' id='x'/><b n='4' m=''/>"
        "</r>",
        {
            {"r > :not(a)", "3 4"},
            {"a:not(.l)", "1"},
            {"r > :not(.k)", "3 4"},
            {"r > :not(.k.l)", "1 3 4"},
            {"b:not(#x)", "4"},
            {"r > :not(*[m])", "1 2 3"},
            {"r > :not(:first-child)", "2 3 4"},
            {"r > :not(a):not(#x)", "4"},
            {"r > :not( b )", "1 2"},
            {"r > :not(*)", ""},
            {"r > :not(a.l)", "1 3 4"},
            {"a:not(:hover)", "1 2"},
            {"r > :not(a) + b", "4"},
        });
}

TEST(MatchesSelector, LanguagesComeFromTheNearestAttribute) {
    ExpectSelected(
        "<r xml:lang='en'><a n='1'/><a n='2' xml:lang='en-US'><b n='3'/></a>"
        "<a n='4' xml:lang='fr'><b n='5'/></a><a n='6' xml:lang='english'/>"
        "</r>",
        {
            {"*:lang(en)", "r 1 2 3"},
            {"*:lang(en-US)", "2 3"},
            {"*:lang(fr)", "4 5"},
            {"b:lang(fr)", "5"},
            {"*:lang(fr-CA)", ""},
            {"*:lang(e)", ""},
            {"*:lang(EN)", "r 1 2 3"},
        });
}

// XML 1.0 section 2.12: an empty value takes back what an element above says.
TEST(MatchesSelector, AnEmptyLanguageIsNone) {
    ExpectSelected("<r xml:lang='en'><a n='1' xml:lang=''><b n='2'/></a><a n='3'/></r>",
                   {{"*:lang(en)", "r 3"}, {"*:not(:lang(en))", "1 2"}});
}

TEST(MatchesSelector, ContainsLooksIntoTheTextBelow) {
    ExpectSelected(
        "<r><a n='1'>apple</a><a n='2'>ap<b n='3'>ple</b></a><a n='4'>Apple</a>"
        "<a n='5'><![CDATA[pineapple]]></a><a n='6' k='apple'/></r>",
        {
            {"a:contains(\"apple\")", "1 2 5"},
            {"a:contains('apple')", "1 2 5"},
            {"*:contains(\"ple\")", "r 1 2 3 4 5"},
            {"a:contains(\"Apple\")", "4"},
            {"a:contains(\"le\")", "1 2 4 5"},
            {"a:contains(\"x\")", ""},
        });
}

TEST(MatchesSelector, LinksHaveAnAddress) {
    ExpectSelected(
        "<r><a n='1' href='x'/><a n='2'/><area n='3' href=''/><link n='4' href='y'/>"
        "<p n='5' href='z'/><link n='6'/></r>",
        {{"*:link", "1 3 4"}, {"a:link", "1"}, {"*:not(:link)", "r 2 5 6"}});
}

TEST(MatchesSelector, FieldsAreEnabledDisabledOrChecked) {
    ExpectSelected(
        "<r><input n='1'/><input n='2' disabled='disabled'/>"
        "<input n='3' type='checkbox' checked='checked'/>"
        "<input n='4' type='radio' checked='' disabled=''/><button n='5'/></r>",
        {
            {"input:enabled", "1 3"},
            {"input:disabled", "2 4"},
            {"button:enabled", "5"},
            {"button:disabled", ""},
            {"input:checked", "3 4"},
            {"input:checked:enabled", "3"},
        });
}

TEST(MatchesSelector, WhatOnlyAUserMakesNeverHolds) {
    for (const char* const name :
         {"hover", "active", "focus", "visited", "target", "indeterminate", "foo", "-moz-any"}) {
        Dom::Document document;
        document.LoadXml("<r id='x'><a n='1' href='#x'/><input type='checkbox'/></r>");
        EXPECT_EQ(Select(document, std::string("*:") + name), "") << name;
        EXPECT_EQ(Select(document, std::string("a:link:") + name), "") << name;
    }
}

TEST(MatchesSelector, PseudoElementsAreAskedForByName) {
    Dom::Document document;
    document.LoadXml("<r><p n='1' class='k'/><p n='2'/></r>");
    const char* const names[] = {"after", "before", "first-letter", "first-line", "selection"};
    for (const char* const name : names) {
        const std::string selector = std::string("p.k:") + name;
        for (const char* const asked : names)
            EXPECT_EQ(Select(document, selector, asked), std::string_view(asked) == name ? "1" : "")
                << selector << ", " << asked;
        EXPECT_EQ(Select(document, selector), "") << selector;
        EXPECT_EQ(Select(document, selector, "hover"), "") << selector;
        EXPECT_EQ(Select(document, "p", name), "") << name;
        EXPECT_EQ(Select(document, "p, .k:" + std::string(name), name), "1") << name;
        EXPECT_EQ(Select(document, "p, .k:" + std::string(name)), "1 2") << name;
        EXPECT_EQ(Select(document, "r > p:" + std::string(name), name), "1 2") << name;
    }
    EXPECT_EQ(Select(document, "p:foo", "foo"), "");
    EXPECT_EQ(Select(document, "p:hover", "hover"), "");
}

TEST(MatchesSelector, OneSelectorOfAGroupIsEnough) {
    ExpectSelected("<r><a n='1'/><b n='2' class='k'/><c n='3'/></r>", {
                                                                          {"a, b", "1 2"},
                                                                          {"a,.k,a", "1 2"},
                                                                          {"x, c", "3"},
                                                                          {"x, y", ""},
                                                                          {"a:hover, c", "3"},
                                                                          {"a + b, b + c", "2 3"},
                                                                      });
}

TEST(MatchesSelector, WithoutSelectorOrElementThereIsNoMatch) {
    Dom::Document document;
    document.LoadXml("<r/>");
    CSSStyleRule rule(nullptr, nullptr, CSSRule::Author);
    EXPECT_FALSE(rule.MatchesSelector(document.DocumentElement(), ""));
    EXPECT_FALSE(rule.MatchesSelector("r", "", ""));
    rule.SetCssText("* { }");
    EXPECT_FALSE(rule.MatchesSelector(nullptr, ""));
    EXPECT_TRUE(rule.MatchesSelector(document.DocumentElement(), ""));
}

TEST(MatchesSelector, FollowsTheSelectorsThatAreSet) {
    Dom::Document document;
    document.LoadXml("<r><a n='1'/><b n='2'/></r>");
    CSSStyleRule rule(nullptr, nullptr, CSSRule::Author);
    const auto select = [&] {
        return support::Selected(
            document, [&](Dom::Element& element) { return rule.MatchesSelector(&element, ""); });
    };
    rule.SetCssText("a { }");
    EXPECT_EQ(select(), "1");
    rule.SetCssText("b { }");
    EXPECT_EQ(select(), "2");
    rule.SetSelectorText("a, b");
    EXPECT_EQ(select(), "1 2");
    EXPECT_DOM_ERROR(rule.SetSelectorText("1"), "12 Syntax error in selector");
    EXPECT_EQ(select(), "1 2");
    EXPECT_DOM_ERROR(rule.SetCssText("r { 1 }"), "12 Invalid property name");
    EXPECT_EQ(select(), "1 2");
}

// Loading without namespaces leaves attributes without a value of the node, but with one.
TEST(MatchesSelector, DocumentsLoadedWithoutNamespacesAreTheSame) {
    static constexpr char kXml[] =
        "<r xmlns:x='u'><x:p n='1' id='i'/><p n='2' class='a b' k='v'><q n='3' xml:lang='en'/></p>"
        "</r>";
    for (const auto& settings : {support::WithNamespaces(), support::WithoutNamespaces()}) {
        Dom::Document document;
        support::LoadText(document, kXml, settings);
        EXPECT_EQ(Select(document, "p"), "1 2");
        EXPECT_EQ(Select(document, "#i"), "1");
        EXPECT_EQ(Select(document, ".b"), "2");
        EXPECT_EQ(Select(document, "p[k=v] > q"), "3");
        EXPECT_EQ(Select(document, "p + p"), "2");
        EXPECT_EQ(Select(document, "*:lang(en)"), "3");
    }
}
