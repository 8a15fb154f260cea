// SPDX-License-Identifier: MIT

// Random texts: what is accepted in one place is accepted in the others, and what is printed reads
// back as the same.

#include <espalier/dom/css/CSSStyleRule.h>
#include <espalier/dom/css/Selector.h>
#include <espalier/dom/css/Specificity.h>

#include "dom/css/DeclarationText.h"
#include "dom/css/Matching.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <random>
#include <string>

namespace {

using Dom::CSS::CSS_SPECIFICITY;
using Dom::CSS::CSSRule;
using Dom::CSS::CSSStyleDeclaration;
using Dom::CSS::CSSStyleRule;
using Dom::CSS::Selector;

template <std::size_t Count>
std::string RandomText(std::mt19937& random, const char* const (&pieces)[Count]) {
    std::string text;
    for (std::size_t length = random() % 10; length > 0; --length)
        text += pieces[random() % Count];
    return text;
}

constexpr const char* kSelectorPieces[] = {
    "a",    "p",       "#i", ".k",    "*",         "[a]",   "[a=b]",  "[a='b']", "[",
    "]",    ":hover",  ":",  ":root", ":not(.k)",  ":not(", ")",      "(",       ":nth-child(2n+1)",
    ":foo", ":before", " ",  " ",     ">",         " + ",   ",",      ", ",      "{",
    "}",    "~",       "|",  "'",     "\"",        "\\",    "1",      "-",       "\xC3\xA9",
    "\t",   "\n",      "=",  "~=",    ":lang(en)", "/**/",  ":empty", "::",      ":nth-child(",
};

constexpr const char* kDeclarationPieces[] = {
    "a",           "b: ",
    "color:",      "margin:",
    "border: ",    "background:",
    "border-top:", " ",
    ";",           ";",
    ":",           "!",
    "!important",  "important",
    "1px",         "2em",
    "5.",          "1.50",
    "red",         "#123",
    "#12",         "'a'",
    "\"",          "'",
    "(",           ")",
    ",",           ", ",
    "none",        "solid",
    "i",           "inherit",
    "top",         "rgb(1, 2, 3)",
    "url(a)",      "url(",
    "{",           "}",
    "calc(1 + 2)", "\xC3\xA9",
    "\n",          "-",
};

}  // namespace

TEST(RandomText, ARuleAcceptsWhatHasASpecificity) {
    std::mt19937 random(7);
    Dom::Document document;
    document.LoadXml("<r><a id='i'/><p class='k' a='b'><a/><p/></p></r>");
    int accepted = 0;
    int refused = 0;
    for (int i = 0; i < 30'000; ++i) {
        const std::string text = RandomText(random, kSelectorPieces);
        const int specificity = CSS_SPECIFICITY(text.c_str());
        ASSERT_GE(specificity, -1) << text;
        if (text.find('{') != std::string::npos) continue;  // it ends the selectors
        CSSStyleRule rule(nullptr, nullptr, CSSRule::Author);
        const std::string error = support::DomErrorOf([&] { rule.SetSelectorText(text); });
        ASSERT_EQ(error, specificity < 0 ? "12 Syntax error in selector" : "") << text;
        ASSERT_EQ(rule.Specificity(), specificity) << text;
        (specificity < 0 ? refused : accepted) += 1;
        const std::string selectorError = support::DomErrorOf([&] {
            const Selector selector(text);
            if (specificity < 0) return;
            for (Dom::Element* const element : support::ElementsOf(document))
                ASSERT_EQ(rule.MatchesSelector(element, ""), selector.Matches(*element)) << text;
        });
        ASSERT_TRUE(selectorError.empty() || selectorError == "12 Syntax error in selector")
            << text << ": " << selectorError;
        if (specificity < 0) continue;
        rule.MatchesSelector("p", "i", "k");
        CSSStyleRule whole(nullptr, nullptr, CSSRule::Author);
        whole.SetCssText((text + "{ a: b }").c_str());
        ASSERT_EQ(whole.SelectorText(), rule.SelectorText()) << text;
        ASSERT_EQ(whole.Specificity(), specificity) << text;
    }
    EXPECT_GT(accepted, 2'000);
    EXPECT_GT(refused, 2'000);
}

TEST(RandomText, ADeclarationReadsWhatItPrints) {
    const std::string messages[] = {"",
                                    "12 Invalid property name",
                                    "12 Expected ':'",
                                    "12 Invalid importance identifier",
                                    "12 Unexpected token after property",
                                    "12 Property value missing"};
    std::mt19937 random(8);
    std::size_t counts[std::size(messages)] = {};
    for (int i = 0; i < 60'000; ++i) {
        const std::string text = RandomText(random, kDeclarationPieces);
        CSSStyleDeclaration declaration(nullptr);
        const std::string error =
            support::DomErrorOf([&] { declaration.SetCssText(text.c_str()); });
        const auto* const message = std::find(std::begin(messages), std::end(messages), error);
        ASSERT_NE(message, std::end(messages)) << text << ": " << error;
        ++counts[message - messages];
        const std::string printed = declaration.CssText().str();
        if (printed.find("  ") != std::string::npos) continue;  // an empty value
        CSSStyleDeclaration again(nullptr);
        again.SetCssText(printed.c_str());
        ASSERT_EQ(again.CssText(), printed) << text;
        CSSStyleDeclaration merged(nullptr);
        merged.Cascade(declaration, CSSRule::Author, 0);
        ASSERT_LE(merged.Length(), declaration.Length()) << text;
        for (const Dom::CSS::CSSPropertyImpl* property : declaration.Properties())
            ASSERT_NE(merged.GetPropertyCSSValue(property->Name()), nullptr) << text;
    }
    for (std::size_t i = 0; i < std::size(messages); ++i)
        EXPECT_GT(counts[i], 20U) << messages[i];
}
