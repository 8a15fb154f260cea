// SPDX-License-Identifier: MIT
#include "RuleLines.h"

#include "SpecificityParts.h"
#include "Utf8.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>

namespace Tool {

namespace {

constexpr std::string_view kBreaks = "\n\r\f";
constexpr std::string_view kSpace = " \t\n\r\f";
constexpr std::size_t kIndent = 4;

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

void WriteRuleLines(Output& out, std::string_view file, const RuleParts& rule, std::size_t depth) {
    if (!file.empty()) {
        out.Write(file);
        out.Write(": ");
    }
    const std::string indent(depth * kIndent, ' ');
    out.Write(indent);
    if (rule.isStyleRule) {
        const SpecificityParts parts(rule.specificity);
        out.Write(fmt::format("{},{},{} ", parts.ids, parts.classes, parts.elements));
    } else {
        out.Write("- ");
    }
    WriteCssLine(out, rule.head);
    out.Write('\n');
    if (rule.style == nullptr) return;
    for (const Dom::CSS::CSSPropertyImpl* const property : rule.style->Properties()) {
        out.Write(indent);
        out.Write(std::string(kIndent, ' '));
        WriteCssLine(out, property->CssText());
        out.Write('\n');
    }
}

}  // namespace Tool
