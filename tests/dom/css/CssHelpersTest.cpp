// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CssHelpers.h>
#include "support/PrintAstring.h"

#include <gtest/gtest.h>

TEST(CssHelpers, AMediumEndsBehindItsLastCharacter) {
    const struct {
        const char* text;
        const char* medium;
        const char* rest;
    } kCases[] = {
        {"screen", "screen", ""},
        {"screen, print", "screen", ", print"},
        {" \t\n\r\fscreen \t,print", "screen", " \t,print"},
        {",, ,tv", "tv", ""},
        {"screen and (color), tv", "screen and (color)", ", tv"},
        {"a (b, (c, d), e) f, g", "a (b, (c, d), e) f", ", g"},
        {"a), b", "a)", ", b"},
        {"(a, b", "(a, b", ""},
        {"\xC3\xA9, b", "\xC3\xA9", ", b"},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.text);
        const char* rest = c.text;
        astring medium = "before";
        ASSERT_TRUE(CssHelpers::ParseMedium(rest, medium));
        EXPECT_EQ(medium, c.medium);
        EXPECT_STREQ(rest, c.rest);
    }
}

TEST(CssHelpers, WithoutAMediumNothingChanges) {
    for (const char* const text : {"", " ", ",", " , \t, "}) {
        SCOPED_TRACE(text);
        const char* rest = text;
        astring medium = "before";
        EXPECT_FALSE(CssHelpers::ParseMedium(rest, medium));
        EXPECT_EQ(medium, "before");
        EXPECT_EQ(rest, text);
    }
}
