// SPDX-License-Identifier: MIT
//
// The shorthands of flexible boxes, columns, grids and alignment.
#include "dom/css/computed/ShorthandParts.h"

namespace Dom::CSS::detail {

namespace {

enum Flex : std::size_t { kGrow, kShrink, kBasis };

constexpr PieceSyntax kFactor{kNumberPiece | kNotNegative};
constexpr PieceSyntax kFlexBasis{kLengthOrPercentage | kNotNegative,
                                 "auto content min-content max-content fit-content", "fit-content"};

// One or two factors.
bool TakeFactors(ShorthandParts& parts) {
    const std::span<const Piece> factors = parts.TakeFitting(kFactor, 2);
    if (factors.empty() || !parts.Set(kGrow, factors.first(1))) return false;
    if (factors.size() == 2) return parts.Set(kShrink, factors.last(1));
    parts.Value(kShrink) = "1";
    return true;
}

enum Columns : std::size_t { kColumnWidth, kColumnCount };

constexpr PieceSyntax kWidthOfColumns{kLengthPiece | kNotNegative};
constexpr PieceSyntax kCountOfColumns{kIntegerPiece | kNotNegative};
constexpr std::string_view kAuto = "auto";

// The values of one axis; those with two words are below.
struct AlignmentSyntax {
    std::string_view keywords;
    std::string_view positions;  // that may be behind "safe" or "unsafe", too
    bool hasBaseline;
};

constexpr AlignmentSyntax kAlignContent{"normal space-between space-around space-evenly stretch",
                                        "center start end flex-start flex-end", true};
constexpr AlignmentSyntax kJustifyContent{
    "normal space-between space-around space-evenly stretch left right",
    "center start end flex-start flex-end left right", false};
constexpr AlignmentSyntax kAlignItems{
    "normal stretch", "center start end self-start self-end flex-start flex-end", true};
constexpr AlignmentSyntax kJustifyItems{
    "normal stretch left right legacy",
    "center start end self-start self-end flex-start flex-end left right", true};
constexpr AlignmentSyntax kAlignSelf{
    "auto normal stretch", "center start end self-start self-end flex-start flex-end", true};
constexpr AlignmentSyntax kJustifySelf{
    "auto normal stretch left right",
    "center start end self-start self-end flex-start flex-end left right", true};

bool IsBaseline(const Piece& piece) { return IsKeyword(piece, "baseline"); }

// Returns how many pieces at the front are a value; 0 when none are.
std::size_t CountAlignment(std::span<const Piece> pieces, const AlignmentSyntax& syntax) {
    if (pieces.empty()) return 0;
    const Piece& first = pieces[0];
    const Piece* const second = pieces.size() > 1 ? &pieces[1] : nullptr;
    if (IsKeyword(first, syntax.keywords) || IsKeyword(first, syntax.positions)) return 1;
    if (syntax.hasBaseline && IsBaseline(first)) return 1;
    if (second == nullptr) return 0;
    if (syntax.hasBaseline && IsKeyword(first, "first last")) return IsBaseline(*second) ? 2 : 0;
    if (!IsKeyword(first, "safe unsafe")) return 0;
    return IsKeyword(*second, syntax.positions) ? 2 : 0;
}

// One value for both axes, or one for each, that of the block axis first.
bool ExpandPlace(ShorthandParts& parts, const AlignmentSyntax& align,
                 const AlignmentSyntax& justify) {
    const std::span<const Piece> first = parts.Take(CountAlignment(parts.Rest(), align));
    if (first.empty()) return false;
    parts.Set(0, first);
    if (!parts.IsAtEnd()) {
        const std::span<const Piece> second = parts.Take(CountAlignment(parts.Rest(), justify));
        return !second.empty() && parts.Set(1, second);
    }
    if (CountAlignment(first, justify) == first.size()) {
        parts.Set(1, first);
    } else {
        parts.Value(1) = "start";  // of what has no baselines
    }
    return true;
}

constexpr PieceSyntax kLineNumber{kIntegerPiece};
constexpr PieceSyntax kLineName{kNamePiece};
constexpr std::string_view kSpan = "span";

bool IsLineName(const Piece& piece) {
    return Fits(piece, kLineName) && !IsKeyword(piece, "auto span");
}

// auto | <name> | [ <integer> && <name>? ] | [ span && [ <integer> || <name> ] ]
bool IsGridLine(std::span<const Piece> pieces) {
    if (pieces.size() == 1 && IsKeyword(pieces[0], kAuto)) return true;
    std::size_t spans = 0;
    std::size_t numbers = 0;
    std::size_t names = 0;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const Piece& piece = pieces[i];
        if (IsKeyword(piece, kSpan)) {
            // Not between the others.
            if (i != 0 && i + 1 != pieces.size()) return false;
            ++spans;
        } else if (Fits(piece, kLineNumber)) {
            ++numbers;
        } else if (IsLineName(piece)) {
            ++names;
        } else {
            return false;
        }
    }
    if (spans > 1 || numbers > 1 || names > 1) return false;
    for (const Piece& piece : pieces) {
        if (piece.kind != Piece::Kind::Number) continue;
        if (piece.number == 0 || (spans == 1 && piece.number < 0)) return false;
    }
    return numbers + names > 0;
}

}  // namespace

