// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CSSPrimitiveValue.h>
#include <espalier/dom/css/Counter.h>
#include <espalier/dom/css/RGBColor.h>
#include <espalier/dom/css/Rect.h>

#include "dom/ExpectDomError.h"
#include "support/PrintAstring.h"
#include "support/VirtualSlot.h"

#include <gtest/gtest.h>

#include <bit>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <locale>
#include <memory>
#include <string>

namespace {

using Dom::CSS::CSSPrimitiveValue;
using Dom::CSS::CSSValue;
using Type = CSSPrimitiveValue::UnitTypes;

constexpr int kTypeCount = 26;

// What stands around the body of each kind.
const struct {
    Type type;
    const char* prefix;
    const char* suffix;
} kAround[] = {
    {CSSPrimitiveValue::CSS_UNKNOWN, "", ""},
    {CSSPrimitiveValue::CSS_NUMBER, "", ""},
    {CSSPrimitiveValue::CSS_PERCENTAGE, "", "%"},
    {CSSPrimitiveValue::CSS_EMS, "", "em"},
    {CSSPrimitiveValue::CSS_EXS, "", "ex"},
    {CSSPrimitiveValue::CSS_PX, "", "px"},
    {CSSPrimitiveValue::CSS_CM, "", "cm"},
    {CSSPrimitiveValue::CSS_MM, "", "mm"},
    {CSSPrimitiveValue::CSS_IN, "", "in"},
    {CSSPrimitiveValue::CSS_PT, "", "pt"},
    {CSSPrimitiveValue::CSS_PC, "", "pc"},
    {CSSPrimitiveValue::CSS_DEG, "", "deg"},
    {CSSPrimitiveValue::CSS_RAD, "", "red"},
    {CSSPrimitiveValue::CSS_GRAD, "", "grad"},
    {CSSPrimitiveValue::CSS_MS, "", "ms"},
    {CSSPrimitiveValue::CSS_S, "", "s"},
    {CSSPrimitiveValue::CSS_HZ, "", "Hz"},
    {CSSPrimitiveValue::CSS_KHZ, "", "kHz"},
    {CSSPrimitiveValue::CSS_DIMENSION, "", ""},
    {CSSPrimitiveValue::CSS_STRING, "\"", "\""},
    {CSSPrimitiveValue::CSS_URI, "url(\"", "\")"},
    {CSSPrimitiveValue::CSS_IDENT, "", ""},
    {CSSPrimitiveValue::CSS_ATTR, "ATTR(", ")"},
    {CSSPrimitiveValue::CSS_COUNTER, "counter)", ")"},
    {CSSPrimitiveValue::CSS_RECT, "rect(", ")"},
    {CSSPrimitiveValue::CSS_RGBCOLOR, "", ""},
};

bool IsNumeric(int type) { return type >= 1 && type <= 18; }
bool IsText(int type) { return type >= 19 && type <= 22; }

std::string NumberText(float number) {
    return CSSPrimitiveValue(nullptr, CSSPrimitiveValue::CSS_NUMBER, number).CssText().str();
}

std::string TextOf(const char* text) { return CSSPrimitiveValue(nullptr, text).CssText().str(); }

// Sets locales in which numbers have a decimal comma: that of C++ always, that of C where there is
// one. Both are put back.
class DecimalComma {
public:
    DecimalComma()
        : before_(std::locale::global(std::locale(std::locale::classic(), new Comma))),
          numeric_(std::setlocale(LC_NUMERIC, nullptr)) {
        for (const char* const name : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8", "fr_FR.utf8"})
            if (std::setlocale(LC_NUMERIC, name) != nullptr) return;
    }
    ~DecimalComma() {
        std::locale::global(before_);
        std::setlocale(LC_NUMERIC, numeric_.c_str());
    }
    DecimalComma(const DecimalComma&) = delete;
    DecimalComma& operator=(const DecimalComma&) = delete;

private:
    struct Comma : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };

    std::locale before_;
    std::string numeric_;
};

}  // namespace

TEST(CSSPrimitiveValue, KindsHaveTheNumbersOfTheStandard) {
    int number = 0;
    for (const auto& around : kAround)
        EXPECT_EQ(static_cast<int>(around.type), number++);
    EXPECT_EQ(number, kTypeCount);
    EXPECT_EQ(CSSValue::CSS_INHERIT, 0);
    EXPECT_EQ(CSSValue::CSS_PRIMITIVE_VALUE, 1);
    EXPECT_EQ(CSSValue::CSS_VALUE_LIST, 2);
    EXPECT_EQ(CSSValue::CSS_CUSTOM, 3);
}

