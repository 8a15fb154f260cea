// SPDX-License-Identifier: MIT
#include "dom/css/computed/PropertyTable.h"
#include "dom/css/computed/ValueComputing.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <string_view>

using namespace Dom::CSS::detail;

namespace {

const PropertyInfo* Property(std::string_view name) {
    const std::optional<PropertyId> id = FindProperty(name);
    return id ? &KnownProperties()[*id] : nullptr;
}

}  // namespace

TEST(PropertyTable, IsSortedByNamesInSmallLetters) {
    const auto properties = KnownProperties();
    EXPECT_TRUE(std::ranges::is_sorted(properties, {}, &PropertyInfo::name));
    for (const PropertyInfo& property : properties) {
        EXPECT_TRUE(std::ranges::none_of(property.name, [](char letter) {
            return letter >= 'A' && letter <= 'Z';
        })) << property.name;
    }
}

TEST(PropertyTable, FindsEachPropertyByItsName) {
    const auto properties = KnownProperties();
    for (std::size_t i = 0; i < properties.size(); ++i) {
        const std::optional<PropertyId> found = FindProperty(properties[i].name);
        ASSERT_TRUE(found) << properties[i].name;
        EXPECT_EQ(*found, i) << properties[i].name;
    }
}

// CSS 2.1 section 4.1.3: names are the same in any case.
TEST(PropertyTable, FindsNamesInAnyCase) {
    ASSERT_TRUE(FindProperty("color"));
    EXPECT_EQ(FindProperty("COLOR"), FindProperty("color"));
    EXPECT_EQ(FindProperty("Font-Size"), FindProperty("font-size"));
}

TEST(PropertyTable, HasNoOtherNames) {
    const std::string tooLong(1000, 'a');
    for (const std::string_view name :
         {"", "colour", "colo", "colorr", "--color", "-", "margin", "font", "border", "background",
          "text-decoration", "flex", "list-style", "overflow", tooLong.c_str(), "color\n"}) {
        EXPECT_FALSE(FindProperty(name)) << name;
    }
}

// CSS 2.1 appendix F; and the properties of later modules.
TEST(PropertyTable, KnowsWhatIsInherited) {
    const struct {
        std::string_view name;
        std::string_view initial;
        bool isInherited;
    } kCases[] = {
        {"border-collapse", "separate", true},
        {"border-spacing", "0px", true},
        {"caption-side", "top", true},
        {"color", "rgb(0, 0, 0)", true},
        {"cursor", "auto", true},
        {"direction", "ltr", true},
        {"empty-cells", "show", true},
        {"font-size", "16px", true},
        {"font-style", "normal", true},
        {"font-variant", "normal", true},
        {"font-weight", "400", true},
        {"letter-spacing", "normal", true},
        {"line-height", "normal", true},
        {"list-style-image", "none", true},
        {"list-style-position", "outside", true},
        {"list-style-type", "disc", true},
        {"orphans", "2", true},
        {"pitch-range", "50", true},
        {"text-align", "start", true},
        {"text-indent", "0px", true},
        {"text-transform", "none", true},
        {"visibility", "visible", true},
        {"white-space", "normal", true},
        {"widows", "2", true},
        {"word-spacing", "0px", true},
        {"azimuth", "center", true},
        {"background-color", "rgba(0, 0, 0, 0)", false},
        {"background-position", "0% 0%", false},
        {"border-top-width", "0px", false},
        {"border-left-style", "none", false},
        {"border-bottom-color", "currentcolor", false},
        {"content", "normal", false},
        {"display", "inline", false},
        {"float", "none", false},
        {"height", "auto", false},
        {"margin-top", "0px", false},
        {"max-width", "none", false},
        {"outline-width", "0px", false},
        {"padding-left", "0px", false},
        {"page-break-before", "auto", false},
        {"position", "static", false},
        {"table-layout", "auto", false},
        {"text-decoration-line", "none", false},
        {"unicode-bidi", "normal", false},
        {"vertical-align", "baseline", false},
        {"z-index", "auto", false},
        {"box-sizing", "content-box", false},
        {"opacity", "1", false},
        {"text-shadow", "none", true},
        {"flex-shrink", "1", false},
        {"fill", "rgb(0, 0, 0)", true},
        {"stroke", "none", true},
        {"stop-color", "rgb(0, 0, 0)", false},
        {"pointer-events", "auto", true},
        {"overflow-wrap", "normal", true},
    };
    for (const auto& expected : kCases) {
        const PropertyInfo* const property = Property(expected.name);
        ASSERT_NE(property, nullptr) << expected.name;
        EXPECT_EQ(property->initial, expected.initial) << expected.name;
        EXPECT_EQ(property->isInherited, expected.isInherited) << expected.name;
    }
}

TEST(PropertyTable, HasFurtherNamesForSome) {
    const struct {
        std::string_view alias;
        std::string_view name;
    } kCases[] = {
        {"word-wrap", "overflow-wrap"},
        {"WORD-WRAP", "overflow-wrap"},
        {"-webkit-box-sizing", "box-sizing"},
        {"-webkit-transition-duration", "transition-duration"},
        {"margin-inline-start", "margin-left"},
        {"block-size", "height"},
        {"grid-column-gap", "column-gap"},
    };
    for (const auto& expected : kCases) {
        const PropertyInfo* const property = Property(expected.alias);
        ASSERT_NE(property, nullptr) << expected.alias;
        EXPECT_EQ(property->name, expected.name);
    }
}

// What a property has at first is a value that it may have, and computing it changes nothing.
TEST(PropertyTable, HasInitialValuesThatAreComputed) {
    ComputingContext context;
    context.color = "currentcolor";
    for (const PropertyInfo& property : KnownProperties()) {
        if (property.initial.empty()) continue;
        EXPECT_TRUE(IsValidValue(property, property.initial)) << property.name;
        EXPECT_EQ(ComputedValue(property, property.initial, context), property.initial)
            << property.name;
    }
}
