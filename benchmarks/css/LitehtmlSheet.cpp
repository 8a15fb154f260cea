// SPDX-License-Identifier: MIT
// A document is wanted for media queries only, which a made sheet does not have.
#include "css/SheetReading.h"

#include <litehtml/html.h>
#include <litehtml/stylesheet.h>

namespace bench {

namespace {

void Parse(litehtml::css& sheet, const std::string& text) {
    sheet.parse_stylesheet(text.c_str(), nullptr, nullptr, nullptr);
}

// Calls `visit` with the declarations of each rule. The selectors of a rule come one after the
// other, each with a copy of them.
template <typename Visit>
SheetTotals ForEachRule(const litehtml::css& sheet, Visit visit) {
    SheetTotals totals;
    const litehtml::tstring* previous = nullptr;
    for (const litehtml::css_selector::ptr& selector : sheet.selectors()) {
        ++totals.selectors;
        if (previous != nullptr && *previous == selector->m_style) continue;
        ++totals.rules;
        previous = &selector->m_style;
        visit(*previous);
    }
    return totals;
}

}  // namespace

SheetTotals ReadLitehtmlSheet(const std::string& text) {
    litehtml::css sheet;
    Parse(sheet, text);
    return ForEachRule(sheet, [](const litehtml::tstring&) {});
}

SheetTotals ReadLitehtmlSheetWhole(const std::string& text) {
    litehtml::css sheet;
    Parse(sheet, text);
    std::vector<litehtml::style> styles;
    return ForEachRule(sheet, [&](const litehtml::tstring& declarations) {
        styles.emplace_back().add(declarations.c_str(), nullptr, nullptr);
    });
}

}  // namespace bench