// Deliberate: a basis that is left out is "0%" and not "0". All browsers have it so, for heights
// that depend on the content.
bool ExpandFlex(ShorthandParts& parts) {
    if (parts.Rest().size() == 1 && parts.IsNextKeyword("none")) {
        parts.Take(1);
        parts.Value(kGrow) = parts.Value(kShrink) = "0";
        parts.Value(kBasis) = kAuto;
        return true;
    }
    // A 0 is a basis only behind two factors.
    while (!parts.IsAtEnd()) {
        if (!parts.IsSet(kGrow) && parts.IsNext(kFactor)) {
            if (!TakeFactors(parts)) return false;
        } else if (!parts.IsNext(kFlexBasis) || !parts.Set(kBasis, parts.Take(1))) {
            return false;
        }
    }
    if (!parts.IsSet(kGrow)) parts.Value(kGrow) = parts.Value(kShrink) = "1";
    if (!parts.IsSet(kBasis)) parts.Value(kBasis) = "0%";
    return true;
}

// "auto" is for either.
bool ExpandColumns(ShorthandParts& parts) {
    constexpr std::size_t kMost = 2;
    if (parts.Rest().size() > kMost) return false;
    while (!parts.IsAtEnd()) {
        if (parts.IsNextKeyword(kAuto)) {
            parts.Take(1);
            continue;
        }
        const bool isCount = parts.IsNext(kCountOfColumns) && parts.Rest().front().text != "0";
        if (!isCount && !parts.IsNext(kWidthOfColumns)) return false;
        if (!parts.Set(isCount ? kColumnCount : kColumnWidth, parts.Take(1))) return false;
    }
    return true;
}

bool ExpandPlaceContent(ShorthandParts& parts) {
    return ExpandPlace(parts, kAlignContent, kJustifyContent);
}

bool ExpandPlaceItems(ShorthandParts& parts) {
    return ExpandPlace(parts, kAlignItems, kJustifyItems);
}

bool ExpandPlaceSelf(ShorthandParts& parts) { return ExpandPlace(parts, kAlignSelf, kJustifySelf); }

// A line that is left out has the name of the one opposite, or of the first, if that is a name.
bool ExpandGridLines(ShorthandParts& parts) {
    const std::size_t most = parts.Initials().size();
    constexpr std::size_t kMostLines = 4;
    std::span<const Piece> lines[kMostLines];
    std::size_t count = 0;
    do {
        std::size_t length = 0;
        while (length < parts.Rest().size() && parts.Rest()[length].kind != Piece::Kind::Slash)
            ++length;
        if (count == most) return false;
        lines[count] = parts.Take(length);
        if (!IsGridLine(lines[count])) return false;
        parts.Set(count, lines[count]);
        ++count;
    } while (parts.Skip(Piece::Kind::Slash));
    for (; count < most; ++count) {
        const std::span<const Piece> line = lines[count < 2 ? 0 : count - 2];
        lines[count] = line;
        if (line.size() == 1 && IsLineName(line[0])) parts.Set(count, line);
    }
    return true;
}

}  // namespace Dom::CSS::detail
