// SPDX-License-Identifier: MIT
// Dom::CSS::CSSPrimitiveValue::GetFloatValue(): every kind in every unit.
#include <espalier/dom/css/CSSPrimitiveValue.h>

#include "dom/ExpectDomError.h"
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

using Dom::CSS::CSSPrimitiveValue;
using Type = CSSPrimitiveValue::UnitTypes;

constexpr int kTypeCount = 26;
constexpr int kFirstConverted = CSSPrimitiveValue::CSS_CM;
constexpr int kUnitCount = 13;

// clang-format off
// The rows that are not here, those of texts, are zero.
constexpr float kFactors[kTypeCount][kUnitCount] = {
    //                cm           mm          in           pt         pc           deg       rad        grad       ms    s       Hz      kHz   dimension
    /* unknown */    {0,           0,          0,           0,         0,           0,        0,         0,         0,    0,      0,      0,    0},
    /* number */     {0,           0,          0,           0,         0,           0,        0,         0,         0,    0,      0,      0,    0},
    /* percentage */ {0,           0,          0,           0,         0,           0,        0,         0,         0,    0,      0,      0,    0},
    /* em */         {0,           0,          0,           0,         0,           0,        0,         0,         0,    0,      0,      0,    0},
    /* ex */         {0,           0,          0,           0,         0,           0,        0,         0,         0,    0,      0,      0,    0},
    /* px */         {0.02645833F, 0.2645833F, 0.01041667F, 0.7499999F, 0.06273437F, 0,       0,         0,         0,    0,      0,      0,    1},
    /* cm */         {1,           0.1F,       0.3937008F,  28.34646F, 2.371063F,   0,        0,         0,         0,    0,      0,      0,    1},
    /* mm */         {10,          1,          0.03937008F, 2.834646F, 0.2371063F,  0,        0,         0,         0,    0,      0,      0,    1},
    /* in */         {2.54F,       25.4F,      1,           72,        6.0225F,     0,        0,         0,         0,    0,      0,      0,    1},
    /* pt */         {0.03527778F, 0.3527778F, 0.01388889F, 1,         0.08364584F, 0,        0,         0,         0,    0,      0,      0,    1},
    /* pc */         {0.4217518F,  4.217517F,  0.166044F,   11.95517F, 1,           0,        0,         0,         0,    0,      0,      0,    1},
    /* deg */        {0,           0,          0,           0,         0,           1,        0.0174533F, 1.111111F, 0,   0,      0,      0,    1},
    /* rad */        {0,           0,          0,           0,         0,           57.29578F, 1,        63.66198F, 0,    0,      0,      0,    1},
    /* grad */       {0,           0,          0,           0,         0,           1,        1,         1,         0,    0,      0,      0,    1},
    /* ms */         {0,           0,          0,           0,         0,           0,        0,         0,         1,    0.001F, 0,      0,    1},
    /* s */          {0,           0,          0,           0,         0,           0,        0,         0,         1000, 1,      0,      0,    1},
    /* Hz */         {0,           0,          0,           0,         0,           0,        0,         0,         0,    0,      1,      1000, 1},
    /* kHz */        {0,           0,          0,           0,         0,           0,        0,         0,         0,    0,      0.001F, 1,    0},
    /* dimension */  {1,           1,          1,           1,         1,           1,        1,         1,         1,    1,      1,      1,    1},
};
// clang-format on

constexpr float kNumber = 12.25F;

// Makes a value of any kind that has the number, also where the kind is a text.
CSSPrimitiveValue ValueOf(int type) { return {nullptr, static_cast<Type>(type), kNumber}; }

}  // namespace

TEST(CSSPrimitiveValueConversion, EveryKindInEveryUnit) {
    int converted = 0;
    for (int type = 0; type < kTypeCount; ++type) {
        for (int column = 0; column < kUnitCount; ++column) {
            const int unit = kFirstConverted + column;
            SCOPED_TRACE(testing::Message() << "kind " << type << " in " << unit);
            const float factor = kFactors[type][column];
            const CSSPrimitiveValue value = ValueOf(type);
            if (factor == 0) {
                EXPECT_DOM_ERROR(value.GetFloatValue(static_cast<Type>(unit)),
                                 "15 The float value can't be converted into the specified unit");
            } else {
                EXPECT_EQ(value.GetFloatValue(static_cast<Type>(unit)), kNumber * factor);
                ++converted;
            }
        }
    }
    EXPECT_EQ(converted, 72);
}