TEST(CSSPrimitiveValue, KindsHaveAPrefixAndASuffix) {
    for (const auto& c : kAround) {
        SCOPED_TRACE(c.type);
        EXPECT_STREQ(CSSPrimitiveValue::Prefix(c.type), c.prefix);
        EXPECT_STREQ(CSSPrimitiveValue::Suffix(c.type), c.suffix);
    }
}

TEST(CSSPrimitiveValue, AValueHasThoseOfItsKind) {
    const struct {
        const char* text;
        const char* prefix;
        const char* suffix;
    } kValues[] = {
        {"12px", "", "px"}, {"url(a)", "url(\"", "\")"}, {"50%", "", "%"}, {"red", "", ""}};
    for (const auto& c : kValues) {
        SCOPED_TRACE(c.text);
        const CSSPrimitiveValue value(nullptr, c.text);
        EXPECT_STREQ(value.Prefix(), c.prefix);
        EXPECT_STREQ(value.Suffix(), c.suffix);
    }
}

TEST(CSSPrimitiveValue, KindsThatThereAreNotHaveNone) {
    for (const int number : {26, 27, 255, 65535}) {
        SCOPED_TRACE(number);
        EXPECT_STREQ(CSSPrimitiveValue::Prefix(static_cast<Type>(number)), "");
        EXPECT_STREQ(CSSPrimitiveValue::Suffix(static_cast<Type>(number)), "");
    }
}

TEST(CSSPrimitiveValue, TheTextIsPrefixBodyAndSuffix) {
    for (const auto& c : kAround) {
        SCOPED_TRACE(c.type);
        CSSPrimitiveValue text(nullptr, c.type, astring("x y"));
        EXPECT_EQ(text.PrimitiveType(), c.type);
        EXPECT_EQ(text.CssText(),
                  c.prefix + std::string(IsNumeric(c.type) ? "0" : "x y") + c.suffix);
        CSSPrimitiveValue number(nullptr, c.type, 1.5F);
        EXPECT_EQ(number.PrimitiveType(), c.type);
        EXPECT_EQ(number.CssText(),
                  c.prefix + std::string(IsNumeric(c.type) ? "1.5" : "") + c.suffix);
    }
}

TEST(CSSPrimitiveValue, DeliberateTheseDoNotReadBack) {
    EXPECT_EQ(TextOf("2rad"), "2red");
    EXPECT_EQ(TextOf("attr(title)"), "ATTR(title)");
    EXPECT_EQ(TextOf("counter(x)"), "counter)x)");
    EXPECT_EQ(CSSPrimitiveValue(nullptr, "2red").PrimitiveType(), CSSPrimitiveValue::CSS_DIMENSION);
    EXPECT_EQ(CSSPrimitiveValue(nullptr, "ATTR(title)").PrimitiveType(),
              CSSPrimitiveValue::CSS_STRING);
    EXPECT_EQ(CSSPrimitiveValue(nullptr, "counter)x)").PrimitiveType(),
              CSSPrimitiveValue::CSS_IDENT);
}

TEST(CSSPrimitiveValue, IsWrittenInOneForm) {
    const char* const kCases[][2] = {
        {"12px", "12px"},
        {"100px", "100px"},
        {"1.50em", "1.5em"},
        {"1.0", "1"},
        {"+3cm", "3cm"},
        {"-0.250mm", "-0.25mm"},
        {"007", "7"},
        {"50%", "50%"},
        {"1000000", "1e+06"},
        {"1000000px", "1e+06px"},
        {"12foo", "12"},
        {"12px/1.5", "12"},
        {"1kHz", "1kHz"},
        {"'a b'", "\"a b\""},
        {"'a\"b'", "\"a\\\"b\""},
        {"'\"\"'", "\"\\\"\\\"\""},
        {"'a\\\\b'", "\"a\\b\""},
        {"url(a)", "url(\"a\")"},
        {"url('a\"b')", "url(\"a\"b\")"},
        {"bold", "bold"},
        {"bold \n", "bold"},
        {"#abc", "#abc"},
        {"rgb(1, 2,3)", "rgb(1, 2,3)"},
        {"rect( 1px, 2px, 3px, auto )", "rect(1px, 2px, 3px, auto)"},
        {".5em", "\".5em\""},
        {"translate(1px)", "\"translate(1px)\""},
        {"rgba(1,2,3,4)", "rgba"},
        {"", ""},
        {" ", ""},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c[0]);
        EXPECT_EQ(TextOf(c[0]), c[1]);
    }
}

