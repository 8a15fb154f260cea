// SPDX-License-Identifier: MIT
#include "support/PaddedText.h"
#include "xml/QuickReference.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace {

using support::PaddedText;
using Xml::detail::QuickReference;

struct Case {
    std::string_view text;
    int code;  // 0 where no quick reference stands
    std::ptrdiff_t length = 0;
};

const Case kCases[] = {
    {"&lt;", '<', 4},
    {"&gt;", '>', 4},
    {"&amp;", '&', 5},
    {"&apos;", '\'', 6},
    {"&quot;", '"', 6},
    {"&amp;lt;", '&', 5},
    {"&#9;", 9, 4},
    {"&#10;", 10, 5},
    {"&#13;", 13, 5},
    {"&#32;", 32, 5},
    {"&#x20;", 32, 6},
    {"&#65;rest;", 'A', 5},
    {"&#x41;", 'A', 6},
    {"&#xaBcD;", 0xABCD, 8},
    {"&#x000000000041;", 'A', 16},
    {"&#00000000000000000065;", 'A', 23},
    {"&#xD7FF;", 0xD7FF, 8},
    {"&#xE000;", 0xE000, 8},
    {"&#xFFFD;", 0xFFFD, 8},
    {"&#x10000;", 0x10000, 9},
    {"&#x10FFFF;", 0x10FFFF, 10},
    {"&#1114111;", 0x10FFFF, 10},
    // Not characters of XML.
    {"&#0;", 0},
    {"&#8;", 0},
    {"&#11;", 0},
    {"&#31;", 0},
    {"&#x1F;", 0},
    {"&#xD800;", 0},
    {"&#xDFFF;", 0},
    {"&#xFFFE;", 0},
    {"&#xFFFF;", 0},
    {"&#1114112;", 0},
    {"&#x110000;", 0},
    {"&#99999999999999999999;", 0},
    {"&#xFFFFFFFFFFFFFFFFFFFF;", 0},
    // Not references.
    {"&#;", 0},
    {"&#x;", 0},
    {"&#X41;", 0},
    {"&#xx41;", 0},
    {"&#4A;", 0},
    {"&#x4G;", 0},
    {"&#x4`;", 0},
    {"&#4:;", 0},
    {"&#4/;", 0},
    {"&# 65;", 0},
    {"&#65 ;", 0},
    {"&#-5;", 0},
    {"&;", 0},
    {"& lt;", 0},
    {"&lt ;", 0},
    {"&LT;", 0},
    {"&ltt;", 0},
    {"&ampp;", 0},
    {"&apo;", 0},
    {"&quo;", 0},
    {"&foo;", 0},
    {"&\xC3\xA4;", 0},
};

TEST(QuickReference, IsPredefinedOrOfACharacter) {
    for (const Case& c : kCases) {
        SCOPED_TRACE(c.text);
        const PaddedText padded(c.text);
        const QuickReference found = Xml::detail::ReadQuickReference(padded.begin());
        EXPECT_EQ(found.code, c.code);
        if (c.code == 0) {
            EXPECT_EQ(found.end, nullptr);
        } else {
            EXPECT_EQ(padded.Offset(found.end), c.length);
        }
    }
}

TEST(QuickReference, IsWholeOrNone) {
    for (const Case& c : kCases) {
        if (c.code == 0) continue;
        for (std::size_t length = 1; length < static_cast<std::size_t>(c.length); ++length) {
            const PaddedText padded(c.text.substr(0, length));
            EXPECT_EQ(Xml::detail::ReadQuickReference(padded.begin()).end, nullptr)
                << c.text.substr(0, length);
        }
    }
}

TEST(QuickReference, StandsForEveryCharacterOfXml) {
    for (int code = 1; code <= 0x110000; code += code < 0x11000 ? 1 : 97) {
        const bool isCharacter =
            code == 9 || code == 10 || code == 13 || (code >= 0x20 && code <= 0xD7FF) ||
            (code >= 0xE000 && code <= 0xFFFD) || (code >= 0x10000 && code <= 0x10FFFF);
        const PaddedText padded("&#" + std::to_string(code) + ";");
        const QuickReference found = Xml::detail::ReadQuickReference(padded.begin());
        ASSERT_EQ(found.end != nullptr, isCharacter) << code;
        ASSERT_EQ(found.code, isCharacter ? code : 0);
    }
}

}  // namespace
