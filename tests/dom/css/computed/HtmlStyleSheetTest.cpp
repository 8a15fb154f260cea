// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CSSRuleList.h>
#include <espalier/dom/css/CSSStyleRule.h>
#include <espalier/dom/css/HtmlStyleSheet.h>

#include "dom/css/computed/PropertyTable.h"
#include "dom/css/computed/ValueComputing.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <string>
#include <string_view>

using namespace Dom::CSS;

namespace {

const CSSStyleRule* StyleRule(unsigned long index) {
    return dynamic_cast<const CSSStyleRule*>(HtmlStyleSheet().CssRules().Item(index));
}

// Returns what the last rule with a selector in its list says of a property.
std::string Declared(std::string_view selector, std::string_view property) {
    std::string value;
    for (unsigned long i = 0; i < HtmlStyleSheet().CssRules().Length(); ++i) {
        const CSSStyleRule* const rule = StyleRule(i);
        if (rule == nullptr) continue;
        std::string list = ", " + std::string(rule->SelectorText().view()) + ",";
        std::ranges::replace(list, '\n', ' ');
        if (list.find(", " + std::string(selector) + ",") == std::string::npos) continue;
        const astring declared = rule->Style().GetPropertyValue(property);
        if (!declared.empty()) value = declared.view();
    }
    return value;
}

}  // namespace

TEST(HtmlStyleSheet, IsOneSheetOfTheUserAgent) {
    EXPECT_EQ(HtmlStyleSheet().Origin(), CSSRule::UserAgent);
    EXPECT_EQ(&HtmlStyleSheet(), &HtmlStyleSheet());
}

TEST(HtmlStyleSheet, HasNothingButStyleRulesWithValidValues) {
    const CSSRuleList& rules = HtmlStyleSheet().CssRules();
    ASSERT_GT(rules.Length(), 50U);
    const std::set<std::string_view> kShorthands = {
        "border", "border-color", "list-style", "margin", "overflow", "padding", "text-decoration"};
    for (unsigned long i = 0; i < rules.Length(); ++i) {
        const CSSStyleRule* const rule = StyleRule(i);
        ASSERT_NE(rule, nullptr) << i;
        const CSSStyleDeclaration& style = rule->Style();
        EXPECT_GT(style.Length(), 0U) << rule->SelectorText().c_str();
        for (unsigned long k = 0; k < style.Length(); ++k) {
            const astring name = style.Item(k);
            const auto id = detail::FindProperty(name);
            if (!id) {
                EXPECT_TRUE(kShorthands.contains(name.view())) << name.c_str();
                continue;
            }
            const astring value = style.GetPropertyValue(name);
            EXPECT_TRUE(value == "inherit" ||
                        detail::IsValidValue(detail::KnownProperties()[*id], value))
                << name.c_str() << ": " << value.c_str();
        }
    }
}

// CSS 2.1 appendix D; HTML, section "Rendering".
TEST(HtmlStyleSheet, ShowsElementsAsTheStandardsHaveIt) {
    const struct {
        const char* selector;
        const char* property;
        const char* expected;
    } kCases[] = {
        {"div", "display", "block"},
        {"li", "display", "list-item"},
        {"head", "display", "none"},
        {"script", "display", "none"},
        {"[hidden]", "display", "none"},
        {"table", "display", "table"},
        {"td", "display", "table-cell"},
        {"th", "font-weight", "bold"},
        {"th", "text-align", "center"},
        {"caption", "display", "table-caption"},
        {"h1", "font-size", "2em"},
        {"h1", "font-weight", "bold"},
        {"h1", "margin-top", "0.67em"},
        {"h6", "font-size", "0.67em"},
        {"p", "margin-top", "1em"},
        {"body", "margin-left", "8px"},
        {"blockquote", "margin-left", "40px"},
        {"ul", "list-style-type", "disc"},
        {"ul ul", "list-style-type", "circle"},
        {"ul ul ul", "list-style-type", "square"},
        {"ol", "list-style-type", "decimal"},
        {"ul ul", "margin-top", "0"},
        {"b", "font-weight", "bolder"},
        {"em", "font-style", "italic"},
        {"pre", "white-space", "pre"},
        {"code", "font-family", "monospace"},
        {"small", "font-size", "smaller"},
        {"sub", "vertical-align", "sub"},
        {"a:link", "text-decoration", "underline"},
        {"q::before", "content", "open-quote"},
        {"input", "display", "inline-block"},
        {"mark", "background-color", "yellow"},
        {"hr", "border-top-style", "inset"},
        {"summary", "display", "block"},
        {"dialog:not([open])", "display", "none"},
    };
    for (const auto& test : kCases) {
        EXPECT_EQ(Declared(test.selector, test.property), test.expected)
            << test.selector << " { " << test.property << " }";
    }
}