TEST(CSSPrimitiveValue, BlanksBeforeATextAreSkipped) {
    CSSPrimitiveValue value(nullptr, " \t\r\n\f12px");
    EXPECT_EQ(value.PrimitiveType(), CSSPrimitiveValue::CSS_PX);
    EXPECT_EQ(value.CssText(), "12px");
    value.SetCssText("\n bold");
    EXPECT_EQ(value.PrimitiveType(), CSSPrimitiveValue::CSS_IDENT);
}

TEST(CSSPrimitiveValue, ATextReplacesTheValue) {
    CSSPrimitiveValue value(nullptr, "abc");
    value.SetCssText("def");
    EXPECT_EQ(value.CssText(), "def");
    value.SetCssText(astring("'g'"));
    EXPECT_EQ(value.PrimitiveType(), CSSPrimitiveValue::CSS_STRING);
    EXPECT_EQ(value.GetStringValue(), "g");
    value.SetCssText("2em");
    EXPECT_EQ(value.PrimitiveType(), CSSPrimitiveValue::CSS_EMS);
    EXPECT_EQ(value.CssText(), "2em");
    EXPECT_NO_THROW(value.SetCssText("'never closed"));
    EXPECT_EQ(value.PrimitiveType(), CSSPrimitiveValue::CSS_UNKNOWN);
    CSSValue& base = value;
    base.SetCssText(astring("3ex"));
    EXPECT_EQ(base.CssText(), "3ex");
}

TEST(CSSPrimitiveValue, ItsOwnTextReplacesTheValue) {
    const std::string word(100, 'x');
    CSSPrimitiveValue value(nullptr, "'  " + word + "  '");
    value.SetCssText(value.GetStringValue());
    EXPECT_EQ(value.PrimitiveType(), CSSPrimitiveValue::CSS_IDENT);
    EXPECT_EQ(value.GetStringValue(), word);
    value.SetStringValue(CSSPrimitiveValue::CSS_STRING, value.GetStringValue());
    EXPECT_EQ(value.GetStringValue(), word);
}

TEST(CSSPrimitiveValue, NumbersArePrintedWithSixDigits) {
    const struct {
        float number;
        const char* text;
    } kCases[] = {
        {0.0F, "0"},
        {-0.0F, "-0"},
        {1.0F, "1"},
        {100.0F, "100"},
        {1.5F, "1.5"},
        {-1.5F, "-1.5"},
        {0.125F, "0.125"},
        {0.1F, "0.1"},
        {1.0F / 3, "0.333333"},
        {2.0F / 3, "0.666667"},
        {123456.0F, "123456"},
        {1234567.0F, "1.23457e+06"},
        {999999.5F, "1e+06"},
        {1e6F, "1e+06"},
        {1.5e10F, "1.5e+10"},
        {1e20F, "1e+20"},
        {0.0001F, "0.0001"},
        {0.00001F, "1e-05"},
        {2.5e-7F, "2.5e-07"},
        {std::numeric_limits<float>::max(), "3.40282e+38"},
        {std::numeric_limits<float>::infinity(), "inf"},
        {-std::numeric_limits<float>::infinity(), "-inf"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.text);
        EXPECT_EQ(NumberText(c.number), c.text);
    }
}

TEST(CSSPrimitiveValue, NumbersArePrintedAsTheStandardLibraryDoes) {
    std::uint32_t state = 1;
    for (int i = 0; i < 20000; ++i) {
        state = state * 1664525U + 1013904223U;
        const auto number = std::bit_cast<float>(state);
        if (std::isnan(number)) continue;
        char expected[64];
        std::snprintf(expected, sizeof expected, "%g", static_cast<double>(number));
        ASSERT_EQ(NumberText(number), expected);
    }
}

TEST(CSSPrimitiveValue, NumbersHaveAPointInEveryLocale) {
    const DecimalComma locale;
    EXPECT_EQ(NumberText(1.5F), "1.5");
    EXPECT_EQ(NumberText(1234.5F), "1234.5");
    EXPECT_EQ(NumberText(100000.0F), "100000");
    EXPECT_EQ(NumberText(1.25e-9F), "1.25e-09");
    EXPECT_EQ(TextOf("1.50em"), "1.5em");
    CSSPrimitiveValue value(nullptr, "2.25px");
    EXPECT_EQ(value.GetFloatValue(CSSPrimitiveValue::CSS_PX), 2.25F);
}

