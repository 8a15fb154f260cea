// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CSSPrimitiveValue.h>
#include <espalier/dom/css/CSSPropertyImpl.h>
#include <espalier/dom/css/CSSStyleDeclaration.h>

#include "dom/ExpectDomError.h"
#include "dom/css/CountedValue.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

namespace {

static_assert(std::has_virtual_destructor_v<Dom::CSS::CSSPropertyImpl>);

using Dom::CSS::CSSPropertyImpl;
using Dom::CSS::CSSRule;
using Dom::CSS::CSSStyleDeclaration;
using Dom::CSS::CSSValue;

CSSPropertyImpl Property(int& count, const char* text, bool important = false) {
    return CSSPropertyImpl("name", new CountedValue(count, text), important, CSSRule::Author, 0,
                           false);
}

}  // namespace

TEST(CSSPropertyImpl, KeepsWhatItIsMadeWith) {
    int count = 0;
    {
        auto* const value = new CountedValue(count, "text");
        const CSSPropertyImpl property("Name", value, true, CSSRule::UserAgent, 1'002'003, true);
        EXPECT_EQ(property.Name(), "Name");
        EXPECT_EQ(property.GetCSSValue(), value);
        EXPECT_EQ(property.Value(), "text");
        EXPECT_TRUE(property.Important());
        EXPECT_EQ(property.Origin(), CSSRule::UserAgent);
        EXPECT_EQ(property.Specificity(), 1'002'003);
        EXPECT_TRUE(property.Shorthand());
    }
    {
        const CSSPropertyImpl property("n", new CountedValue(count, ""), false, CSSRule::Author, -1,
                                       false);
        EXPECT_FALSE(property.Important());
        EXPECT_FALSE(property.Shorthand());
        EXPECT_EQ(property.Origin(), CSSRule::Author);
        EXPECT_EQ(property.Specificity(), -1);
    }
    EXPECT_EQ(count, 0);
}

TEST(CSSPropertyImpl, ItsTextSaysWhetherItIsImportant) {
    int count = 0;
    CSSPropertyImpl property = Property(count, "a b");
    EXPECT_EQ(property.CssText(), "name: a b");
    EXPECT_EQ(property.Priority(), "");
    property.SetPriority("important");
    EXPECT_EQ(property.CssText(), "name: a b !important");
    EXPECT_EQ(property.Priority(), "important");
}

TEST(CSSPropertyImpl, OnlyTheWordImportantMakesItImportant) {
    const struct {
        const char* text;
        bool important;
    } kCases[] = {{"important", true},   {"IMPORTANT", true},   {"imPortAnt", true},
                  {"", false},           {"!important", false}, {" important", false},
                  {"important ", false}, {"importan", false},   {"importants", false},
                  {"urgent", false},     {"not", false}};
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.text);
        for (const bool before : {false, true}) {
            int count = 0;
            CSSPropertyImpl property = Property(count, "", before);
            property.SetPriority(c.text);
            EXPECT_EQ(property.Important(), c.important);
        }
    }
}

TEST(CSSPropertyImpl, SettingTheTextEditsTheValue) {
    int count = 0;
    CSSPropertyImpl property = Property(count, "a");
    CSSValue* const value = property.GetCSSValue();
    property.SetValue("b");
    EXPECT_EQ(property.Value(), "b");
    EXPECT_EQ(property.GetCSSValue(), value);
    EXPECT_EQ(count, 1);
}

TEST(CSSPropertyImpl, APrimitiveValueStaysOne) {
    const CSSPropertyImpl original("n", new Dom::CSS::CSSPrimitiveValue(nullptr, astring("red")),
                                   false, CSSRule::Author, 0, false);
    CSSPropertyImpl property = original;
    property.SetValue("12px");
    EXPECT_EQ(property.CssText(), "n: 12px");
    property.SetValue("");
    EXPECT_EQ(property.CssText(), "n: ");
}

TEST(CSSPropertyImpl, AnInheritedValueTakesNoText) {
    CSSStyleDeclaration declaration(nullptr);
    declaration.SetCssText("a: inherit");
    CSSPropertyImpl* const property = declaration.Properties().Item(0);
    EXPECT_DOM_ERROR(property->SetValue("b"), "15 Setting cssText of inherit value not supported");
    EXPECT_EQ(property->Value(), "inherit");
}

// Deliberate: a copy shares the value, so that a change of one shows in the other.
TEST(CSSPropertyImpl, DeliberateACopyHasTheSameValue) {
    int count = 0;
    {
        auto property = std::make_unique<CSSPropertyImpl>("name", new CountedValue(count, "a"),
                                                          true, CSSRule::User, 5, true);
        const CSSPropertyImpl copy(*property);
        EXPECT_EQ(copy.GetCSSValue(), property->GetCSSValue());
        EXPECT_EQ(copy.Name(), "name");
        EXPECT_TRUE(copy.Important());
        EXPECT_TRUE(copy.Shorthand());
        EXPECT_EQ(copy.Origin(), CSSRule::User);
        EXPECT_EQ(copy.Specificity(), 5);
        property->SetValue("b");
        EXPECT_EQ(copy.Value(), "b");
        property->SetPriority("");
        EXPECT_TRUE(copy.Important());  // only the value is shared
        property.reset();
        EXPECT_EQ(count, 1);
        EXPECT_EQ(copy.GetCSSValue()->CssText(), "b");
    }
    EXPECT_EQ(count, 0);
}

TEST(CSSPropertyImpl, TheLastCopyDeletesTheValue) {
    int count = 0;
    auto first = std::make_unique<CSSPropertyImpl>(Property(count, "a"));
    auto second = std::make_unique<CSSPropertyImpl>(*first);
    auto third = std::make_unique<CSSPropertyImpl>(*second);
    EXPECT_EQ(count, 1);
    second.reset();
    first.reset();
    EXPECT_EQ(count, 1);
    third.reset();
    EXPECT_EQ(count, 0);
}

TEST(CSSPropertyImpl, AssigningSharesTheValueAndDropsTheOneBefore) {
    int targetCount = 0;
    int sourceCount = 0;
    CSSPropertyImpl target = Property(targetCount, "a");
    {
        const CSSPropertyImpl source("other", new CountedValue(sourceCount, "b"), true,
                                     CSSRule::UserAgent, 7, true);
        target = source;
        EXPECT_EQ(targetCount, 0);
        EXPECT_EQ(target.GetCSSValue(), source.GetCSSValue());
    }
    EXPECT_EQ(sourceCount, 1);
    EXPECT_EQ(target.CssText(), "other: b !important");
    EXPECT_EQ(target.Origin(), CSSRule::UserAgent);
    EXPECT_EQ(target.Specificity(), 7);
    EXPECT_TRUE(target.Shorthand());
    const CSSPropertyImpl& same = target;
    target = same;
    EXPECT_EQ(target.Value(), "b");
    EXPECT_EQ(sourceCount, 1);
}

TEST(CSSPropertyImpl, AListDeletesItsProperties) {
    int count = 0;
    {
        CSSStyleDeclaration::CSSPropertyList list;
        for (int i = 0; i < 20; ++i)
            list.AddItem(new CSSPropertyImpl(Property(count, "a")));
        list.AddItem(new CSSPropertyImpl(*list.Item(0)));
        EXPECT_EQ(count, 20);
    }
    EXPECT_EQ(count, 0);
}
