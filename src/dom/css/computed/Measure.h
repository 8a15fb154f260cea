// SPDX-License-Identifier: MIT
#pragma once

#include <espalier/base/astring.h>

#include "dom/css/computed/ValueComputing.h"

#include <optional>
#include <string_view>

namespace Dom::CSS::detail {

/// A number and what it counts (CSS Values and Units Level 3 chapters 4 to 8): pixels, degrees or
/// seconds. What depends on percentages of an unknown length is a sum.
struct Measure {
    enum class Type { Number, Length, Angle, Time };

    Type type = Type::Number;
    double value = 0;           ///< in the unit of the type
    double percent = 0;         ///< beside that, with `hasPercent`; only of lengths
    bool hasPercent = false;    ///< a percentage is a part of it
    bool isInteger = false;     ///< it was written as an integer
    bool isCalculated = false;  ///< it was written as "calc()" or the like
    bool hasTerms = false;      ///< `rest` is no single function
    astring rest;               ///< what else is added, such as "min(10%, 20px)"

    /// Tells whether it is nothing but a percentage.
    bool IsPercentage() const { return hasPercent && value == 0 && rest.empty(); }
    /// Tells whether it may be a length or a percentage: also a 0 without a unit.
    bool IsLengthOrPercentage() const {
        return type == Type::Length || (type == Type::Number && value == 0 && !isCalculated);
    }
    /// Tells whether it may be a length.
    bool IsLength() const { return IsLengthOrPercentage() && !hasPercent; }
};

/// What lengths and percentages are relative to.
struct MeasureBasis {
    const ComputingContext& context;
    double fontSize;              ///< for "em"
    std::optional<double> whole;  ///< what 100% are, if that is known: there are none then

    explicit MeasureBasis(const ComputingContext& computing)
        : context(computing), fontSize(computing.fontSize) {}
};

/// Reads all of a text as one number, percentage or dimension, or as "calc()", "min()", "max()" or
/// "clamp()", in up to 32 of each other and of parentheses.
/// \param text without white space around it
std::optional<Measure> ReadMeasure(std::string_view text, const MeasureBasis& basis);

/// Returns what a length or a percentage leaves of 100%.
Measure Complement(const Measure& length);

/// Returns what lies in front of a text that is a number with or without a unit; empty when nothing
/// does.
std::string_view NumberInFront(std::string_view text);

/// Appends a length or a percentage as browsers print it: "1.5px", "10%", "calc(10% + 5px)".
void AppendLength(astring& text, const Measure& measure);
/// Appends a number of any type, with its unit: "px", "deg", "s" or none.
void AppendMeasure(astring& text, const Measure& measure);
/// Appends a number of at most six digits; never "-0".
void AppendShort(astring& text, double number);

}  // namespace Dom::CSS::detail