TEST(CSSPrimitiveValue, IsSetToANumberOfAnyUnit) {
    for (int unit = 0; unit < 40; ++unit) {
        SCOPED_TRACE(unit);
        CSSPrimitiveValue value(nullptr, "bold");
        if (IsNumeric(unit)) {
            EXPECT_NO_THROW(value.SetFloatValue(static_cast<Type>(unit), 2.5F));
            EXPECT_EQ(value.PrimitiveType(), unit);
            EXPECT_EQ(value.GetFloatValue(CSSPrimitiveValue::CSS_NUMBER), 2.5F);
        } else {
            EXPECT_DOM_ERROR(value.SetFloatValue(static_cast<Type>(unit), 2.5F),
                             "15 Unit type is not a float unit");
            EXPECT_EQ(value.CssText(), "bold") << "nothing has changed";
        }
    }
}

TEST(CSSPrimitiveValue, IsSetToATextOfAFewKinds) {
    for (int unit = 0; unit < 40; ++unit) {
        SCOPED_TRACE(unit);
        CSSPrimitiveValue value(nullptr, "12px");
        if (IsText(unit)) {
            EXPECT_NO_THROW(value.SetStringValue(static_cast<Type>(unit), "a b"));
            EXPECT_EQ(value.PrimitiveType(), unit);
            EXPECT_EQ(value.GetStringValue(), "a b");
        } else {
            EXPECT_DOM_ERROR(value.SetStringValue(static_cast<Type>(unit), "a b"),
                             "15 The string value can't be converted into the specified unit");
            EXPECT_EQ(value.CssText(), "12px") << "nothing has changed";
        }
    }
}

TEST(CSSPrimitiveValue, TellsTheTextOfAFewKinds) {
    for (int type = 0; type < kTypeCount; ++type) {
        SCOPED_TRACE(type);
        CSSPrimitiveValue value(nullptr, static_cast<Type>(type), astring("a\"b"));
        if (IsText(type)) {
            EXPECT_EQ(value.GetStringValue(), "a\"b");
        } else {
            EXPECT_DOM_ERROR(value.GetStringValue(), "15 Primitive value is not a string value");
        }
    }
}

TEST(CSSPrimitiveValue, KeepsTheDescriptorOfTheCaller) {
    const int place = 0;
    const auto* const descriptor = reinterpret_cast<const Dom::CSS::CSSPrimitiveTypeImpl*>(&place);
    CSSPrimitiveValue text(descriptor, "12px");
    const CSSPrimitiveValue number(descriptor, CSSPrimitiveValue::CSS_PX, 1.0F);
    const CSSPrimitiveValue string(descriptor, CSSPrimitiveValue::CSS_STRING, astring("x"));
    EXPECT_EQ(text.Descriptor(), descriptor);
    EXPECT_EQ(number.Descriptor(), descriptor);
    EXPECT_EQ(string.Descriptor(), descriptor);
    text.SetCssText("x");
    EXPECT_EQ(text.Descriptor(), descriptor);
    EXPECT_EQ(CSSPrimitiveValue(nullptr, "x").Descriptor(), nullptr);
}

TEST(CSSPrimitiveValue, CopiesAreOfTheirOwn) {
    const int place = 0;
    const auto* const descriptor = reinterpret_cast<const Dom::CSS::CSSPrimitiveTypeImpl*>(&place);
    CSSPrimitiveValue source(descriptor, "12px");
    source.SetStringValue(CSSPrimitiveValue::CSS_STRING, "x");
    const CSSPrimitiveValue copy(source);
    CSSPrimitiveValue assigned(nullptr, "bold");
    assigned = source;
    const std::unique_ptr<CSSPrimitiveValue> clone(source.Clone());
    source.SetCssText("3em");
    CSSPrimitiveValue& self = source;
    source = self;
    EXPECT_EQ(source.CssText(), "3em");
    for (const CSSPrimitiveValue* const value :
         {&copy, const_cast<const CSSPrimitiveValue*>(&assigned),
          const_cast<const CSSPrimitiveValue*>(clone.get())}) {
        EXPECT_EQ(value->CssValueType(), CSSValue::CSS_PRIMITIVE_VALUE);
        EXPECT_EQ(value->PrimitiveType(), CSSPrimitiveValue::CSS_STRING);
        EXPECT_EQ(value->GetStringValue(), "x");
        EXPECT_EQ(value->GetFloatValue(CSSPrimitiveValue::CSS_PX), 12.0F) << "the number is copied";
        EXPECT_EQ(value->Descriptor(), descriptor);
    }
}

TEST(CSSPrimitiveValue, TellsTheNameOfACounter) {
    const CSSPrimitiveValue value(nullptr, "counter( x )");
    const Dom::CSS::Counter counter = value.GetCounterValue();
    EXPECT_EQ(counter.Identifier(), "x");
    EXPECT_EQ(counter.ListStyle(), "");
    EXPECT_EQ(counter.Separator(), "");
}