TEST(CSSPrimitiveValueConversion, UnitsBeforeCentimetresGiveTheNumberAsItIs) {
    for (int type = 0; type < kTypeCount; ++type) {
        for (int unit = 1; unit < kFirstConverted; ++unit) {
            SCOPED_TRACE(testing::Message() << "kind " << type << " in " << unit);
            EXPECT_EQ(ValueOf(type).GetFloatValue(static_cast<Type>(unit)), kNumber);
        }
    }
}

TEST(CSSPrimitiveValueConversion, WhatIsNoUnitOfNumbersIsRefused) {
    for (int type = 0; type < kTypeCount; ++type) {
        for (const int unit : {0, 19, 20, 21, 22, 23, 24, 25, 26, 99, 65535}) {
            SCOPED_TRACE(testing::Message() << "kind " << type << " in " << unit);
            EXPECT_DOM_ERROR(ValueOf(type).GetFloatValue(static_cast<Type>(unit)),
                             "15 Primitive value is not a float value");
        }
    }
}

TEST(CSSPrimitiveValueConversion, AValueDoesNotChange) {
    const CSSPrimitiveValue value(nullptr, "12px");
    EXPECT_NEAR(value.GetFloatValue(CSSPrimitiveValue::CSS_IN), 0.125, 1e-6);
    EXPECT_EQ(value.PrimitiveType(), CSSPrimitiveValue::CSS_PX);
    EXPECT_EQ(value.CssText(), "12px");
}

TEST(CSSPrimitiveValueConversion, TwelvePixelsArePrintedAsAnEighthOfAnInch) {
    CSSPrimitiveValue value(nullptr, "12px");
    value.SetFloatValue(CSSPrimitiveValue::CSS_IN, value.GetFloatValue(CSSPrimitiveValue::CSS_IN));
    EXPECT_EQ(value.CssText(), "0.125in");
}

TEST(CSSPrimitiveValueConversion, DeliberateAnInchIsOnePixelAsItIs) {
    EXPECT_EQ(CSSPrimitiveValue(nullptr, "1in").GetFloatValue(CSSPrimitiveValue::CSS_PX), 1.0F);
}

TEST(CSSPrimitiveValueConversion, DeliberateTheFactorsThatDoNotFit) {
    const auto in = [](const char* text, Type unit) {
        return CSSPrimitiveValue(nullptr, text).GetFloatValue(unit);
    };
    EXPECT_FLOAT_EQ(in("1pc", CSSPrimitiveValue::CSS_PT), 11.95517F) << "not 12";
    EXPECT_FLOAT_EQ(in("1pc", CSSPrimitiveValue::CSS_MM), 4.217517F);
    EXPECT_FLOAT_EQ(in("1cm", CSSPrimitiveValue::CSS_MM), 0.1F) << "not 10";
    EXPECT_FLOAT_EQ(in("1mm", CSSPrimitiveValue::CSS_CM), 10.0F) << "not 0.1";
    EXPECT_FLOAT_EQ(in("400grad", CSSPrimitiveValue::CSS_DEG), 400.0F) << "not 360";
    EXPECT_FLOAT_EQ(in("400grad", CSSPrimitiveValue::CSS_RAD), 400.0F);
    EXPECT_FLOAT_EQ(in("2Hz", CSSPrimitiveValue::CSS_KHZ), 2000.0F) << "not 0.002";
    EXPECT_FLOAT_EQ(in("2kHz", CSSPrimitiveValue::CSS_HZ), 0.002F) << "not 2000";
    EXPECT_DOM_ERROR(in("2kHz", CSSPrimitiveValue::CSS_DIMENSION),
                     "15 The float value can't be converted into the specified unit");
}

TEST(CSSPrimitiveValueConversion, RefusesOtherKindsOfUnits) {
    for (const auto& c :
         {std::pair{"30ms", CSSPrimitiveValue::CSS_DEG},
          std::pair{"1px", CSSPrimitiveValue::CSS_DEG}, std::pair{"1cm", CSSPrimitiveValue::CSS_S},
          std::pair{"1", CSSPrimitiveValue::CSS_DIMENSION},
          std::pair{"50%", CSSPrimitiveValue::CSS_CM},
          std::pair{"bold", CSSPrimitiveValue::CSS_CM}}) {
        SCOPED_TRACE(c.first);
        EXPECT_DOM_ERROR(CSSPrimitiveValue(nullptr, c.first).GetFloatValue(c.second),
                         "15 The float value can't be converted into the specified unit");
    }
}
