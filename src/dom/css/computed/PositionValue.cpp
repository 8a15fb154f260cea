// SPDX-License-Identifier: MIT
#include "dom/css/AsciiCase.h"
#include "dom/css/CssCharacters.h"
#include "dom/css/ListPieces.h"
#include "dom/css/computed/LayerValues.h"
#include "dom/css/computed/Measure.h"

#include <array>
#include <cstddef>

// A position is read as its parts, of which there are four at most:
//
//     part      example   axis         measure
//     keyword   right     horizontal   100%
//     keyword   center    either       50%
//     length    10px      either       10px
//
// One part is for its axis, and the other is in the middle; two parts are for an axis each; of
// three or four, each length is the distance from the side that stands in front of it.

namespace Dom::CSS::detail {

namespace {

enum class Axis { Either, Horizontal, Vertical };

struct Part {
    Axis axis = Axis::Either;
    Measure measure;
    bool isKeyword = false;
    bool isCenter = false;
};

struct Parts {
    std::array<Part, 4> parts;
    std::size_t count = 0;
};

Measure Percentage(double percent) {
    Measure measure;
    measure.type = Measure::Type::Length;
    measure.hasPercent = true;
    measure.percent = percent;
    return measure;
}

std::optional<Part> ReadPart(std::string_view text, const ComputingContext& context) {
    constexpr struct {
        std::string_view name;
        Axis axis;
        double percent;
    } kKeywords[] = {{"left", Axis::Horizontal, 0},
                     {"right", Axis::Horizontal, 100},
                     {"top", Axis::Vertical, 0},
                     {"bottom", Axis::Vertical, 100},
                     {"center", Axis::Either, 50}};
    for (const auto& keyword : kKeywords) {
        if (!EqualIgnoringCase(text, keyword.name)) continue;
        return Part{keyword.axis, Percentage(keyword.percent), true, keyword.axis == Axis::Either};
    }
    std::optional<Measure> measure = ReadMeasure(text, MeasureBasis(context));
    if (!measure || !measure->IsLengthOrPercentage()) return {};
    return Part{Axis::Either, std::move(*measure), false, false};
}

// Moves a side by a distance: from the far one, it is what is left.
Measure MovedFrom(const Part& side, const Measure& distance) {
    return side.measure.percent == 0 ? distance : Complement(distance);
}

// Puts lengths and the sides in front of them together; there are three or four parts.
bool JoinDistances(Parts& parts) {
    Parts joined;
    for (std::size_t i = 0; i < parts.count; ++i) {
        Part part = std::move(parts.parts[i]);
        if (!part.isKeyword || joined.count == 2) return false;
        const bool hasDistance = i + 1 < parts.count && !parts.parts[i + 1].isKeyword;
        if (hasDistance && part.isCenter) return false;
        if (hasDistance) part.measure = MovedFrom(part, parts.parts[++i].measure);
        joined.parts[joined.count++] = std::move(part);
    }
    parts = std::move(joined);
    return parts.count == 2;
}

// Gives each axis its part; they are in the order of reading.
bool OrderByAxis(Parts& parts) {
    Part& first = parts.parts[0];
    Part& second = parts.parts[1];
    if (parts.count == 1) second = {Axis::Either, Percentage(50), true, true};
    const bool areSwapped = first.axis == Axis::Vertical || second.axis == Axis::Horizontal;
    if (!areSwapped) return true;
    // "top 10px" and "10px left" are wrong: lengths are in the order of the axes.
    const bool areKeywords = first.isKeyword && second.isKeyword;
    if (!areKeywords || first.axis == second.axis) return false;
    if (first.axis == Axis::Horizontal || second.axis == Axis::Vertical) return false;
    std::swap(first, second);
    return true;
}

std::optional<Parts> ReadParts(std::string_view value, const ComputingContext& context) {
    Parts parts;
    ListPieces pieces(value, ' ');
    for (std::string_view piece; pieces.Next(piece);) {
        std::optional<Part> part = ReadPart(piece, context);
        if (!part || parts.count == parts.parts.size()) return {};
        parts.parts[parts.count++] = std::move(*part);
    }
    if (parts.count == 0) return {};
    return parts;
}

}  // namespace

std::optional<astring> ComputedPosition(std::string_view value, const ComputingContext& context) {
    std::optional<Parts> parts = ReadParts(value, context);
    if (!parts) return {};
    if (parts->count > 2 && !JoinDistances(*parts)) return {};
    const bool areTwice = parts->count == 2 && parts->parts[0].axis != Axis::Either &&
                          parts->parts[0].axis == parts->parts[1].axis;
    if (areTwice || !OrderByAxis(*parts)) return {};
    astring text;
    AppendLength(text, parts->parts[0].measure);
    text += ' ';
    AppendLength(text, parts->parts[1].measure);
    return text;
}

std::optional<astring> ComputedOrigin(std::string_view value, const ComputingContext& context) {
    ListPieces pieces(value, ' ');
    std::size_t count = 0;
    std::string_view last;
    while (pieces.Next(last))
        ++count;
    if (count < 3) return ComputedPosition(value, context);
    const std::optional<Measure> depth = ReadMeasure(last, MeasureBasis(context));
    if (!depth || !depth->IsLength() || count > 3) return {};
    const auto length = static_cast<std::size_t>(last.data() - value.data());
    std::optional<astring> text = ComputedPosition(Trimmed(value.substr(0, length)), context);
    if (!text || depth->value == 0) return text;
    *text += ' ';
    AppendLength(*text, *depth);
    return text;
}

}  // namespace Dom::CSS::detail
