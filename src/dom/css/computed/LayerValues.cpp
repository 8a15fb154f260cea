// SPDX-License-Identifier: MIT
#include "dom/css/computed/LayerValues.h"

#include "dom/css/AsciiCase.h"
#include "dom/css/ListPieces.h"
#include "dom/css/computed/ColorValue.h"
#include "dom/css/computed/ComponentText.h"
#include "dom/css/computed/Measure.h"
#include "dom/css/computed/ValueKinds.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace Dom::CSS::detail {

namespace {

constexpr std::string_view kImageFunctions[] = {"url",
                                                "linear-gradient",
                                                "radial-gradient",
                                                "conic-gradient",
                                                "repeating-linear-gradient",
                                                "repeating-radial-gradient",
                                                "repeating-conic-gradient",
                                                "image-set",
                                                "-webkit-image-set",
                                                "-webkit-cross-fade",
                                                "-webkit-gradient",
                                                "-webkit-linear-gradient",
                                                "-webkit-radial-gradient",
                                                "-webkit-repeating-linear-gradient",
                                                "-webkit-repeating-radial-gradient"};

// Downwards is how gradients go by themselves (CSS Images Level 3 section 3.1.1).
constexpr std::string_view kDownwards[] = {"180deg, ", "to bottom, "};

// CSS Backgrounds Level 3 section 2.6: one keyword for both axes, or two; shown as one where one
// says the same.
std::optional<astring> Repeat(const PropertyInfo& property, std::string_view layer) {
    ListPieces pieces(layer, ' ');
    std::string_view piece;
    pieces.Next(piece);
    const std::optional<std::string_view> first = ComputedKeyword(property, piece);
    if (!first) return {};
    if (!pieces.Next(piece)) return astring(*first);
    const std::optional<std::string_view> second = ComputedKeyword(property, piece);
    const auto isOfAxis = [](std::string_view keyword) { return keyword.starts_with("repeat-"); };
    if (!second || isOfAxis(*first) || isOfAxis(*second) || pieces.Next(piece)) return {};
    if (*first == *second) return astring(*first);
    if (*first == "repeat" && *second == "no-repeat") return astring("repeat-x");
    if (*first == "no-repeat" && *second == "repeat") return astring("repeat-y");
    astring text = *first;
    text += ' ';
    text += *second;
    return text;
}

// Section 2.9: one or two lengths, of which the second is "auto" when it is missing.
std::optional<astring> Size(const PropertyInfo& property, std::string_view layer,
                            const ComputingContext& context) {
    if (const auto keyword = ComputedKeyword(property, layer)) return astring(*keyword);
    std::array<astring, 2> sides{"auto", "auto"};
    std::size_t count = 0;
    ListPieces pieces(layer, ' ');
    for (std::string_view piece; pieces.Next(piece); ++count) {
        if (count == sides.size()) return {};
        if (EqualIgnoringCase(piece, "auto")) continue;
        std::optional<astring> side = ComputedLength(piece, context, {.hasPercentages = true});
        if (!side) return {};
        sides[count] = std::move(*side);
    }
    if (sides[0] == "auto" && sides[1] == "auto") return astring("auto");
    return sides[0] + " " + sides[1];
}

enum class ShadowOf { Box, Text };

// Section 6.1: two to four lengths, and in front or behind a colour and "inset"; those of text
// have three lengths at most and no "inset". The colour is printed first.
std::optional<astring> Shadow(std::string_view layer, const ComputingContext& context,
                              ShadowOf kind) {
    constexpr std::size_t kBlur = 2;
    const std::size_t most = kind == ShadowOf::Box ? 4 : 3;
    std::optional<astring> color;
    astring lengths;
    std::size_t count = 0;
    bool isInset = false;
    bool areOver = false;  // the lengths
    ListPieces pieces(layer, ' ');
    for (std::string_view piece; pieces.Next(piece);) {
        const std::optional<astring> length =
            ComputedLength(piece, context, {.hasNegatives = count != kBlur});
        if (length) {
            if (areOver || count == most) return {};
            lengths += ' ';
            lengths += *length;
            ++count;
            continue;
        }
        areOver = count > 0;
        if (kind == ShadowOf::Box && !isInset && EqualIgnoringCase(piece, "inset")) {
            isInset = true;
            continue;
        }
        if (color) return {};
        color = ComputedColor(piece, context);
        if (!color) return {};
    }
    if (count < kBlur) return {};
    for (; count < most; ++count)
        lengths += " 0px";
    astring text = color ? *color : astring(context.color);
    text += lengths;
    if (isInset) text += " inset";
    return text;
}

std::optional<astring> Time(std::string_view layer, const ComputingContext& context,
                            bool isPositive) {
    const std::optional<Measure> time = ReadMeasure(layer, MeasureBasis(context));
    if (!time || time->type != Measure::Type::Time) return {};
    if (isPositive && time->value < 0 && !time->isCalculated) return {};
    Measure computed = *time;
    if (isPositive) computed.value = std::max(0.0, computed.value);
    astring text;
    AppendMeasure(text, computed);
    return text;
}

std::optional<astring> Layer(const PropertyInfo& property, std::string_view layer,
                             const ComputingContext& context) {
    switch (property.kind) {
    case ValueKind::KeywordLayers: {
        const std::optional<std::string_view> keyword = ComputedKeyword(property, layer);
        return keyword ? std::optional(astring(*keyword)) : std::nullopt;
    }
    case ValueKind::Repeats: return Repeat(property, layer);
    case ValueKind::Images:
        if (EqualIgnoringCase(layer, "none")) return astring("none");
        return ComputedImage(layer, context);
    case ValueKind::Positions: return ComputedPosition(layer, context);
    case ValueKind::Sizes: return Size(property, layer, context);
    case ValueKind::Shadows: return Shadow(layer, context, ShadowOf::Box);
    case ValueKind::TextShadows: return Shadow(layer, context, ShadowOf::Text);
    case ValueKind::Times: return Time(layer, context, false);
    case ValueKind::PositiveTimes: return Time(layer, context, true);
    default: return {};
    }
}

}  // namespace

std::optional<astring> ComputedLayers(const PropertyInfo& property, std::string_view value,
                                      const ComputingContext& context) {
    astring text;
    ListPieces layers(value, ',');
    for (std::string_view piece; layers.Next(piece);) {
        if (piece.empty()) return {};
        const std::optional<astring> layer = Layer(property, piece, context);
        if (!layer) return {};
        if (!text.empty()) text += ", ";
        text += *layer;
    }
    return text;
}

bool IsImage(std::string_view value) {
    const std::string_view name = value.substr(0, value.find('('));
    return name.size() < value.size() &&
           std::ranges::any_of(kImageFunctions, [name](std::string_view known) {
               return EqualIgnoringCase(name, known);
           });
}

std::optional<astring> ComputedImage(std::string_view value, const ComputingContext& context) {
    ListPieces layers(value, ',');
    std::string_view layer;
    layers.Next(layer);
    if (layer != value || !IsImage(value)) return {};
    std::optional<astring> text = ComputedComponents(value, context);
    constexpr std::string_view kLinear = "linear-gradient(";
    if (!text || !text->view().starts_with(kLinear)) return text;
    for (const std::string_view direction : kDownwards) {
        if (text->view().substr(kLinear.size()).starts_with(direction))
            text->erase(kLinear.size(), direction.size());
    }
    return text;
}

}  // namespace Dom::CSS::detail
