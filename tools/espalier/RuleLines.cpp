// SPDX-License-Identifier: MIT
#include "RuleLines.h"

#include <espalier/dom/css/CSSStyleRule.h>

#include "SpecificityParts.h"
#include "Utf8.h"

#include <fmt/format.h>

#include <algorithm>

namespace Tool {

namespace {

constexpr std::string_view kBreaks = "\n\r\f";
constexpr std::string_view kSpace = " \t\n\r\f";

bool IsControl(char32_t code) { return code < 0x20 || (code >= 0x7F && code < 0xA0); }

void WriteSpace(Output& out, std::string_view space) {
    const bool isBreak = space.find_first_of(kBreaks) != std::string_view::npos;
    for (std::size_t i = 0; i < (isBreak ? 1 : space.size()); ++i)
        out.Write(' ');
}

// Writes the first character of a text; returns its length.
std::size_t WriteCharacter(Output& out, std::string_view text) {
    const Utf8Character character = FirstCharacter(text);
    const std::size_t length = std::max<std::size_t>(character.length, 1);
    if (character.length > 0 && IsControl(character.code)) {
        out.Write(fmt::format("\\{:X} ", static_cast<unsigned>(character.code)));
    } else {
        out.Write(text.substr(0, length));
    }
    return length;
}

}  // namespace

void WriteCssLine(Output& out, std::string_view text) {
    while (!text.empty()) {
        const std::size_t space = std::min(text.find_first_not_of(kSpace), text.size());
        WriteSpace(out, text.substr(0, space));
        text.remove_prefix(space);
        if (!text.empty()) text.remove_prefix(WriteCharacter(out, text));
    }
}

void WriteRuleLines(Output& out, std::string_view file, const Dom::CSS::CSSRule& rule) {
    if (!file.empty()) {
        out.Write(file);
        out.Write(": ");
    }
    const auto* const style = dynamic_cast<const Dom::CSS::CSSStyleRule*>(&rule);
    if (style == nullptr) {
        out.Write("- ");
        WriteCssLine(out, rule.CssText());
        out.Write('\n');
        return;
    }
    const SpecificityParts parts(style->Specificity());
    out.Write(fmt::format("{},{},{} ", parts.ids, parts.classes, parts.elements));
    WriteCssLine(out, style->SelectorText());
    out.Write('\n');
    for (const Dom::CSS::CSSPropertyImpl* const property : style->Style().Properties()) {
        out.Write("    ");
        WriteCssLine(out, property->CssText());
        out.Write('\n');
    }
}

}  // namespace Tool
