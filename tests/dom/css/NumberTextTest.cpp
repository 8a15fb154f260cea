// SPDX-License-Identifier: MIT
#include "dom/css/NumberText.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>

namespace {

using Dom::CSS::detail::TakeDecimal;

struct Case {
    std::string_view text;
    double value;
    std::string_view rest;
};

constexpr Case kCases[] = {
    {"0", 0, ""},
    {"12px", 12, "px"},
    {"-12px", -12, "px"},
    {"1.5em", 1.5, "em"},
    {".5", 0.5, ""},
    {"-.5%", -0.5, "%"},
    {"5.px", 5, "px"},
    {"1.2.3", 1.2, ".3"},
    {"1e3", 1000, ""},
    {"1E+3s", 1000, "s"},
    {"25e-1", 2.5, ""},
    {"1em", 1, "em"},
    {"1e+", 1, "e+"},
    {"1e-px", 1, "e-px"},
    {"1ex", 1, "ex"},
    {"0x10", 0, "x10"},
    {"0e5", 0, ""},
    {"0.000e9", 0, ""},
    {"0.1", 0.1, ""},
    {"123456789.123456789", 123456789.123456789, ""},
    {"179769313486231570e291", 179769313486231570e291, ""},
    {"1e-300", 1e-300, ""},
    {"1e-310", 1e-310, ""},  // fewer digits count
};

void ExpectAll() {
    for (const Case& c : kCases) {
        std::string_view text = c.text;
        const std::optional<double> value = TakeDecimal(text);
        ASSERT_TRUE(value.has_value()) << c.text;
        EXPECT_EQ(*value, c.value) << c.text;
        EXPECT_EQ(text, c.rest) << c.text;
    }
}

TEST(TakeDecimal, TakesTheNumberOffTheBegin) { ExpectAll(); }

TEST(TakeDecimal, KeepsTheSignOfZero) {
    std::string_view text = "-0px";
    const std::optional<double> value = TakeDecimal(text);
    ASSERT_TRUE(value.has_value());
    EXPECT_TRUE(std::signbit(*value));
    EXPECT_EQ(text, "px");
}

TEST(TakeDecimal, LeavesWhatIsNoNumber) {
    for (const std::string_view text : {"", "-", ".", "-.", "+1", " 1", "px", "e5", ".e5", "-px",
                                        "inf", "-infinity", "nan", "1e400", "-1e400", "1e-400"}) {
        std::string_view rest = text;
        EXPECT_FALSE(TakeDecimal(rest).has_value()) << text;
        EXPECT_EQ(rest, text);
    }
}

TEST(TakeDecimal, TakesAsManyDigitsAsThereAre) {
    const std::string digits = "1." + std::string(100000, '0') + "1";
    std::string_view text = digits;
    EXPECT_EQ(TakeDecimal(text), 1.0);
    EXPECT_TRUE(text.empty());
}

TEST(TakeDecimal, KnowsNoLocale) {
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    for (const char* const name : {"de_DE.UTF-8", "de_DE", "fr_FR.UTF-8"}) {
        if (std::setlocale(LC_NUMERIC, name) != nullptr) break;
    }
    ExpectAll();  // with commas where such a locale is installed
    std::setlocale(LC_NUMERIC, before.c_str());
}

}  // namespace
