// SPDX-License-Identifier: MIT
//
// Shorthands with values for several layers, transitions or animations: each property gets a list
// with as many values, with initial ones for what a layer does not say.
#include "dom/css/computed/ShorthandParts.h"

#include <algorithm>

namespace Dom::CSS::detail {

namespace {

enum Background : std::size_t {
    kImage,
    kPosition,
    kSize,
    kRepeat,
    kAttachment,
    kOrigin,
    kClip,
    kColor
};

constexpr PieceSyntax kBackgroundColor{kColorPiece};
constexpr PieceSyntax kBackgroundImage{kImagePiece, "none"};
constexpr PieceSyntax kRepeatOfBoth{0, "repeat-x repeat-y"};
constexpr PieceSyntax kRepeatOfOne{0, "repeat space round no-repeat"};
constexpr PieceSyntax kBackgroundAttachment{0, "scroll fixed local"};
constexpr PieceSyntax kBackgroundBox{0, "border-box padding-box content-box"};
constexpr PieceSyntax kPositionPiece{kLengthOrPercentage, "left center right top bottom"};
constexpr PieceSyntax kSizeOfOne{kLengthOrPercentage | kNotNegative, "auto"};
constexpr PieceSyntax kSizeOfBoth{0, "cover contain"};

constexpr std::string_view kAcross = "left right";
constexpr std::string_view kDown = "top bottom";
constexpr std::string_view kCenter = "center";

bool IsAnyKeyword(const Piece& piece) { return piece.kind == Piece::Kind::Ident; }

// Offsets from two edges, or from one and a center:
// [ center | [ left | right ] <length-percentage>? ] &&
// [ center | [ top | bottom ] <length-percentage>? ]
bool IsPositionByEdges(std::span<const Piece> pieces) {
    const Piece* edges[2] = {};
    std::size_t count = 0;
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        if (!IsAnyKeyword(pieces[i])) {
            // An offset is behind its edge.
            if (i == 0 || !IsAnyKeyword(pieces[i - 1]) || IsKeyword(pieces[i - 1], kCenter)) {
                return false;
            }
            continue;
        }
        if (count == 2) return false;
        edges[count++] = &pieces[i];
    }
    if (count != 2) return false;
    const bool isFirstAcross = !IsKeyword(*edges[0], kDown);
    const bool isSecondDown = !IsKeyword(*edges[1], kAcross);
    const bool isFirstDown = !IsKeyword(*edges[0], kAcross);
    const bool isSecondAcross = !IsKeyword(*edges[1], kDown);
    return (isFirstAcross && isSecondDown) || (isFirstDown && isSecondAcross);
}

// CSS Backgrounds Level 3 section 2.6.
bool IsPosition(std::span<const Piece> pieces) {
    if (pieces.size() == 1) return true;
    if (pieces.size() == 2 && !(IsAnyKeyword(pieces[0]) && IsAnyKeyword(pieces[1]))) {
        return !IsKeyword(pieces[0], kDown) && !IsKeyword(pieces[1], kAcross);
    }
    return IsPositionByEdges(pieces);
}

// <position> [ / <size> ]?
bool TakePositionAndSize(ShorthandParts& layer) {
    constexpr std::size_t kMostPieces = 4;
    const std::span<const Piece> position = layer.TakeFitting(kPositionPiece, kMostPieces);
    if (!IsPosition(position) || !layer.Set(kPosition, position)) return false;
    if (!layer.Skip(Piece::Kind::Slash)) return true;
    std::span<const Piece> size = layer.TakeFitting(kSizeOfBoth, 1);
    if (size.empty()) size = layer.TakeFitting(kSizeOfOne, 2);
    return !size.empty() && layer.Set(kSize, size);
}

// The first box is for both when there is no second.
bool TakeBox(ShorthandParts& layer) {
    if (!layer.IsSet(kOrigin)) return layer.Set(kOrigin, layer.Take(1));
    return layer.Set(kClip, layer.Take(1));
}

bool TakeBackgroundPart(ShorthandParts& layer) {
    if (layer.IsNext(kPositionPiece)) return TakePositionAndSize(layer);
    if (layer.IsNext(kRepeatOfBoth)) return layer.Set(kRepeat, layer.Take(1));
    if (layer.IsNext(kRepeatOfOne)) {
        return layer.Set(kRepeat, layer.TakeFitting(kRepeatOfOne, 2));
    }
    if (layer.IsNext(kBackgroundBox)) return TakeBox(layer);
    if (layer.IsNext(kBackgroundImage)) return layer.Set(kImage, layer.Take(1));
    if (layer.IsNext(kBackgroundAttachment)) return layer.Set(kAttachment, layer.Take(1));
    if (layer.IsNext(kBackgroundColor)) return layer.Set(kColor, layer.Take(1));
    return false;
}

// Takes the pieces up to the next comma, and the comma.
std::span<const Piece> TakeLayer(ShorthandParts& parts, bool& isLast) {
    const std::span<const Piece> rest = parts.Rest();
    std::size_t count = 0;
    while (count < rest.size() && rest[count].kind != Piece::Kind::Comma)
        ++count;
    const std::span<const Piece> layer = parts.Take(count);
    isLast = !parts.Skip(Piece::Kind::Comma);
    return layer;
}

// Adds the values of a layer to those of the layers before.
void AddLayer(ShorthandParts& parts, ShorthandParts& layer, std::size_t count, bool isFirst) {
    for (std::size_t i = 0; i < count; ++i) {
        astring& list = parts.Value(i);
        if (!isFirst) list += ", ";
        if (layer.IsSet(i)) {
            list += layer.Value(i);
        } else {
            list += parts.Initials()[i];
        }
    }
}

// Goes through the layers.
// \param count of the properties whose values are lists; they come first
// \param take reads one layer, and is told whether it is the last one
template <typename TakeLayerParts>
bool ExpandEach(ShorthandParts& parts, std::size_t count, TakeLayerParts take) {
    bool isFirst = true;
    for (bool isLast = false; !isLast; isFirst = false) {
        ShorthandParts layer(TakeLayer(parts, isLast), parts.Syntaxes(), parts.Initials());
        if (layer.IsAtEnd() || !take(layer, isLast)) return false;
        AddLayer(parts, layer, count, isFirst);
    }
    return true;
}

bool TakeBackgroundLayer(ShorthandParts& layer) {
    while (!layer.IsAtEnd()) {
        if (!TakeBackgroundPart(layer)) return false;
    }
    if (layer.IsSet(kOrigin) && !layer.IsSet(kClip)) layer.Value(kClip) = layer.Value(kOrigin);
    return true;
}

constexpr PieceSyntax kTime{kTimePiece};

// The first time is the duration, which is not below 0; the second is the delay.
bool ExpandTimes(ShorthandParts& layer) {
    const auto pieces = layer.Rest();
    const auto time = std::ranges::find_if(pieces, [](const Piece& p) { return Fits(p, kTime); });
    return (time == pieces.end() || time->number >= 0) && ExpandAnyOrder(layer);
}

}  // namespace

// Only the last layer has a colour, below all images.
bool ExpandBackground(ShorthandParts& parts) {
    return ExpandEach(parts, kColor, [&parts](ShorthandParts& layer, bool isLast) {
        if (!TakeBackgroundLayer(layer)) return false;
        if (!layer.IsSet(kColor)) return true;
        parts.Value(kColor) = layer.Value(kColor);
        return isLast;
    });
}

bool ExpandLayers(ShorthandParts& parts) {
    return ExpandEach(parts, parts.Syntaxes().size(),
                      [](ShorthandParts& layer, bool) { return ExpandTimes(layer); });
}

// Of several transitions none is of no property.
bool ExpandTransition(ShorthandParts& parts) {
    bool hasNone = false;
    return ExpandEach(parts, parts.Syntaxes().size(), [&](ShorthandParts& layer, bool isLast) {
        const bool isFirst = !parts.IsSet(0);
        for (const Piece& piece : layer.Rest())
            hasNone = hasNone || IsKeyword(piece, "none");
        return ExpandTimes(layer) && (!hasNone || (isFirst && isLast));
    });
}

}  // namespace Dom::CSS::detail
