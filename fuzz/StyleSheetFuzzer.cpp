// SPDX-License-Identifier: MIT
//
// Reads arbitrary bytes as a style sheet with ParseStyleSheet(). The first byte chooses the
// encodings that are named; the rest is the sheet. Nothing throws; rules and what is left out have
// places in the order of the text; declarations have places within their rules.

#include <espalier/css.h>

#include "CssInput.h"
#include "ReaderStory.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <tuple>
#include <vector>

namespace {

using Dom::CSS::CSSRule;
using Dom::CSS::CSSRuleList;
using Dom::CSS::CSSStyleDeclaration;
using Dom::CSS::CSSStyleRule;
using Dom::CSS::DroppedText;
using Dom::CSS::ParseStyleSheet;
using Dom::CSS::SourcePlace;
using fuzz::Require;

constexpr std::string_view kEncodings[] = {"",       "utf-8", "utf-16", "utf-16be",
                                           "latin1", "gbk",   "euc-kr", "windows-1257"};

bool IsBefore(SourcePlace a, SourcePlace b) {
    return std::tie(a.line, a.column) < std::tie(b.line, b.column);
}

void CheckDeclarations(const CSSStyleDeclaration& style, SourcePlace rule) {
    // Each place is looked up anew; the first and the last are enough.
    for (const unsigned index : {0U, style.Length() - 1}) {
        if (style.Length() == 0) return;
        const SourcePlace place = PlaceOf(style, index);
        Require(place == SourcePlace() || IsBefore(rule, place));
        Require(place != SourcePlace());
    }
}

void CheckStyle(const CSSStyleRule& rule) {
    Require(rule.Specificity() >= 0 && !rule.SelectorText().empty());
    const int specificity = Dom::CSS::CSS_SPECIFICITY(rule.SelectorText().c_str());
    Require(specificity < 0 || specificity == rule.Specificity());
    CheckDeclarations(rule.Style(), rule.Place());
}

// Returns the place of the last rule.
SourcePlace CheckRules(const CSSRuleList& rules, SourcePlace last, const CSSRule* parent) {
    for (CSSRule* const rule : rules) {
        Require(IsBefore(last, rule->Place()) && rule->ParentRule() == parent);
        last = rule->Place();
        Require(!rule->CssText().empty());
        if (rule->Type() == CSSRule::STYLE_RULE) CheckStyle(static_cast<CSSStyleRule&>(*rule));
        if (void* const group = rule->QueryInterface("Dom::CSS::CSSGroupingRule")) {
            last =
                CheckRules(static_cast<Dom::CSS::CSSGroupingRule*>(group)->CssRules(), last, rule);
        }
    }
    return last;
}

void Compare(const CSSRuleList& a, const CSSRuleList& b) {
    Require(a.Length() == b.Length());
    for (unsigned i = 0; i < a.Length(); ++i)
        Require(a.Item(i)->CssText() == b.Item(i)->CssText());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::CssInput input(data, size);
    const unsigned choice = input.Byte();
    const std::span<const unsigned char> bytes(data + (size > 0 ? 1 : 0), size > 0 ? size - 1 : 0);
    std::vector<DroppedText> dropped;
    const auto sheet = ParseStyleSheet(bytes, {.protocolEncoding = kEncodings[choice % 8],
                                               .environmentEncoding = kEncodings[choice / 8 % 8],
                                               .dropped = &dropped});
    CheckRules(sheet->CssRules(), SourcePlace(), nullptr);
    SourcePlace last;
    for (const DroppedText& drop : dropped) {
        Require(!IsBefore(drop.place, last) && !drop.reason.empty() && drop.text.length() <= 80);
        last = drop.place;
    }
    const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    const auto asText = ParseStyleSheet(text);
    CheckRules(asText->CssRules(), SourcePlace(), nullptr);
    if (text.find_first_not_of("\t\n !\"#$%&'()*+,-./0123456789:;<=>?@[\\]^_`{|}~"
                               "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ") ==
            std::string_view::npos &&
        choice == 0) {
        Compare(sheet->CssRules(), asText->CssRules());
    }
    return 0;
}
