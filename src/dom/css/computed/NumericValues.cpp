// SPDX-License-Identifier: MIT
#include "dom/css/AsciiCase.h"
#include "dom/css/computed/Measure.h"
#include "dom/css/computed/ValueKinds.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace Dom::CSS::detail {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();

// Tells whether what stands there is outside of a range. What is calculated never is: it becomes
// the nearest that is in (CSS Values Level 3 section 8.1.4).
bool IsBelow(const Measure& measure, double least) {
    const double number = measure.IsPercentage() ? measure.percent : measure.value;
    return !measure.isCalculated && number < least;
}

std::optional<astring> LineWidth(std::string_view value, const ComputingContext& context) {
    if (EqualIgnoringCase(value, "thin")) return astring("1px");
    if (EqualIgnoringCase(value, "medium")) return astring("3px");
    if (EqualIgnoringCase(value, "thick")) return astring("5px");
    std::optional<Measure> width = ReadMeasure(value, MeasureBasis(context));
    if (!width || !width->IsLength() || IsBelow(*width, 0)) return {};
    // CSS Backgrounds Level 4 section 2.3, "snapped as a border width".
    if (width->value > 0) width->value = std::max(1.0, std::floor(width->value));
    width->value = std::max(0.0, width->value);
    astring text;
    AppendLength(text, *width);
    return text;
}

std::optional<astring> Offset(std::string_view value, const ComputingContext& context) {
    std::optional<Measure> offset = ReadMeasure(value, MeasureBasis(context));
    if (!offset || !offset->IsLength()) return {};
    const double pixels = std::fabs(offset->value);
    if (pixels > 0) offset->value = std::copysign(std::max(1.0, std::floor(pixels)), offset->value);
    astring text;
    AppendLength(text, *offset);
    return text;
}

// CSS 2.1 section 16.4: "normal" is 0, and 0 is what the property has at first.
std::optional<astring> Spacing(const PropertyInfo& property, std::string_view value,
                               const ComputingContext& context) {
    if (EqualIgnoringCase(value, "normal")) return astring(property.initial);
    const std::optional<Measure> space = ReadMeasure(value, MeasureBasis(context));
    if (!space || !space->IsLengthOrPercentage()) return {};
    const bool isNone = space->value == 0 && !space->hasPercent && space->rest.empty();
    if (isNone) return astring(property.initial);
    astring text;
    AppendLength(text, *space);
    return text;
}

std::optional<astring> NumberFrom(std::string_view value, const ComputingContext& context,
                                  double least, double most, bool hasPercentages) {
    const std::optional<Measure> number = ReadMeasure(value, MeasureBasis(context));
    if (!number) return {};
    const bool isPercentage = hasPercentages && number->IsPercentage();
    if (!isPercentage && number->type != Measure::Type::Number) return {};
    // Where there is a most, what is beyond the range is in it when computed.
    if (most == kInfinity && IsBelow(*number, least)) return {};
    astring text;
    AppendShort(text,
                std::clamp(isPercentage ? number->percent / 100 : number->value, least, most));
    return text;
}

std::optional<astring> LengthOrNumber(std::string_view value, const ComputingContext& context) {
    if (auto number = NumberFrom(value, context, 0, kInfinity, false)) return number;
    return ComputedLength(value, context, {});
}

std::optional<astring> IntegerFrom(std::string_view value, const ComputingContext& context,
                                   double least) {
    using Limits = std::numeric_limits<int>;
    const std::optional<Measure> number = ReadMeasure(value, MeasureBasis(context));
    if (!number || number->type != Measure::Type::Number) return {};
    if (!number->isCalculated && !number->isInteger) return {};
    if (IsBelow(*number, least)) return {};
    constexpr double kHalf = 0.5;
    const double rounded = std::isnan(number->value) ? 0 : std::floor(number->value + kHalf);
    const auto integer =
        static_cast<int>(std::clamp(rounded, std::max(least, static_cast<double>(Limits::min())),
                                    static_cast<double>(Limits::max())));
    char buffer[16];
    const auto result = std::to_chars(std::begin(buffer), std::end(buffer), integer);
    return astring(
        std::string_view(buffer, static_cast<std::size_t>(result.ptr - std::begin(buffer))));
}

}  // namespace

std::optional<astring> ComputedLength(std::string_view value, const ComputingContext& context,
                                      LengthRange range) {
    std::optional<Measure> length = ReadMeasure(value, MeasureBasis(context));
    if (!length) return {};
    const bool isNumber = range.hasNumbers && length->type == Measure::Type::Number;
    if (!isNumber && !length->IsLengthOrPercentage()) return {};
    const bool hasPercentage = length->hasPercent || !length->rest.empty();
    if (hasPercentage && !range.hasPercentages) return {};
    if (!range.hasNegatives) {
        if (IsBelow(*length, 0)) return {};
        if (!hasPercentage) length->value = std::max(0.0, length->value);
        if (length->IsPercentage()) length->percent = std::max(0.0, length->percent);
    }
    astring text;
    AppendLength(text, *length);
    return text;
}

std::optional<astring> ComputedNumeric(const PropertyInfo& property, std::string_view value,
                                       const ComputingContext& context) {
    switch (property.kind) {
    case ValueKind::Length: return ComputedLength(value, context, {.hasNegatives = true});
    case ValueKind::PositiveLength: return ComputedLength(value, context, {});
    case ValueKind::LengthPercentage:
        return ComputedLength(value, context, {.hasPercentages = true, .hasNegatives = true});
    case ValueKind::PositiveLengthPercentage:
        return ComputedLength(value, context, {.hasPercentages = true});
    case ValueKind::NumericLength: return ComputedLength(value, context, {true, true, true});
    case ValueKind::PositiveNumericLength:
        return ComputedLength(value, context, {.hasPercentages = true, .hasNumbers = true});
    case ValueKind::LengthOrNumber: return LengthOrNumber(value, context);
    case ValueKind::LineWidth: return LineWidth(value, context);
    case ValueKind::Offset: return Offset(value, context);
    case ValueKind::Spacing: return Spacing(property, value, context);
    case ValueKind::Number: return NumberFrom(value, context, -kInfinity, kInfinity, false);
    case ValueKind::PositiveNumber: return NumberFrom(value, context, 0, kInfinity, false);
    case ValueKind::Alpha: return NumberFrom(value, context, 0, 1, true);
    case ValueKind::Factor: return NumberFrom(value, context, 0, kInfinity, true);
    case ValueKind::Integer: return IntegerFrom(value, context, -kInfinity);
    case ValueKind::PositiveInteger: return IntegerFrom(value, context, 1);
    default: return {};
    }
}

}  // namespace Dom::CSS::detail
