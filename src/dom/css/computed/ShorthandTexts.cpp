// SPDX-License-Identifier: MIT
//
// The shorthands of fonts, lists and lines on text.
#include "dom/css/computed/ShorthandParts.h"

namespace Dom::CSS::detail {

namespace {

// The properties of "font" that come before the size are at the front.
enum Font : std::size_t { kStyle, kVariant, kWeight, kStretch, kSize, kLineHeight, kFamily };

constexpr PieceSyntax kBeforeSize[] = {
    {0, "italic oblique"},
    {0, "small-caps"},
    {0, "bold bolder lighter"},
    {0,
     "ultra-condensed extra-condensed condensed semi-condensed semi-expanded expanded "
     "extra-expanded ultra-expanded"},
};
constexpr PieceSyntax kFontSize{
    kLengthOrPercentage | kNotNegative,
    "xx-small x-small small medium large x-large xx-large xxx-large smaller larger"};
constexpr PieceSyntax kLine{kLengthOrPercentage | kNumberPiece | kNotNegative, "normal"};
constexpr PieceSyntax kAngle{kAnglePiece};
constexpr std::string_view kNormal = "normal";
constexpr std::string_view kSystemFonts = "caption icon menu message-box small-caption status-bar";

// CSS Fonts Level 4 section 2.2.1: a number from 1 to 1000.
bool IsWeightNumber(const Piece& piece) {
    constexpr double kGreatest = 1000;
    return piece.kind == Piece::Kind::Number && piece.number >= 1 && piece.number <= kGreatest;
}

// Takes what stands before the size: at most four pieces, of which each is one of the properties,
// or "normal" for any of them.
bool TakeBeforeSize(ShorthandParts& parts) {
    constexpr std::size_t kMost = 4;
    for (std::size_t i = 0; i < kMost && !parts.IsAtEnd(); ++i) {
        if (parts.IsNextKeyword(kNormal)) {
            parts.Take(1);
        } else if (IsWeightNumber(parts.Rest().front())) {
            if (!parts.Set(kWeight, parts.Take(1))) return false;
        } else if (parts.IsNextKeyword("oblique") && !parts.IsSet(kStyle)) {
            const std::span<const Piece> all = parts.Rest();
            parts.Take(1);
            const std::size_t angle = parts.TakeFitting(kAngle, 1).size();
            parts.Set(kStyle, all.first(1 + angle));
        } else if (!parts.TakeAsAny(kBeforeSize)) {
            return true;
        }
    }
    return true;
}

// A family is a string or a row of names; commas stand between families.
bool IsFamilyList(std::span<const Piece> pieces) {
    enum class Behind { Comma, Names, String };
    Behind behind = Behind::Comma;
    for (const Piece& piece : pieces) {
        switch (piece.kind) {
        case Piece::Kind::Comma:
            if (behind == Behind::Comma) return false;
            behind = Behind::Comma;
            break;
        case Piece::Kind::String:
            if (behind != Behind::Comma) return false;
            behind = Behind::String;
            break;
        case Piece::Kind::Ident:
            if (behind == Behind::String) return false;
            behind = Behind::Names;
            break;
        default: return false;
        }
    }
    return behind != Behind::Comma;
}

enum ListStyle : std::size_t { kListPosition, kListImage, kListType, kListCount };

constexpr PieceSyntax kListStyle[kListCount] = {
    {0, "inside outside"},
    {kImagePiece},
    {kStringPiece | kNamePiece, {}, "symbols"},
};

enum TextLine : std::size_t { kLineKind, kLineStyle, kLineColor, kLineThickness };

constexpr PieceSyntax kTextLine[] = {
    {0, "solid double dotted dashed wavy"},
    {kColorPiece},
    {kLengthOrPercentage, "auto from-font"},
};
constexpr PieceSyntax kLines{0, "underline overline line-through blink"};

// Takes a row of lines, each of which may be there once.
bool TakeLines(ShorthandParts& parts) {
    constexpr std::size_t kMost = 4;
    const std::span<const Piece> lines = parts.TakeFitting(kLines, kMost);
    for (std::size_t i = 1; i < lines.size(); ++i) {
        for (const Piece& earlier : lines.first(i)) {
            if (IsKeyword(lines[i], earlier.name)) return false;
        }
    }
    return parts.Set(kLineKind, lines);
}

enum Emphasis : std::size_t { kMark, kMarkColor };

constexpr PieceSyntax kMarkColors{kColorPiece};
constexpr PieceSyntax kMarkFill{0, "filled open"};
constexpr PieceSyntax kMarkShape{0, "dot circle double-circle triangle sesame"};
constexpr PieceSyntax kMarkAlone{kStringPiece, "none"};

// none | [ [ filled | open ] || [ dot | circle | ... ] ] | <string>
std::span<const Piece> TakeMark(ShorthandParts& parts) {
    const std::span<const Piece> all = parts.Rest();
    if (!parts.TakeFitting(kMarkAlone, 1).empty()) return all.first(1);
    const bool hasFill = !parts.TakeFitting(kMarkFill, 1).empty();
    const bool hasShape = !parts.TakeFitting(kMarkShape, 1).empty();
    if (!hasFill) parts.TakeFitting(kMarkFill, hasShape ? 1 : 0);
    return all.first(all.size() - parts.Rest().size());
}

}  // namespace

// A font of the system stands for values that the system knows; they are initial here.
bool ExpandFont(ShorthandParts& parts) {
    if (parts.Rest().size() == 1) {
        const bool isSystem = parts.IsNextKeyword(kSystemFonts);
        parts.Take(1);
        return isSystem;
    }
    if (!TakeBeforeSize(parts) || !parts.IsNext(kFontSize)) return false;
    parts.Set(kSize, parts.Take(1));
    if (parts.Skip(Piece::Kind::Slash)) {
        if (!parts.IsNext(kLine)) return false;
        parts.Set(kLineHeight, parts.Take(1));
    }
    const std::span<const Piece> families = parts.Take(parts.Rest().size());
    return IsFamilyList(families) && parts.Set(kFamily, families);
}

// "none" is for the type and the image, whichever is not there otherwise. A position is never the
// name of a type: CSS Counter Styles Level 3 section 3.
bool ExpandListStyle(ShorthandParts& parts) {
    std::size_t nones = 0;
    std::span<const Piece> none;
    while (!parts.IsAtEnd()) {
        if (parts.IsNextKeyword("none")) {
            none = parts.Take(1);
            ++nones;
        } else if (parts.IsSet(kListPosition) && parts.IsNext(kListStyle[kListPosition])) {
            return false;
        } else if (!parts.TakeAsAny(kListStyle)) {
            return false;
        }
    }
    if (nones == 0) return true;
    const bool hasType = parts.IsSet(kListType);
    const bool hasImage = parts.IsSet(kListImage);
    if (nones + (hasType ? 1 : 0) + (hasImage ? 1 : 0) > 2) return false;
    if (!hasType) parts.Set(kListType, none);
    if (!hasImage) parts.Set(kListImage, none);
    return true;
}

bool ExpandTextDecoration(ShorthandParts& parts) {
    while (!parts.IsAtEnd()) {
        if (parts.IsNextKeyword("none")) {
            if (!parts.Set(kLineKind, parts.Take(1))) return false;
        } else if (parts.IsNext(kLines)) {
            if (!TakeLines(parts)) return false;
        } else if (!parts.TakeAsAny(kTextLine, kLineStyle)) {
            return false;
        }
    }
    return true;
}

bool ExpandTextEmphasis(ShorthandParts& parts) {
    while (!parts.IsAtEnd()) {
        if (parts.IsNext(kMarkColors)) {
            if (!parts.Set(kMarkColor, parts.Take(1))) return false;
            continue;
        }
        const std::span<const Piece> mark = TakeMark(parts);
        if (mark.empty() || !parts.Set(kMark, mark)) return false;
    }
    return true;
}

}  // namespace Dom::CSS::detail