TEST(CSSPrimitiveValue, TellsTheSidesOfARectangle) {
    const CSSPrimitiveValue value(nullptr, "rect( 1px, -2em 3.5cm,auto )");
    const Dom::CSS::Rect rect = value.GetRectValue();
    EXPECT_EQ(rect.Top().CssText(), "1px");
    EXPECT_EQ(rect.Right().CssText(), "-2em");
    EXPECT_EQ(rect.Bottom().CssText(), "3.5cm");
    EXPECT_EQ(rect.Bottom().PrimitiveType(), CSSPrimitiveValue::CSS_CM);
    EXPECT_EQ(rect.Left().CssText(), "auto");
    EXPECT_EQ(rect.Left().PrimitiveType(), CSSPrimitiveValue::CSS_IDENT);
}

TEST(CSSPrimitiveValue, TellsThePartsOfAColour) {
    const struct {
        const char* text;
        float red, green, blue;
    } kCases[] = {{"#102030", 16, 32, 48},
                  {"#fA0", 255, 170, 0},
                  {"rgb(1, 2, 3)", 1, 2, 3},
                  {"rgb(255,0,7)", 255, 0, 7}};
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.text);
        const Dom::CSS::RGBColor color = CSSPrimitiveValue(nullptr, c.text).GetRGBColorValue();
        EXPECT_EQ(color.Red().PrimitiveType(), CSSPrimitiveValue::CSS_NUMBER);
        EXPECT_EQ(color.Red().GetFloatValue(CSSPrimitiveValue::CSS_NUMBER), c.red);
        EXPECT_EQ(color.Green().GetFloatValue(CSSPrimitiveValue::CSS_NUMBER), c.green);
        EXPECT_EQ(color.Blue().GetFloatValue(CSSPrimitiveValue::CSS_NUMBER), c.blue);
    }
}

TEST(CSSPrimitiveValue, OtherKindsHaveNoSuchParts) {
    for (int type = 0; type < kTypeCount; ++type) {
        SCOPED_TRACE(type);
        const CSSPrimitiveValue value(nullptr, static_cast<Type>(type), astring("x"));
        if (type != CSSPrimitiveValue::CSS_COUNTER) {
            EXPECT_DOM_ERROR(value.GetCounterValue(), "15 Primitive value is not a counter value");
        }
        if (type != CSSPrimitiveValue::CSS_RECT) {
            EXPECT_DOM_ERROR(value.GetRectValue(), "15 Primitive value is not a rectangle value");
        }
        if (type != CSSPrimitiveValue::CSS_RGBCOLOR) {
            EXPECT_DOM_ERROR(value.GetRGBColorValue(), "15 Primitive value is not a color value");
        }
    }
}

TEST(CSSPrimitiveValue, AnswersItsInterfaces) {
    CSSPrimitiveValue value(nullptr, "x");
    CSSValue& base = value;
    EXPECT_EQ(value.QueryInterface("Dom::CSS::CSSPrimitiveValue"), static_cast<void*>(&value));
    EXPECT_EQ(base.QueryInterface("Dom::CSS::CSSPrimitiveValue"), static_cast<void*>(&value));
    EXPECT_EQ(value.QueryInterface("Dom::CSS::CSSValue"), static_cast<void*>(&base));
    for (const char* const name : {"", "CSSValue", "Dom::CSS::CSSValueList", "Dom::CSS::CSSValues",
                                   "dom::css::CSSValue", "Dom::CSS::CSSPrimitive"}) {
        SCOPED_TRACE(name);
        EXPECT_EQ(value.QueryInterface(name), nullptr);
    }
}

TEST(CSSPrimitiveValue, VirtualFunctionsHaveTheirSlots) {
    if (!support::kKnowsVirtualSlots) GTEST_SKIP() << "another ABI";
    using support::VirtualSlot;
    EXPECT_EQ(VirtualSlot(&CSSValue::QueryInterface), 0);  // 1 and 2: the destructor
    EXPECT_EQ(VirtualSlot(&CSSValue::CssText), 3);
    EXPECT_EQ(VirtualSlot(static_cast<void (CSSValue::*)(const char*)>(&CSSValue::SetCssText)), 4);
    EXPECT_EQ(VirtualSlot(static_cast<void (CSSValue::*)(const astring&)>(&CSSValue::SetCssText)),
              5);
    EXPECT_EQ(VirtualSlot(&CSSValue::Clone), 6);
}
