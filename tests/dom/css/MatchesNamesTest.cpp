// SPDX-License-Identifier: MIT

// Which selectors of a style rule select an element that has nothing but a name, an id and classes.

#include <espalier/dom/css/CSSStyleRule.h>

#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <string>

namespace {

bool Matches(const char* selector, const char* name, const char* id, const char* classes) {
    Dom::CSS::CSSStyleRule rule(nullptr, nullptr, Dom::CSS::CSSRule::Author);
    rule.SetCssText((std::string(selector) + " { }").c_str());
    return rule.MatchesSelector(name, id, classes);
}

}  // namespace

TEST(MatchesNames, ComparesNameIdAndClasses) {
    const struct {
        const char* selector;
        const char* name;
        const char* id;
        const char* classes;
        bool matches;
    } kCases[] = {
        {"p", "p", "", "", true},          {"p", "p", "x", "a b", true},
        {"p", "q", "", "", false},         {"p", "P", "", "", false},
        {"p", "pp", "", "", false},        {"*", "p", "", "", true},
        {"#x", "p", "x", "", true},        {"#x", "p", "", "", false},
        {"#x", "p", "X", "", false},       {"#x", "x", "y", "x", false},
        {".a", "p", "", "a", true},        {".a", "p", "", "b a c", true},
        {".a", "p", "", " b\ta\n", true},  {".a", "p", "", "aa", false},
        {".a", "p", "", "A", false},       {".a", "a", "a", "", false},
        {".a.b", "p", "", "b a", true},    {".a.b", "p", "", "a", false},
        {"p.a#x", "p", "x", "a", true},    {"p.a#x", "p", "x", "b", false},
        {"p.a#x", "q", "x", "a", false},   {"q, .a", "p", "", "a", true},
        {"q, .a", "q", "", "", true},      {"q, .a", "p", "", "b", false},
        {"p:not(.a)", "p", "", "b", true}, {"p:not(.a)", "p", "", "a", false},
    };
    for (const auto& c : kCases)
        EXPECT_EQ(Matches(c.selector, c.name, c.id, c.classes), c.matches)
            << c.selector << " / " << c.name << " #" << c.id << " ." << c.classes;
}

TEST(MatchesNames, ACombinationSelectsNothing) {
    for (const char* const selector : {"p q", "q > p", "q + p", "* p", "p > p", "p *"})
        EXPECT_FALSE(Matches(selector, "p", "x", "a")) << selector;
    EXPECT_TRUE(Matches("q > p, p", "p", "", ""));
}

TEST(MatchesNames, ThereAreNoOtherAttributesStatesOrPseudoElements) {
    for (const char* const selector :
         {"p[k]", "p[k=v]", "p:hover", "p:foo", "p:before", "p:link", "p:checked"})
        EXPECT_FALSE(Matches(selector, "p", "x", "a")) << selector;
}
