// SPDX-License-Identifier: MIT
#include "dom/css/computed/Measure.h"

#include "dom/css/AsciiCase.h"
#include "dom/css/CssCharacters.h"
#include "dom/css/NumberText.h"
#include "dom/css/TextCursor.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

// Sums are computed while they are read:
//
//     sum      ::= product (space ('+' | '-') space product)*
//     product  ::= operand (('*' | '/') operand)*
//     operand  ::= number | constant | '(' sum ')' | function '(' sum (',' sum)* ')'
//
// Only a minimum or maximum of lengths and percentages waits for a layout; it stays a text.

namespace Dom::CSS::detail {

namespace {

using Type = Measure::Type;

constexpr int kMostNested = 32;
// What a term that is subtracted begins with, where nothing is in front of it.
constexpr std::string_view kNegative = "-1 * ";
constexpr double kInfinity = std::numeric_limits<double>::infinity();
// The most pixels that browsers lay out; greater lengths become this.
constexpr double kMostPixels = 33554432;

struct Unit {
    std::string_view name;
    Type type;
    double factor;
};

// CSS Values Level 3 sections 5.2, 6.1 and 6.2.
constexpr Unit kUnits[] = {
    {"px", Type::Length, 1},         {"in", Type::Length, 96},
    {"cm", Type::Length, 96 / 2.54}, {"mm", Type::Length, 96 / 25.4},
    {"q", Type::Length, 96 / 101.6}, {"pt", Type::Length, 96.0 / 72},
    {"pc", Type::Length, 16},        {"deg", Type::Angle, 1},
    {"grad", Type::Angle, 0.9},      {"rad", Type::Angle, 180 / std::numbers::pi},
    {"turn", Type::Angle, 360},      {"s", Type::Time, 1},
    {"ms", Type::Time, 0.001},
};

// Returns the pixels that a unit of section 5.1 has; 0 for none of them. "ex" and "ch" are half
// the size of the font, which is what that section has for fonts that are not known.
std::optional<double> PixelsOfUnit(std::string_view unit, const MeasureBasis& basis) {
    constexpr double kPart = 0.01;
    const ComputingContext& context = basis.context;
    if (EqualIgnoringCase(unit, "em")) return basis.fontSize;
    if (EqualIgnoringCase(unit, "rem")) return context.rootFontSize;
    if (EqualIgnoringCase(unit, "ex") || EqualIgnoringCase(unit, "ch")) return basis.fontSize / 2;
    // "svh", "lvh" and "dvh" differ where the user agent has bars that come and go.
    if (unit.size() == 3 && std::string_view("sldSLD").find(unit.front()) != unit.npos) {
        unit.remove_prefix(1);
        if (ToLower(unit.front()) != 'v') return {};
    }
    if (EqualIgnoringCase(unit, "vw") || EqualIgnoringCase(unit, "vi"))
        return context.viewportWidth * kPart;
    if (EqualIgnoringCase(unit, "vh") || EqualIgnoringCase(unit, "vb"))
        return context.viewportHeight * kPart;
    if (EqualIgnoringCase(unit, "vmin"))
        return std::min(context.viewportWidth, context.viewportHeight) * kPart;
    if (EqualIgnoringCase(unit, "vmax"))
        return std::max(context.viewportWidth, context.viewportHeight) * kPart;
    return {};
}

// CSS Syntax Level 3 section 4.3.12: a sign, digits, a fraction and an exponent.
std::string_view ScanNumber(TextCursor& cursor) {
    TextCursor at = cursor;
    const auto skipDigits = [&at] {
        const char* const begin = at.at;
        while (at.IsAt(kDigit))
            ++at.at;
        return at.at != begin;
    };
    if (at.Front() == '+' || at.Front() == '-') ++at.at;
    const bool hasDigits = skipDigits();
    TextCursor behind = at;
    if (SkipCharacter(at, '.') && skipDigits()) {
        behind = at;
    } else if (!hasDigits) {
        return {};
    }
    at = behind;
    if (ToLower(at.Front()) == 'e') {
        ++at.at;
        if (at.Front() == '+' || at.Front() == '-') ++at.at;
        if (skipDigits()) behind = at;
    }
    const std::string_view number = behind.Since(cursor.at);
    cursor = behind;
    return number;
}

double ValueOf(std::string_view number) {
    if (number.front() == '+') number.remove_prefix(1);
    std::string_view rest = number;
    if (const std::optional<double> value = TakeDecimal(rest)) return *value;
    // Too great, or too small for anything but 0: the sign of the exponent tells.
    const bool isSmall = number.find("e-") != number.npos || number.find("E-") != number.npos;
    if (isSmall) return 0;
    return number.front() == '-' ? -kInfinity : kInfinity;
}

void AppendSum(astring& text, const Measure& sum) {
    const bool hasPixels = sum.value != 0 || !(sum.hasPercent || !sum.rest.empty());
    if (sum.hasPercent) {
        AppendShort(text, sum.percent);
        text += '%';
        if (hasPixels) text += sum.value < 0 ? " - " : " + ";
    }
    if (hasPixels) {
        Measure only;
        only.type = sum.type;
        only.value = sum.hasPercent ? std::fabs(sum.value) : sum.value;
        AppendMeasure(text, only);
    }
    if (sum.rest.empty()) return;
    std::string_view rest = sum.rest;
    const bool isNegative = rest.starts_with(kNegative);
    if (sum.hasPercent || hasPixels) {
        if (isNegative) rest.remove_prefix(kNegative.size());
        text += isNegative ? " - " : " + ";
    }
    text += rest;
}

// Returns what waits for a layout as one operand.
astring AsOperand(const Measure& measure) {
    return measure.hasTerms ? "(" + measure.rest + ")" : measure.rest;
}

void Multiply(Measure& measure, double factor) {
    measure.value *= factor;
    measure.percent *= factor;
    if (measure.rest.empty()) return;
    astring product;
    AppendShort(product, factor);
    product += " * ";
    product += AsOperand(measure);
    measure.rest = product;
    measure.hasTerms = true;
}

enum class Sign { Plus, Minus };

bool Add(Measure& sum, const Measure& added, Sign sign) {
    if (sum.type != added.type) return false;
    const double factor = sign == Sign::Plus ? 1 : -1;
    sum.value += factor * added.value;
    sum.percent += factor * added.percent;
    sum.hasPercent = sum.hasPercent || added.hasPercent;
    if (added.rest.empty()) return true;
    if (!sum.rest.empty()) {
        sum.rest += sign == Sign::Plus ? " + " : " - ";
    } else if (sign == Sign::Minus) {
        sum.rest = kNegative;
    }
    sum.rest += AsOperand(added);
    sum.hasTerms = true;
    return true;
}

// Tells whether measures can be compared without a layout.
bool AreComparable(const std::vector<Measure>& measures) {
    const bool arePercentages = measures.front().hasPercent;
    return std::ranges::all_of(measures, [arePercentages](const Measure& measure) {
        return measure.rest.empty() &&
               (arePercentages ? measure.IsPercentage() : !measure.hasPercent);
    });
}

enum class Comparison { Least, Greatest, Between };

// The place of the argument that is the result.
std::size_t Chosen(const std::vector<Measure>& measures, Comparison comparison) {
    const auto number = [&measures](std::size_t index) {
        return measures[index].hasPercent ? measures[index].percent : measures[index].value;
    };
    if (comparison == Comparison::Between) {
        const std::size_t least = number(2) < number(1) ? 2 : 1;
        return number(least) < number(0) ? 0 : least;
    }
    std::size_t chosen = 0;
    for (std::size_t i = 1; i < measures.size(); ++i) {
        if (comparison == Comparison::Least ? number(i) < number(chosen)
                                            : number(i) > number(chosen)) {
            chosen = i;
        }
    }
    return chosen;
}

class MeasureReader {
public:
    MeasureReader(std::string_view text, const MeasureBasis& basis)
        : cursor_(text), basis_(basis) {}

