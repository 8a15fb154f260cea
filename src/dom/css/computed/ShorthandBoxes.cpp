// SPDX-License-Identifier: MIT
//
// Shorthands whose parts are alike, or are told from each other by what they are, and those of
// borders.
#include "dom/css/computed/ShorthandParts.h"

namespace Dom::CSS::detail {

namespace {

constexpr std::size_t kSideCount = 4;

// Returns which of one to four values is that of a side.
std::size_t IndexForSide(std::size_t side, std::size_t count) {
    constexpr std::size_t kIndices[kSideCount][kSideCount] = {
        {0, 0, 0, 0}, {0, 1, 0, 1}, {0, 1, 2, 1}, {0, 1, 2, 3}};
    return kIndices[count - 1][side];
}

// Takes the next pieces as one value; false when there are none.
bool TakeAs(ShorthandParts& parts, std::size_t index, const PieceSyntax& syntax, std::size_t most) {
    const std::span<const Piece> pieces = parts.TakeFitting(syntax, most);
    return !pieces.empty() && parts.Set(index, pieces);
}

enum BorderImage : std::size_t { kSource, kSlice, kWidth, kOutset, kRepeat };

constexpr PieceSyntax kBorderSource{kImagePiece, "none"};
constexpr PieceSyntax kBorderSlice{kNumberPiece | kPercentagePiece | kNotNegative};
constexpr PieceSyntax kBorderImageWidth{kLengthOrPercentage | kNumberPiece | kNotNegative, "auto"};
constexpr PieceSyntax kBorderOutset{kLengthPiece | kNumberPiece | kNotNegative};
constexpr PieceSyntax kBorderRepeat{0, "stretch repeat round space"};
constexpr std::string_view kFill = "fill";

// [<number> | <percentage>]{1,4} && fill?
bool TakeSlice(ShorthandParts& parts) {
    const std::span<const Piece> all = parts.Rest();
    const bool isFillFirst = parts.IsNextKeyword(kFill);
    if (isFillFirst) parts.Take(1);
    if (parts.TakeFitting(kBorderSlice, kSideCount).empty()) return false;
    if (!isFillFirst && parts.IsNextKeyword(kFill)) parts.Take(1);
    return parts.Set(kSlice, all.first(all.size() - parts.Rest().size()));
}

// <slice> [ / <width> | / <width>? / <outset> ]?
bool TakeSliceAndMore(ShorthandParts& parts) {
    if (!TakeSlice(parts)) return false;
    if (!parts.Skip(Piece::Kind::Slash)) return true;
    const bool hasWidth = TakeAs(parts, kWidth, kBorderImageWidth, kSideCount);
    if (!parts.Skip(Piece::Kind::Slash)) return hasWidth;
    return TakeAs(parts, kOutset, kBorderOutset, kSideCount);
}

}  // namespace

bool ExpandSides(ShorthandParts& parts) {
    const std::span<const Piece> pieces = parts.TakeFitting(parts.Syntaxes().front(), kSideCount);
    if (pieces.empty()) return false;
    for (std::size_t side = 0; side < kSideCount; ++side)
        parts.Set(side, pieces.subspan(IndexForSide(side, pieces.size()), 1));
    return true;
}

bool ExpandPair(ShorthandParts& parts) {
    const std::span<const Piece> pieces = parts.TakeFitting(parts.Syntaxes().front(), 2);
    if (pieces.empty()) return false;
    parts.Set(0, pieces.first(1));
    parts.Set(1, pieces.last(1));
    return true;
}

bool ExpandAnyOrder(ShorthandParts& parts) {
    while (!parts.IsAtEnd()) {
        if (!parts.TakeAsAny(parts.Syntaxes())) return false;
    }
    return true;
}

// The values of the first side are found, and then are those of all.
bool ExpandBorder(ShorthandParts& parts) {
    if (!ExpandAnyOrder(parts)) return false;
    const std::size_t kinds = parts.Syntaxes().size();
    for (std::size_t kind = kinds; kind-- > 0;) {
        const astring value = parts.Value(kind);
        for (std::size_t side = 0; side < kSideCount; ++side)
            parts.Value(kind * kSideCount + side) = value;
    }
    return true;
}

bool ExpandBorderRadius(ShorthandParts& parts) {
    const PieceSyntax& syntax = parts.Syntaxes().front();
    const std::span<const Piece> across = parts.TakeFitting(syntax, kSideCount);
    if (across.empty()) return false;
    std::span<const Piece> down;
    if (parts.Skip(Piece::Kind::Slash)) {
        down = parts.TakeFitting(syntax, kSideCount);
        if (down.empty()) return false;
    }
    for (std::size_t corner = 0; corner < kSideCount; ++corner) {
        const std::string_view width = across[IndexForSide(corner, across.size())].text;
        parts.Value(corner) = width;
        if (down.empty()) continue;
        const std::string_view height = down[IndexForSide(corner, down.size())].text;
        if (height != width) (parts.Value(corner) += ' ') += height;
    }
    return true;
}

bool ExpandBorderImage(ShorthandParts& parts) {
    while (!parts.IsAtEnd()) {
        bool isGood = false;
        if (parts.IsNext(kBorderSource)) {
            isGood = TakeAs(parts, kSource, kBorderSource, 1);
        } else if (parts.IsNext(kBorderRepeat)) {
            isGood = TakeAs(parts, kRepeat, kBorderRepeat, 2);
        } else {
            isGood = TakeSliceAndMore(parts);
        }
        if (!isGood) return false;
    }
    return true;
}

}  // namespace Dom::CSS::detail
