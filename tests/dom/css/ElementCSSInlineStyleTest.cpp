// SPDX-License-Identifier: MIT
#include <espalier/dom/css/ElementCSSInlineStyle.h>

#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <memory>

using Dom::CSS::ElementCSSInlineStyle;

namespace {

struct Mixed : ElementCSSInlineStyle {
    explicit Mixed(bool& destroyed) : destroyed_(destroyed) {}
    Mixed(const Mixed&) = delete;
    Mixed& operator=(const Mixed&) = delete;
    ~Mixed() override { destroyed_ = true; }

    bool& destroyed_;
};

}  // namespace

TEST(ElementCSSInlineStyle, HasAnEmptyStyleOfNoRuleAtFirst) {
    ElementCSSInlineStyle element;
    EXPECT_EQ(element.Style().Length(), 0U);
    EXPECT_EQ(element.Style().ParentRule(), nullptr);
}

TEST(ElementCSSInlineStyle, ItsStyleCanBeChanged) {
    ElementCSSInlineStyle element;
    element.Style().SetCssText("color: red; margin: 0");
    EXPECT_EQ(element.Style().Length(), 5U);
    element.Style().SetProperty("color", "blue", "important");
    EXPECT_EQ(element.Style().GetPropertyValue("color"), "blue");
    EXPECT_EQ(&element.Style(), &element.Style());
}

TEST(ElementCSSInlineStyle, IsDeletedThroughItsVirtualDestructor) {
    bool destroyed = false;
    std::unique_ptr<ElementCSSInlineStyle> element = std::make_unique<Mixed>(destroyed);
    element.reset();
    EXPECT_TRUE(destroyed);
}

TEST(ElementCSSInlineStyle, AnswersToItsName) {
    ElementCSSInlineStyle element;
    EXPECT_EQ(element.QueryInterface("Dom::CSS::ElementCSSInlineStyle"), &element);
    for (const char* const name :
         {"", "ElementCSSInlineStyle", "Dom::Element", "Dom::CSS::CSSStyleDeclaration"})
        EXPECT_EQ(element.QueryInterface(name), nullptr) << name;
}