    std::optional<Measure> Read() {
        Measure measure;
        if (!ReadOperand(measure) || cursor_.at != cursor_.end) return {};
        return measure;
    }

private:
    bool ReadSum(Measure& sum);
    bool ReadProduct(Measure& product);
    bool ReadOperand(Measure& measure);
    bool ReadDimension(Measure& measure, std::string_view number);
    bool ReadConstant(Measure& measure, std::string_view name) const;
    bool ReadInParentheses(Measure& measure);
    bool ReadFunction(Measure& measure, std::string_view name);
    bool ReadComparison(Measure& measure, std::string_view name, Comparison comparison);
    bool ReadUnit(Measure& measure, std::string_view unit) const;

    TextCursor cursor_;
    const MeasureBasis& basis_;
    int depth_ = 0;  // of parentheses
};

bool MeasureReader::ReadSum(Measure& sum) {
    if (!ReadProduct(sum)) return false;
    bool isFirst = true;
    while (true) {
        TextCursor ahead = cursor_;
        if (!SkipBlanks(ahead) || (ahead.Front() != '+' && ahead.Front() != '-')) return true;
        const bool isDifference = ahead.Front() == '-';
        ++ahead.at;
        if (!SkipBlanks(ahead)) return false;
        cursor_ = ahead;
        Measure product;
        if (!ReadProduct(product)) return false;
        if (isFirst) sum.rest = AsOperand(sum);
        isFirst = false;
        if (!Add(sum, product, isDifference ? Sign::Minus : Sign::Plus)) return false;
    }
}

bool MeasureReader::ReadProduct(Measure& product) {
    if (!ReadOperand(product)) return false;
    while (true) {
        TextCursor ahead = cursor_;
        SkipBlanks(ahead);
        const char sign = ahead.Front();
        if (sign != '*' && sign != '/') return true;
        ++ahead.at;
        SkipBlanks(ahead);
        cursor_ = ahead;
        Measure operand;
        if (!ReadOperand(operand)) return false;
        if (operand.type == Type::Number) {
            Multiply(product, sign == '*' ? operand.value : 1 / operand.value);
        } else if (product.type == Type::Number && sign == '*') {
            const double factor = product.value;
            product = operand;
            Multiply(product, factor);
        } else {
            return false;
        }
    }
}

bool MeasureReader::ReadOperand(Measure& measure) {
    if (const std::string_view number = ScanNumber(cursor_); !number.empty())
        return ReadDimension(measure, number);
    const bool isNegative = SkipText(cursor_, "-infinity");
    if (isNegative) measure.value = -kInfinity;
    if (isNegative) return depth_ > 0;
    const char* const begin = cursor_.at;
    cursor_.at = BehindName(cursor_);
    const std::string_view name = cursor_.Since(begin);
    if (cursor_.Front() != '(') return ReadConstant(measure, name);
    if (name.empty() && depth_ == 0) return false;
    if (depth_ == kMostNested) return false;
    ++depth_;
    ++cursor_.at;
    SkipBlanks(cursor_);
    const bool isRead = name.empty() ? ReadInParentheses(measure) : ReadFunction(measure, name);
    --depth_;
    measure.isCalculated = true;
    measure.isInteger = false;
    return isRead;
}

bool MeasureReader::ReadDimension(Measure& measure, std::string_view number) {
    measure.value = ValueOf(number);
    if (SkipCharacter(cursor_, '%')) {
        measure.type = Type::Length;
        if (basis_.whole) {
            measure.value *= *basis_.whole / 100;
        } else {
            measure.hasPercent = true;
            measure.percent = measure.value;
            measure.value = 0;
        }
        return true;
    }
    const char* const begin = cursor_.at;
    cursor_.at = BehindName(cursor_);
    if (cursor_.at != begin) return ReadUnit(measure, cursor_.Since(begin));
    measure.isInteger = number.find_first_of(".eE") == number.npos;
    return true;
}

bool MeasureReader::ReadUnit(Measure& measure, std::string_view unit) const {
    for (const Unit& known : kUnits) {
        if (!EqualIgnoringCase(unit, known.name)) continue;
        measure.type = known.type;
        measure.value *= known.factor;
        return true;
    }
    const std::optional<double> pixels = PixelsOfUnit(unit, basis_);
    measure.type = Type::Length;
    measure.value *= pixels.value_or(0);
    return pixels.has_value();
}

// CSS Values Level 4 section 10.7.1.
bool MeasureReader::ReadConstant(Measure& measure, std::string_view name) const {
    if (depth_ == 0) return false;
    measure.isCalculated = true;
    if (EqualIgnoringCase(name, "pi")) {
        measure.value = std::numbers::pi;
    } else if (EqualIgnoringCase(name, "e")) {
        measure.value = std::numbers::e;
    } else if (EqualIgnoringCase(name, "infinity")) {
        measure.value = kInfinity;
    } else {
        return false;
    }
    return true;
}

bool MeasureReader::ReadInParentheses(Measure& measure) {
    return ReadSum(measure) && SkipClosing(cursor_);
}

bool MeasureReader::ReadFunction(Measure& measure, std::string_view name) {
    if (EqualIgnoringCase(name, "calc") || EqualIgnoringCase(name, "-webkit-calc"))
        return ReadInParentheses(measure);
    if (EqualIgnoringCase(name, "min")) return ReadComparison(measure, "min", Comparison::Least);
    if (EqualIgnoringCase(name, "max")) return ReadComparison(measure, "max", Comparison::Greatest);
    if (EqualIgnoringCase(name, "clamp"))
        return ReadComparison(measure, "clamp", Comparison::Between);
    return false;
}

bool MeasureReader::ReadComparison(Measure& measure, std::string_view name, Comparison comparison) {
    constexpr std::size_t kBounds = 3;
    std::vector<Measure> arguments;
    do {
        if (!ReadSum(arguments.emplace_back())) return false;
        if (arguments.back().type != arguments.front().type) return false;
    } while (SkipComma(cursor_));
    if (!SkipClosing(cursor_)) return false;
    if (comparison == Comparison::Between && arguments.size() != kBounds) return false;
    if (AreComparable(arguments)) {
        measure = arguments[Chosen(arguments, comparison)];
        return true;
    }
    measure.type = Type::Length;
    measure.rest = name;
    char separator = '(';
    for (const Measure& argument : arguments) {
        measure.rest += separator;
        if (separator == ',') measure.rest += ' ';
        AppendSum(measure.rest, argument);
        separator = ',';
    }
    measure.rest += ')';
    return true;
}

}  // namespace

std::optional<Measure> ReadMeasure(std::string_view text, const MeasureBasis& basis) {
    return MeasureReader(text, basis).Read();
}

Measure Complement(const Measure& length) {
    constexpr double kWhole = 100;
    Measure complement;
    complement.type = Type::Length;
    complement.hasPercent = true;
    complement.percent = kWhole;
    Measure subtracted = length;
    subtracted.type = Type::Length;
    Add(complement, subtracted, Sign::Minus);
    return complement;
}

std::string_view NumberInFront(std::string_view text) {
    TextCursor cursor(text);
    if (ScanNumber(cursor).empty()) return {};
    if (!SkipCharacter(cursor, '%')) cursor.at = BehindName(cursor);
    return cursor.Since(text.data());
}

void AppendShort(astring& text, double number) {
    if (std::isnan(number)) number = 0;
    constexpr double kMost = std::numeric_limits<float>::max();
    const auto rounded = static_cast<float>(std::clamp(number, -kMost, kMost));
    AppendNumber(text, rounded == 0 ? 0 : rounded);
}

void AppendMeasure(astring& text, const Measure& measure) {
    constexpr std::string_view kUnitOfType[] = {"", "px", "deg", "s"};
    const bool isLength = measure.type == Type::Length;
    AppendShort(text,
                isLength ? std::clamp(measure.value, -kMostPixels, kMostPixels) : measure.value);
    text += kUnitOfType[static_cast<unsigned>(measure.type)];
}

void AppendLength(astring& text, const Measure& measure) {
    if (!measure.hasPercent && measure.rest.empty()) {
        Measure length;
        length.type = Type::Length;
        length.value = measure.value;
        AppendMeasure(text, length);
        return;
    }
    const bool isOne = measure.rest.empty()
                           ? measure.value == 0
                           : measure.value == 0 && !measure.hasPercent && !measure.hasTerms;
    if (!isOne) text += "calc(";
    AppendSum(text, measure);
    if (!isOne) text += ')';
}

}  // namespace Dom::CSS::detail
