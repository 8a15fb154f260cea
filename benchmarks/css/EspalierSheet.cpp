// SPDX-License-Identifier: MIT
#include <espalier/dom/css/CSSStyleRule.h>
#include <espalier/dom/css/CssReader.h>
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

SheetTotals ReadEspalierSheet(const std::string& text) {
    const auto sheet = LoadEspalierSheet(text);
    SheetTotals totals;
    for (const CSSRule* const rule : sheet->CssRules()) {
        const std::string_view selectors =
            static_cast<const CSSStyleRule*>(rule)->SelectorText().view();
        ++totals.rules;
        totals.selectors +=
            1 + static_cast<std::size_t>(std::count(selectors.begin(), selectors.end(), ','));
    }
    return totals;
}

}  // namespace bench
