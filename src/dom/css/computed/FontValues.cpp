// SPDX-License-Identifier: MIT
#include "dom/css/AsciiCase.h"
#include "dom/css/ListPieces.h"
#include "dom/css/NumberText.h"
#include "dom/css/QuotedText.h"
#include "dom/css/TextCursor.h"
#include "dom/css/computed/Measure.h"
#include "dom/css/computed/ValueKinds.h"

#include <algorithm>

namespace Dom::CSS::detail {

namespace {

// CSS Fonts Level 4 section 2.1.2 for the generic families that browsers know.
constexpr std::string_view kGenericFamilies[] = {"serif",     "sans-serif", "cursive", "fantasy",
                                                 "monospace", "system-ui",  "math"};
constexpr std::string_view kWideKeywords[] = {"inherit", "initial", "unset",
                                              "default", "revert",  "revert-layer"};

bool IsOneOf(std::string_view name, std::span<const std::string_view> names) {
    return std::ranges::any_of(
        names, [name](std::string_view known) { return EqualIgnoringCase(name, known); });
}

bool IsIdent(std::string_view text) {
    TextCursor cursor(text);
    astring buffer;
    return !ReadIdent(cursor, buffer).empty() && cursor.at == cursor.end &&
           text.find('\\') == text.npos;
}

// Returns the name of a family as browsers print it: without quotes when it may do without them.
astring NameText(std::string_view name) {
    const bool isPlain =
        IsIdent(name) && !IsOneOf(name, kGenericFamilies) && !IsOneOf(name, kWideKeywords);
    return isPlain ? astring(name) : Quoted(name);
}

// Reads a string, or identifiers, which make one name (section 2.1.1).
std::optional<astring> FamilyName(std::string_view text) {
    TextCursor cursor(text);
    astring buffer;
    if (const std::optional<std::string_view> string = ReadString(cursor, buffer)) {
        if (cursor.at != cursor.end) return {};
        return NameText(*string);
    }
    astring name;
    unsigned count = 0;
    do {
        const std::string_view ident = ReadIdent(cursor, buffer);
        if (ident.empty()) return {};
        if (count++ > 0) name += ' ';
        name += ident;
    } while (SkipBlanks(cursor));
    if (cursor.at != cursor.end) return {};
    if (count == 1 && IsOneOf(name, kWideKeywords)) return {};
    if (count == 1 && IsOneOf(name, kGenericFamilies)) {
        std::ranges::transform(name, name.begin(), ToLower);
        return name;
    }
    return NameText(name);
}

std::optional<astring> FontFamily(std::string_view value) {
    astring text;
    ListPieces names(value, ',');
    for (std::string_view piece; names.Next(piece);) {
        const std::optional<astring> name = FamilyName(piece);
        if (!name) return {};
        if (!text.empty()) text += ", ";
        text += *name;
    }
    if (value.back() == ',') return {};
    return text;
}

std::optional<astring> PixelText(double pixels) {
    astring text;
    AppendShort(text, pixels);
    text += "px";
    return text;
}

// CSS Fonts Level 4 section 2.5.
std::optional<astring> FontSize(std::string_view value, const ComputingContext& context) {
    constexpr double kStep = 1.2;
    constexpr struct {
        std::string_view name;
        double size;  // when "medium" is 16
    } kSizes[] = {{"xx-small", 9}, {"x-small", 10}, {"small", 13},    {"medium", 16},
                  {"large", 18},   {"x-large", 24}, {"xx-large", 32}, {"xxx-large", 48}};
    constexpr double kMedium = 16;
    for (const auto& size : kSizes) {
        if (EqualIgnoringCase(value, size.name))
            return PixelText(size.size * context.initialFontSize / kMedium);
    }
    if (EqualIgnoringCase(value, "larger")) return PixelText(context.parentFontSize * kStep);
    if (EqualIgnoringCase(value, "smaller")) return PixelText(context.parentFontSize / kStep);
    if (EqualIgnoringCase(value, "math")) return PixelText(context.parentFontSize);
    MeasureBasis basis(context);
    basis.fontSize = context.parentFontSize;
    basis.whole = context.parentFontSize;
    const std::optional<Measure> size = ReadMeasure(value, basis);
    if (!size || !size->IsLength() || (size->value < 0 && !size->isCalculated)) return {};
    return PixelText(std::max(0.0, size->value));
}

// Section 2.3.
std::optional<astring> FontStretch(std::string_view value, const ComputingContext& context) {
    constexpr struct {
        std::string_view name;
        std::string_view stretch;
    } kStretches[] = {
        {"normal", "100%"},   {"ultra-condensed", "50%"},  {"extra-condensed", "62.5%"},
        {"condensed", "75%"}, {"semi-condensed", "87.5%"}, {"semi-expanded", "112.5%"},
        {"expanded", "125%"}, {"extra-expanded", "150%"},  {"ultra-expanded", "200%"}};
    for (const auto& stretch : kStretches) {
        if (EqualIgnoringCase(value, stretch.name)) return astring(stretch.stretch);
    }
    const std::optional<Measure> stretch = ReadMeasure(value, MeasureBasis(context));
    if (!stretch || !stretch->IsPercentage()) return {};
    return ComputedLength(value, context, {.hasPercentages = true});
}

// Section 2.4: "oblique" may have an angle; one of 0 is upright.
std::optional<astring> FontStyle(std::string_view value, const ComputingContext& context) {
    constexpr double kMostAngle = 90;
    ListPieces pieces(value, ' ');
    std::string_view piece;
    if (!pieces.Next(piece) || !EqualIgnoringCase(piece, "oblique") || !pieces.Next(piece))
        return {};
    const std::optional<Measure> angle = ReadMeasure(piece, MeasureBasis(context));
    if (!angle || angle->type != Measure::Type::Angle || pieces.Next(piece)) return {};
    if (angle->value < -kMostAngle || angle->value > kMostAngle) return {};
    if (angle->value == 0) return astring("normal");
    astring text = "oblique ";
    AppendMeasure(text, *angle);
    return text;
}

// Section 2.2.1, the table of relative weights.
double RelativeWeight(double weight, bool isBolder) {
    if (isBolder) return weight < 350 ? 400 : weight < 550 ? 700 : std::max(weight, 900.0);
    return weight < 550 ? std::min(weight, 100.0) : weight < 750 ? 400 : 700;
}

std::optional<astring> FontWeight(std::string_view value, const ComputingContext& context) {
    constexpr double kLeast = 1;
    constexpr double kMost = 1000;
    if (EqualIgnoringCase(value, "normal")) return astring("400");
    if (EqualIgnoringCase(value, "bold")) return astring("700");
    const bool isBolder = EqualIgnoringCase(value, "bolder");
    double weight = 400;
    if (isBolder || EqualIgnoringCase(value, "lighter")) {
        std::string_view parent = context.parentWeight;
        weight = RelativeWeight(TakeDecimal(parent).value_or(weight), isBolder);
    } else {
        const std::optional<Measure> number = ReadMeasure(value, MeasureBasis(context));
        if (!number || number->type != Measure::Type::Number) return {};
        weight = std::clamp(number->value, kLeast, kMost);
        if (weight != number->value && !number->isCalculated) return {};
    }
    astring text;
    AppendShort(text, weight);
    return text;
}

// CSS 2.1 section 10.8.1: a number stays one, so that elements that inherit it multiply it by the
// size of their own font.
std::optional<astring> LineHeight(std::string_view value, const ComputingContext& context) {
    MeasureBasis basis(context);
    basis.whole = context.fontSize;
    const std::optional<Measure> height = ReadMeasure(value, basis);
    if (!height || (height->value < 0 && !height->isCalculated)) return {};
    const bool isNumber = height->type == Measure::Type::Number;
    if (!isNumber && height->type != Measure::Type::Length) return {};
    astring text;
    AppendShort(text, std::max(0.0, height->value));
    if (!isNumber) text += "px";
    return text;
}

}  // namespace

std::optional<astring> ComputedFontValue(const PropertyInfo& property, std::string_view value,
                                         const ComputingContext& context) {
    switch (property.kind) {
    case ValueKind::FontFamily: return FontFamily(value);
    case ValueKind::FontSize: return FontSize(value, context);
    case ValueKind::FontStretch: return FontStretch(value, context);
    case ValueKind::FontStyle: return FontStyle(value, context);
    case ValueKind::FontWeight: return FontWeight(value, context);
    case ValueKind::LineHeight: return LineHeight(value, context);
    default: return {};
    }
}

}  // namespace Dom::CSS::detail
