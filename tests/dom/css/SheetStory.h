// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/dom/css/ParseStyleSheet.h>

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// \file
/// What ParseStyleSheet() makes of a text, as one text, for tests.

namespace support {

/// The rules of a sheet, with " | " between them.
inline std::string RulesOf(const Dom::CSS::CSSStyleSheet& sheet) {
    std::string text;
    for (const Dom::CSS::CSSRule* const rule : sheet.CssRules())
        text += (text.empty() ? "" : " | ") + rule->CssText().str();
    return text;
}

/// What was left out: "line:column reason", with ", " between them.
inline std::string DropsOf(const std::vector<Dom::CSS::DroppedText>& dropped) {
    std::string text;
    for (const Dom::CSS::DroppedText& drop : dropped) {
        text += (text.empty() ? "" : ", ") + std::to_string(drop.place.line) + ":" +
                std::to_string(drop.place.column) + " " + drop.reason.str();
    }
    return text;
}

/// A text, its rules, and what was left out.
struct SheetCase {
    std::string_view text;
    const char* rules;
    const char* drops = "";
};

/// Expects that texts give these rules, and that this is left out.
template <std::size_t Count>
void ExpectSheets(const SheetCase (&cases)[Count]) {
    for (const SheetCase& c : cases) {
        SCOPED_TRACE(c.text);
        std::vector<Dom::CSS::DroppedText> dropped;
        const auto sheet = Dom::CSS::ParseStyleSheet(c.text, {.dropped = &dropped});
        EXPECT_EQ(RulesOf(*sheet), c.rules);
        EXPECT_EQ(DropsOf(dropped), c.drops);
        // Nobody has to ask for what is left out.
        EXPECT_EQ(RulesOf(*Dom::CSS::ParseStyleSheet(c.text)), c.rules);
    }
}

}  // namespace support
