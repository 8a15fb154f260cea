// SPDX-License-Identifier: MIT
//
// A table of all shorthands: which properties they stand for, with their initial values, and how
// their values are taken apart.
#include "dom/css/computed/ShorthandExpansion.h"

#include "dom/css/computed/PieceSyntax.h"
#include "dom/css/computed/ShorthandParts.h"
#include "dom/css/computed/ValuePieces.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>

namespace Dom::CSS::detail {

namespace {

using Names = std::span<const std::string_view>;

constexpr std::string_view kMargin[] = {"margin-top", "margin-right", "margin-bottom",
                                        "margin-left"};
constexpr std::string_view kPadding[] = {"padding-top", "padding-right", "padding-bottom",
                                         "padding-left"};
constexpr std::string_view kInset[] = {"top", "right", "bottom", "left"};
constexpr std::string_view kScrollMargin[] = {"scroll-margin-top", "scroll-margin-right",
                                              "scroll-margin-bottom", "scroll-margin-left"};
constexpr std::string_view kScrollPadding[] = {"scroll-padding-top", "scroll-padding-right",
                                               "scroll-padding-bottom", "scroll-padding-left"};
// "border" has an image of its own, which it sets back: CSS Backgrounds Level 3 section 3.4.
constexpr std::string_view kBorder[] = {
    "border-top-width",    "border-right-width", "border-bottom-width", "border-left-width",
    "border-top-style",    "border-right-style", "border-bottom-style", "border-left-style",
    "border-top-color",    "border-right-color", "border-bottom-color", "border-left-color",
    "border-image-source", "border-image-slice", "border-image-width",  "border-image-outset",
    "border-image-repeat"};
constexpr Names kBorderWidth = Names(kBorder).first(4);
constexpr Names kBorderStyle = Names(kBorder).subspan(4, 4);
constexpr Names kBorderColor = Names(kBorder).subspan(8, 4);
constexpr Names kBorderImage = Names(kBorder).subspan(12);
constexpr std::string_view kBorderTop[] = {"border-top-width", "border-top-style",
                                           "border-top-color"};
constexpr std::string_view kBorderRight[] = {"border-right-width", "border-right-style",
                                             "border-right-color"};
constexpr std::string_view kBorderBottom[] = {"border-bottom-width", "border-bottom-style",
                                              "border-bottom-color"};
constexpr std::string_view kBorderLeft[] = {"border-left-width", "border-left-style",
                                            "border-left-color"};
constexpr std::string_view kBorderRadius[] = {"border-top-left-radius", "border-top-right-radius",
                                              "border-bottom-right-radius",
                                              "border-bottom-left-radius"};
constexpr std::string_view kOutline[] = {"outline-width", "outline-style", "outline-color"};
constexpr std::string_view kColumnRule[] = {"column-rule-width", "column-rule-style",
                                            "column-rule-color"};
constexpr std::string_view kBackground[] = {
    "background-image",      "background-position", "background-size", "background-repeat",
    "background-attachment", "background-origin",   "background-clip", "background-color"};
// Behind the family are properties that "font" sets back.
constexpr std::string_view kFont[] = {
    "font-style",  "font-variant", "font-weight",      "font-stretch", "font-size",
    "line-height", "font-family",  "font-size-adjust", "font-kerning", "font-feature-settings"};
constexpr std::string_view kListStyle[] = {"list-style-position", "list-style-image",
                                           "list-style-type"};
constexpr std::string_view kTextDecoration[] = {"text-decoration-line", "text-decoration-style",
                                                "text-decoration-color",
                                                "text-decoration-thickness"};
constexpr std::string_view kTextEmphasis[] = {"text-emphasis-style", "text-emphasis-color"};
constexpr std::string_view kOverflow[] = {"overflow-x", "overflow-y"};
constexpr std::string_view kOverscroll[] = {"overscroll-behavior-x", "overscroll-behavior-y"};
constexpr std::string_view kFlex[] = {"flex-grow", "flex-shrink", "flex-basis"};
constexpr std::string_view kFlexFlow[] = {"flex-direction", "flex-wrap"};
constexpr std::string_view kGap[] = {"row-gap", "column-gap"};
constexpr std::string_view kColumns[] = {"column-width", "column-count"};
constexpr std::string_view kPlaceContent[] = {"align-content", "justify-content"};
constexpr std::string_view kPlaceItems[] = {"align-items", "justify-items"};
constexpr std::string_view kPlaceSelf[] = {"align-self", "justify-self"};
constexpr std::string_view kGridRow[] = {"grid-row-start", "grid-row-end"};
constexpr std::string_view kGridColumn[] = {"grid-column-start", "grid-column-end"};
constexpr std::string_view kGridArea[] = {"grid-row-start", "grid-column-start", "grid-row-end",
                                          "grid-column-end"};
// What a word may be besides comes before names that the author makes up.
constexpr std::string_view kTransition[] = {"transition-duration", "transition-timing-function",
                                            "transition-delay", "transition-property"};
constexpr std::string_view kAnimation[] = {"animation-duration",   "animation-timing-function",
                                           "animation-delay",      "animation-iteration-count",
                                           "animation-direction",  "animation-fill-mode",
                                           "animation-play-state", "animation-name"};

// Initial values, in the order of the names.
constexpr std::string_view kZeros[] = {"0", "0", "0", "0"};
constexpr std::string_view kAutos[] = {"auto", "auto", "auto", "auto"};
constexpr std::string_view kNormals[] = {"normal", "normal"};
constexpr std::string_view kBorderInitials[] = {
    "medium",       "medium",       "medium",       "medium",       "none", "none", "none", "none",
    "currentcolor", "currentcolor", "currentcolor", "currentcolor", "none", "100%", "1",    "0",
    "stretch"};
constexpr Names kWidthInitials = Names(kBorderInitials).first(4);
constexpr Names kStyleInitials = Names(kBorderInitials).subspan(4, 4);
constexpr Names kColorInitials = Names(kBorderInitials).subspan(8, 4);
constexpr Names kImageInitials = Names(kBorderInitials).subspan(12);
constexpr std::string_view kLineInitials[] = {"medium", "none", "currentcolor"};
constexpr std::string_view kBackgroundInitials[] = {
    "none", "0% 0%", "auto", "repeat", "scroll", "padding-box", "border-box", "transparent"};
// The initial family is up to who shows the text.
constexpr std::string_view kFontInitials[] = {"normal", "normal", "normal", "normal", "medium",
                                              "normal", "serif",  "none",   "auto",   "normal"};
constexpr std::string_view kListInitials[] = {"outside", "none", "disc"};
constexpr std::string_view kDecorationInitials[] = {"none", "solid", "currentcolor", "auto"};
constexpr std::string_view kEmphasisInitials[] = {"none", "currentcolor"};
constexpr std::string_view kVisibles[] = {"visible", "visible"};
constexpr std::string_view kFlexInitials[] = {"0", "1", "auto"};
constexpr std::string_view kFlowInitials[] = {"row", "nowrap"};
constexpr std::string_view kItemsInitials[] = {"normal", "legacy"};
constexpr std::string_view kTransitionInitials[] = {"0s", "ease", "0s", "all"};
constexpr std::string_view kAnimationInitials[] = {"0s",     "ease", "0s",      "1",
                                                   "normal", "none", "running", "none"};

// What the pieces may be.
constexpr PieceSyntax kMarginSyntax[] = {{kLengthOrPercentage, "auto"}};
constexpr PieceSyntax kPaddingSyntax[] = {{kLengthOrPercentage | kNotNegative}};
constexpr PieceSyntax kLengthSyntax[] = {{kLengthPiece}};
constexpr PieceSyntax kScrollPaddingSyntax[] = {{kLengthOrPercentage | kNotNegative, "auto"}};
constexpr PieceSyntax kLineSyntax[] = {
    {kLengthPiece | kNotNegative, "thin medium thick"},
    {0, "none hidden dotted dashed solid double groove ridge inset outset"},
    {kColorPiece}};
constexpr std::span<const PieceSyntax> kWidthSyntax = std::span(kLineSyntax).first(1);
constexpr std::span<const PieceSyntax> kStyleSyntax = std::span(kLineSyntax).subspan(1, 1);
constexpr std::span<const PieceSyntax> kColorSyntax = std::span(kLineSyntax).subspan(2);
// CSS Basic User Interface Level 4 section 3.1.
constexpr PieceSyntax kOutlineSyntax[] = {
    {kLengthPiece | kNotNegative, "thin medium thick"},
    {0, "auto none dotted dashed solid double groove ridge inset outset"},
    {kColorPiece}};
constexpr PieceSyntax kOverflowSyntax[] = {{0, "visible hidden clip scroll auto"}};
constexpr PieceSyntax kOverscrollSyntax[] = {{0, "contain none auto"}};
constexpr PieceSyntax kFlowSyntax[] = {{0, "row row-reverse column column-reverse"},
                                       {0, "nowrap wrap wrap-reverse"}};
constexpr PieceSyntax kGapSyntax[] = {{kLengthOrPercentage | kNotNegative, "normal"}};
// CSS Easing Level 2 section 2.
constexpr PieceSyntax kEasing{0, "linear ease ease-in ease-out ease-in-out step-start step-end",
                              "cubic-bezier steps linear"};
constexpr PieceSyntax kTime{kTimePiece};
constexpr PieceSyntax kTransitionSyntax[] = {kTime, kEasing, kTime, {kNamePiece}};
constexpr PieceSyntax kAnimationSyntax[] = {kTime,
                                            kEasing,
                                            kTime,
                                            {kNumberPiece | kNotNegative, "infinite"},
                                            {0, "normal reverse alternate alternate-reverse"},
                                            {0, "none forwards backwards both"},
                                            {0, "running paused"},
                                            {kNamePiece | kStringPiece}};

struct Shorthand {
    std::string_view name;
    Names longhands;
    Names initials;
    bool (*expand)(ShorthandParts& parts);
    std::span<const PieceSyntax> syntaxes;
};

// Sorted by name.
constexpr Shorthand kShorthands[] = {
    {"animation", kAnimation, kAnimationInitials, ExpandLayers, kAnimationSyntax},
    {"background", kBackground, kBackgroundInitials, ExpandBackground, {}},
    {"border", kBorder, kBorderInitials, ExpandBorder, kLineSyntax},
    {"border-bottom", kBorderBottom, kLineInitials, ExpandAnyOrder, kLineSyntax},
    {"border-color", kBorderColor, kColorInitials, ExpandSides, kColorSyntax},
    {"border-image", kBorderImage, kImageInitials, ExpandBorderImage, {}},
    {"border-left", kBorderLeft, kLineInitials, ExpandAnyOrder, kLineSyntax},
    {"border-radius", kBorderRadius, kZeros, ExpandBorderRadius, kPaddingSyntax},
    {"border-right", kBorderRight, kLineInitials, ExpandAnyOrder, kLineSyntax},
    {"border-style", kBorderStyle, kStyleInitials, ExpandSides, kStyleSyntax},
    {"border-top", kBorderTop, kLineInitials, ExpandAnyOrder, kLineSyntax},
    {"border-width", kBorderWidth, kWidthInitials, ExpandSides, kWidthSyntax},
    {"column-rule", kColumnRule, kLineInitials, ExpandAnyOrder, kLineSyntax},
    {"columns", kColumns, Names(kAutos).first(2), ExpandColumns, {}},
    {"flex", kFlex, kFlexInitials, ExpandFlex, {}},
    {"flex-flow", kFlexFlow, kFlowInitials, ExpandAnyOrder, kFlowSyntax},
    {"font", kFont, kFontInitials, ExpandFont, {}},
    {"gap", kGap, kNormals, ExpandPair, kGapSyntax},
    {"grid-area", kGridArea, kAutos, ExpandGridLines, {}},
    {"grid-column", kGridColumn, Names(kAutos).first(2), ExpandGridLines, {}},
    {"grid-gap", kGap, kNormals, ExpandPair, kGapSyntax},
    {"grid-row", kGridRow, Names(kAutos).first(2), ExpandGridLines, {}},
    {"inset", kInset, kAutos, ExpandSides, kMarginSyntax},
    {"list-style", kListStyle, kListInitials, ExpandListStyle, {}},
    {"margin", kMargin, kZeros, ExpandSides, kMarginSyntax},
    {"outline", kOutline, kLineInitials, ExpandAnyOrder, kOutlineSyntax},
    {"overflow", kOverflow, kVisibles, ExpandPair, kOverflowSyntax},
    {"overscroll-behavior", kOverscroll, Names(kAutos).first(2), ExpandPair, kOverscrollSyntax},
    {"padding", kPadding, kZeros, ExpandSides, kPaddingSyntax},
    {"place-content", kPlaceContent, kNormals, ExpandPlaceContent, {}},
    {"place-items", kPlaceItems, kItemsInitials, ExpandPlaceItems, {}},
    {"place-self", kPlaceSelf, Names(kAutos).first(2), ExpandPlaceSelf, {}},
    {"scroll-margin", kScrollMargin, kZeros, ExpandSides, kLengthSyntax},
    {"scroll-padding", kScrollPadding, kAutos, ExpandSides, kScrollPaddingSyntax},
    {"text-decoration", kTextDecoration, kDecorationInitials, ExpandTextDecoration, {}},
    {"text-emphasis", kTextEmphasis, kEmphasisInitials, ExpandTextEmphasis, {}},
    {"transition", kTransition, kTransitionInitials, ExpandTransition, kTransitionSyntax},
};
static_assert(std::ranges::is_sorted(kShorthands, {}, &Shorthand::name));
static_assert(std::ranges::all_of(kShorthands, [](const Shorthand& shorthand) {
    return shorthand.longhands.size() == shorthand.initials.size() &&
           shorthand.longhands.size() <= ShorthandParts::kMost;
}));

const Shorthand* FindShorthand(std::string_view name) {
    const Shorthand* const found =
        std::ranges::lower_bound(kShorthands, name, {}, &Shorthand::name);
    return found != std::end(kShorthands) && found->name == name ? found : nullptr;
}

}  // namespace

std::span<const std::string_view> LonghandsOf(std::string_view name) {
    const Shorthand* const shorthand = FindShorthand(name);
    return shorthand == nullptr ? Names() : shorthand->longhands;
}

bool ExpandShorthand(std::string_view name, std::string_view value, std::vector<Longhand>& result) {
    const Shorthand* const shorthand = FindShorthand(name);
    if (shorthand == nullptr) return false;
    const ValuePieces split(value);
    const std::span<const Piece> pieces = split.Get();
    if (!split.IsWhole() || split.HasVariables() || pieces.empty()) return false;
    if (pieces.size() == 1 && IsWideKeyword(pieces.front())) {
        for (const std::string_view longhand : shorthand->longhands)
            result.push_back({longhand, pieces.front().text});
        return true;
    }
    if (std::ranges::any_of(pieces, IsWideKeyword)) return false;
    ShorthandParts parts(pieces, shorthand->syntaxes, shorthand->initials);
    if (!shorthand->expand(parts) || !parts.IsAtEnd()) return false;
    for (std::size_t i = 0; i < shorthand->longhands.size(); ++i) {
        astring& text = parts.Value(i);
        if (!parts.IsSet(i)) text = shorthand->initials[i];
        result.push_back({shorthand->longhands[i], std::move(text)});
    }
    return true;
}

}  // namespace Dom::CSS::detail
