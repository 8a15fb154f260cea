// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CSSStyleSheet.h>
#include <espalier/dom/css/CSSUnknownRule.h>

#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <string>

namespace {

using Dom::CSS::CSSRule;
using Dom::CSS::CSSStyleSheet;
using Dom::CSS::CSSUnknownRule;

}  // namespace

TEST(CSSUnknownRule, KeepsWhatItIsMadeWith) {
    CSSStyleSheet sheet(CSSRule::Author, nullptr, "", "");
    CSSUnknownRule parent(nullptr, nullptr, CSSRule::User);
    const CSSUnknownRule rule(&sheet, &parent, CSSRule::UserAgent);
    EXPECT_EQ(rule.Type(), CSSRule::UNKNOWN_RULE);
    EXPECT_EQ(rule.ParentStyleSheet(), &sheet);
    EXPECT_EQ(rule.ParentRule(), &parent);
    EXPECT_EQ(rule.Origin(), CSSRule::UserAgent);
    EXPECT_EQ(rule.CssText(), "");
    EXPECT_EQ(parent.Origin(), CSSRule::User);
}

TEST(CSSUnknownRule, KeepsAnyTextAsItIs) {
    CSSUnknownRule rule(nullptr, nullptr, CSSRule::Author);
    CSSRule& base = rule;
    for (const char* const text :
         {"@media print { }", " \n@import url(a) ; ", "", "p { }", "@", "}{", "\xC3\xA9 \xFF"}) {
        base.SetCssText(text);
        EXPECT_EQ(base.CssText(), text);
        base.SetCssText("other");
        base.SetCssText(astring(text));
        EXPECT_EQ(base.CssText(), text);
    }
}

TEST(CSSUnknownRule, TakesItsOwnText) {
    CSSUnknownRule rule(nullptr, nullptr, CSSRule::Author);
    const std::string text = "@media print { " + std::string(100, 'a') + " }";
    rule.SetCssText(text.c_str());
    rule.SetCssText(rule.CssText());
    EXPECT_EQ(rule.CssText(), text);
}

TEST(CSSUnknownRule, AnswersToTheNamesOfItsClasses) {
    CSSUnknownRule rule(nullptr, nullptr, CSSRule::Author);
    CSSRule* const base = &rule;
    EXPECT_EQ(base->QueryInterface("Dom::CSS::CSSUnknownRule"), &rule);
    EXPECT_EQ(base->QueryInterface("Dom::CSS::CSSRule"), base);
    for (const char* const name : {"", "CSSUnknownRule", "Dom::CSS::CSSStyleRule", "Dom::Node"})
        EXPECT_EQ(base->QueryInterface(name), nullptr) << name;
}
