// SPDX-License-Identifier: MIT
//
// A table has three columns: names, values, and where these come from. Those that have lost have an
// "x" in the first one.
#include "StyleTable.h"

#include <espalier/dom/css/CSSStyleRule.h>
#include <espalier/dom/css/ComputedStyle.h>
#include <espalier/io/MemoryStream.h>

#include "Colors.h"
#include "Escape.h"
#include "RuleLines.h"
#include "SelectingPart.h"
#include "SpecificityParts.h"
#include "Utf8.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

namespace Tool {

namespace {

using Dom::CSS::DeclaredValue;
using Dom::CSS::StyleExplanation;

// A longer value leaves its column, so that the others stay together.
constexpr std::size_t kWidest = 40;
constexpr std::string_view kGap = "  ";
constexpr std::string_view kLoserMark = "x ";

std::size_t WidthOf(std::string_view text) {
    return static_cast<std::size_t>(
        std::count_if(text.begin(), text.end(), [](char byte) { return !IsContinuation(byte); }));
}

void Pad(Output& out, std::size_t width, std::size_t column) {
    for (; width < column; ++width)
        out.Write(' ');
}

// Returns the last step of a path.
std::string_view LastOf(std::string_view path) { return path.substr(path.rfind('/') + 1); }

}  // namespace

StyleTable::StyleTable(const SheetNames& names, Look look)
    : names_(names), look_(look), scratch_(std::make_unique<Output>()) {}

std::string StyleTable::OneLine(std::string_view text) {
    IO::MemoryStream line;
    scratch_->SetTarget(&line);
    WriteCssLine(*scratch_, text);
    scratch_->Flush();
    scratch_->SetTarget(nullptr);
    std::string result(static_cast<std::size_t>(line.Length()), ' ');
    line.SetPosition(0);
    line.Read(reinterpret_cast<unsigned char*>(result.data()), 0, static_cast<int>(result.size()));
    return result;
}

std::string StyleTable::WhereOf(const DeclaredValue& declared, const Target& target) {
    std::string where;
    if (declared.source == DeclaredValue::Source::StyleAttribute) {
        where = "style attribute";
    } else if (declared.source == DeclaredValue::Source::OverrideStyle) {
        where = "override style";
    } else {
        where = OneLine(names_.NameOf(declared.sheet));
        const bool hasLine = declared.origin != Dom::CSS::CSSRule::UserAgent;
        if (hasLine && declared.place.line > 0) where += fmt::format(":{}", declared.place.line);
        const SpecificityParts parts(declared.specificity);
        const std::string_view selector =
            SelectingPart(declared.rule->SelectorText().view(), target.element, target.pseudo);
        where += fmt::format("  {}  ({},{},{})", OneLine(selector), parts.ids, parts.classes,
                             parts.elements);
    }
    return declared.important ? where + "  !important" : where;
}

StyleTable::Line StyleTable::LineOf(const StyleRow& row, const Target& target) {
    const StyleExplanation& explanation = row.explanation;
    Line line{OneLine(row.property), OneLine(explanation.value.view()), {}};
    switch (explanation.kind) {
    case StyleExplanation::Kind::Inherited:
        line.where = fmt::format("inherited from {}", OneLine(LastOf(row.from)));
        break;
    case StyleExplanation::Kind::Initial:
        line.where = explanation.value == Dom::CSS::ComputedStyle().Value(row.property)
                         ? "initial"
                         : "initial, adjusted";
        break;
    case StyleExplanation::Kind::Declared: break;
    }
    if (explanation.declarations.empty()) return line;
    if (!line.where.empty()) line.where += ", ";
    line.where += WhereOf(explanation.declarations.front(), target);
    return line;
}

// The property is told where it is another one: a shorthand.
StyleTable::Line StyleTable::LoserOf(const StyleRow& row, const DeclaredValue& declared,
                                     const Target& target) {
    std::string value = OneLine(declared.value.view());
    if (declared.property != row.property) {
        value = fmt::format("{}: {}", OneLine(declared.property.view()), value);
    }
    return {{}, std::move(value), WhereOf(declared, target)};
}

void StyleTable::Write(Output& out, const StyledElement& styled) {
    std::vector<Line> lines;
    for (const StyleRow& row : styled.rows) {
        const Dom::Element* const parent = row.from.empty() ? nullptr : row.explanation.element;
        const Target target =
            parent != nullptr ? Target{*parent, {}} : Target{*styled.element, styled.pseudo};
        lines.push_back(LineOf(row, target));
        const auto& declarations = row.explanation.declarations;
        for (std::size_t i = 1; look_.hasLosers && i < declarations.size(); ++i)
            lines.push_back(LoserOf(row, declarations[i], target));
    }
    std::size_t nameWidth = 0;
    std::size_t valueWidth = 0;
    for (const Line& line : lines) {
        nameWidth = std::max(nameWidth, WidthOf(line.name));
        const std::size_t width = WidthOf(line.value);
        if (width <= kWidest) valueWidth = std::max(valueWidth, width);
    }
    WriteHeading(out, styled);
    for (const Line& line : lines)
        WriteLine(out, line, nameWidth, valueWidth);
}

void StyleTable::WriteHeading(Output& out, const StyledElement& styled) {
    WriteColored(out, kNameColor, styled.path);
    for (const Dom::AttributeView attribute : styled.element->AttributeViews()) {
        const bool isShown = attribute.Name() == "id" || attribute.Name() == "class";
        if (!isShown) continue;
        out.Write(' ');
        out.Write(attribute.Name());
        out.Write('=');
        WriteQuoted(out, attribute.Value());
    }
    out.Write('\n');
}

void StyleTable::WriteLine(Output& out, const Line& line, std::size_t nameWidth,
                           std::size_t valueWidth) {
    const bool isLoser = line.name.empty();
    out.Write(kGap);
    if (isLoser) {
        Pad(out, kLoserMark.size(), nameWidth + kGap.size());
        if (look_.isColored) out.Write(kFaintColor);
        out.Write(kLoserMark);
        out.Write(line.value);
    } else {
        WriteColored(out, kTypeColor, line.name);
        Pad(out, WidthOf(line.name), nameWidth + kGap.size());
        WriteColored(out, kValueColor, line.value);
    }
    Pad(out, WidthOf(line.value), valueWidth);
    out.Write(kGap);
    out.Write(line.where);
    if (isLoser && look_.isColored) out.Write(kNoColor);
    out.Write('\n');
}

void StyleTable::WriteColored(Output& out, std::string_view color, std::string_view text) {
    if (look_.isColored) out.Write(color);
    out.Write(text);
    if (look_.isColored) out.Write(kNoColor);
}

}  // namespace Tool
