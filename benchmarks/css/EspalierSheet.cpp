// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CSSStyleRule.h>
#include <espalier/dom/css/CssReader.h>
#include <espalier/dom/css/ParseStyleSheet.h>
#include <espalier/io/MemoryStream.h>

#include "css/SheetReading.h"

#include <algorithm>

namespace bench {

using Dom::CSS::CSSRule;
using Dom::CSS::CSSStyleRule;
using Dom::CSS::CSSStyleSheet;

std::unique_ptr<CSSStyleSheet> LoadEspalierSheet(const std::string& text) {
    IO::MemoryStream stream(reinterpret_cast<const unsigned char*>(text.data()),
                            static_cast<long>(text.size()));
    Dom::CSS::CssReader reader(&stream, "UTF-8");
    auto sheet = std::make_unique<CSSStyleSheet>(CSSRule::Author, nullptr, "", "");
    while (reader.Read()) {
        const astring rule = reader.ReadRule();
        if (!rule.empty()) sheet->InsertRule(rule, sheet->CssRules().Length());
    }
    return sheet;
}

namespace {

// Calls `visit` with each rule.
template <typename Visit>
SheetTotals ForEachRule(const CSSStyleSheet& sheet, Visit visit) {
    SheetTotals totals;
    for (const CSSRule* const rule : sheet.CssRules()) {
        const auto& styleRule = static_cast<const CSSStyleRule&>(*rule);
        const std::string_view selectors = styleRule.SelectorText().view();
        visit(styleRule);
        ++totals.rules;
        totals.selectors +=
            1 + static_cast<std::size_t>(std::count(selectors.begin(), selectors.end(), ','));
    }
    return totals;
}

}  // namespace

SheetTotals ReadEspalierSheet(const std::string& text) {
    return ForEachRule(*LoadEspalierSheet(text), [](const CSSStyleRule&) {});
}

SheetTotals ParseEspalierSheet(const std::string& text) {
    return ForEachRule(*Dom::CSS::ParseStyleSheet(text), [](const CSSStyleRule&) {});
}

SheetTotals ReadEspalierSheetWhole(const std::string& text) {
    volatile unsigned sink = 0;
    return ForEachRule(*LoadEspalierSheet(text),
                       [&sink](const CSSStyleRule& rule) { sink = sink + rule.Style().Length(); });
}

}  // namespace bench
