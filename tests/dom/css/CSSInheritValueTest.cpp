// SPDX-License-Identifier: MIT
// The value "inherit", which declarations make.
#include <espalier/dom/css/CSSStyleDeclaration.h>
#include <espalier/dom/css/CSSValue.h>

#include "dom/ExpectDomError.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

using Dom::CSS::CSSStyleDeclaration;
using Dom::CSS::CSSValue;

constexpr char kRefused[] = "15 Setting cssText of inherit value not supported";

}  // namespace

TEST(CSSInheritValue, IsMadeForTheWordInAnyCase) {
    for (const char* const text :
         {"a: inherit", "a:inherit;", "a: INHERIT ", "a: Inherit !important"}) {
        SCOPED_TRACE(text);
        CSSStyleDeclaration declaration(nullptr);
        declaration.SetCssText(text);
        const CSSValue* const value = declaration.GetPropertyCSSValue("a");
        ASSERT_NE(value, nullptr);
        EXPECT_EQ(value->CssValueType(), CSSValue::CSS_INHERIT);
        EXPECT_EQ(value->CssText(), "inherit");
    }
}

TEST(CSSInheritValue, OtherTextsAreOtherValues) {
    for (const char* const text :
         {"a: inherits", "a: 'inherit'", "a: inherit inherit", "a: initial"}) {
        SCOPED_TRACE(text);
        CSSStyleDeclaration declaration(nullptr);
        declaration.SetCssText(text);
        const CSSValue* const value = declaration.GetPropertyCSSValue("a");
        ASSERT_NE(value, nullptr);
        EXPECT_NE(value->CssValueType(), CSSValue::CSS_INHERIT);
    }
}

TEST(CSSInheritValue, TakesNoOtherText) {
    CSSStyleDeclaration declaration(nullptr);
    declaration.SetCssText("a: inherit");
    CSSValue* const value = declaration.GetPropertyCSSValue("a");
    ASSERT_NE(value, nullptr);
    EXPECT_DOM_ERROR(value->SetCssText("red"), kRefused);
    EXPECT_DOM_ERROR(value->SetCssText("inherit"), kRefused);
    EXPECT_DOM_ERROR(value->SetCssText(astring("red")), kRefused);
    EXPECT_EQ(value->CssText(), "inherit");
    EXPECT_DOM_ERROR(declaration.Properties().Item(0)->SetValue("red"), kRefused);
}

TEST(CSSInheritValue, AnotherIsCloned) {
    CSSStyleDeclaration declaration(nullptr);
    declaration.SetCssText("a: inherit");
    std::unique_ptr<CSSValue> clone(declaration.GetPropertyCSSValue("a")->Clone());
    EXPECT_NE(clone.get(), declaration.GetPropertyCSSValue("a"));
    declaration.RemoveProperty("a");
    EXPECT_EQ(clone->CssValueType(), CSSValue::CSS_INHERIT);
    EXPECT_EQ(clone->CssText(), "inherit");
    EXPECT_DOM_ERROR(clone->SetCssText("red"), kRefused);
}

TEST(CSSInheritValue, AnswersItsInterfaces) {
    CSSStyleDeclaration declaration(nullptr);
    declaration.SetCssText("a: inherit");
    CSSValue* const value = declaration.GetPropertyCSSValue("a");
    ASSERT_NE(value, nullptr);
    EXPECT_EQ(value->QueryInterface("Dom::CSS::CSSValue"), static_cast<void*>(value));
    EXPECT_EQ(value->QueryInterface("Dom::CSS::CSSPrimitiveValue"), nullptr);
    EXPECT_EQ(value->QueryInterface("Dom::CSS::CSSValueList"), nullptr);
}
