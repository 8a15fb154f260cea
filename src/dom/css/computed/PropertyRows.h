// SPDX-License-Identifier: MIT
#pragma once

#include "dom/css/computed/PropertyTable.h"

// What PropertyTable.cpp sorts: all properties, by what they are about. A row is the name, the
// initial value, the keywords, the kind and whether it is inherited.

namespace Dom::CSS::detail {

inline constexpr bool kInherited = true;
inline constexpr bool kOwn = false;

inline constexpr std::string_view kLineStyles =
    "none hidden dotted dashed solid double groove ridge inset outset";
inline constexpr std::string_view kSizeKeywords =
    "auto min-content max-content fit-content stretch -webkit-fill-available=stretch "
    "-webkit-min-content=min-content -webkit-max-content=max-content "
    "-webkit-fit-content=fit-content";
inline constexpr std::string_view kMostSizeKeywords =
    "none min-content max-content fit-content stretch -webkit-fill-available=stretch "
    "-webkit-min-content=min-content -webkit-max-content=max-content "
    "-webkit-fit-content=fit-content";
inline constexpr std::string_view kOverflows = "visible hidden scroll auto clip overlay=auto";
inline constexpr std::string_view kPageBreaks = "auto always avoid left right";
inline constexpr std::string_view kBreaks =
    "auto avoid avoid-page page left right recto verso avoid-column column";
inline constexpr std::string_view kAlignContent =
    "normal baseline stretch center start end flex-start flex-end space-between space-around "
    "space-evenly";
inline constexpr std::string_view kJustifyContent =
    "normal stretch center start end flex-start flex-end left right space-between space-around "
    "space-evenly";
inline constexpr std::string_view kAlignItems =
    "normal baseline stretch center start end self-start self-end flex-start flex-end";
inline constexpr std::string_view kAlignSelf =
    "auto normal baseline stretch center start end self-start self-end flex-start flex-end "
    "anchor-center";
inline constexpr std::string_view kJustifyItems =
    "normal legacy=normal baseline stretch center start end self-start self-end flex-start "
    "flex-end left right";
inline constexpr std::string_view kJustifySelf =
    "auto normal baseline stretch center start end self-start self-end flex-start flex-end left "
    "right anchor-center";
// In the order of printing.
inline constexpr std::string_view kFontVariants =
    "normal none common-ligatures no-common-ligatures discretionary-ligatures "
    "no-discretionary-ligatures historical-ligatures no-historical-ligatures contextual "
    "no-contextual small-caps all-small-caps petite-caps all-petite-caps unicase titling-caps "
    "lining-nums oldstyle-nums proportional-nums tabular-nums diagonal-fractions "
    "stacked-fractions ordinal slashed-zero jis78 jis83 jis90 jis04 simplified traditional "
    "full-width proportional-width ruby sub super text emoji unicode";
inline constexpr std::string_view kBoxes = "border-box padding-box content-box";
inline constexpr std::string_view kMaskBoxes =
    "border-box padding-box content-box fill-box stroke-box view-box";

inline constexpr PropertyInfo kPropertyRows[] = {
    // Boxes: CSS 2.1 chapters 8 to 11, CSS Box Sizing, CSS Overflow.
    {"margin-top", "0px", "auto", ValueKind::LengthPercentage, kOwn},
    {"margin-right", "0px", "auto", ValueKind::LengthPercentage, kOwn},
    {"margin-bottom", "0px", "auto", ValueKind::LengthPercentage, kOwn},
    {"margin-left", "0px", "auto", ValueKind::LengthPercentage, kOwn},
    {"padding-top", "0px", "", ValueKind::PositiveLengthPercentage, kOwn},
    {"padding-right", "0px", "", ValueKind::PositiveLengthPercentage, kOwn},
    {"padding-bottom", "0px", "", ValueKind::PositiveLengthPercentage, kOwn},
    {"padding-left", "0px", "", ValueKind::PositiveLengthPercentage, kOwn},
    {"border-top-width", "0px", "", ValueKind::LineWidth, kOwn},
    {"border-right-width", "0px", "", ValueKind::LineWidth, kOwn},
    {"border-bottom-width", "0px", "", ValueKind::LineWidth, kOwn},
    {"border-left-width", "0px", "", ValueKind::LineWidth, kOwn},
    {"border-top-style", "none", kLineStyles, ValueKind::Keyword, kOwn},
    {"border-right-style", "none", kLineStyles, ValueKind::Keyword, kOwn},
    {"border-bottom-style", "none", kLineStyles, ValueKind::Keyword, kOwn},
    {"border-left-style", "none", kLineStyles, ValueKind::Keyword, kOwn},
    {"border-top-color", "currentcolor", "", ValueKind::Color, kOwn},
    {"border-right-color", "currentcolor", "", ValueKind::Color, kOwn},
    {"border-bottom-color", "currentcolor", "", ValueKind::Color, kOwn},
    {"border-left-color", "currentcolor", "", ValueKind::Color, kOwn},
    {"border-top-left-radius", "0px", "", ValueKind::Radius, kOwn},
    {"border-top-right-radius", "0px", "", ValueKind::Radius, kOwn},
    {"border-bottom-right-radius", "0px", "", ValueKind::Radius, kOwn},
    {"border-bottom-left-radius", "0px", "", ValueKind::Radius, kOwn},
    {"border-image-source", "none", "none", ValueKind::Image, kOwn},
    {"border-image-slice", "100%", "", ValueKind::Any, kOwn},
    {"border-image-width", "1", "auto", ValueKind::Components, kOwn},
    {"border-image-outset", "0", "", ValueKind::Components, kOwn},
    {"border-image-repeat", "stretch", "", ValueKind::Any, kOwn},
    {"outline-color", "currentcolor", "", ValueKind::Color, kOwn},
    {"outline-style", "none", "none auto dotted dashed solid double groove ridge inset outset",
     ValueKind::Keyword, kOwn},
    {"outline-width", "0px", "", ValueKind::LineWidth, kOwn},
    {"outline-offset", "0px", "", ValueKind::Offset, kOwn},
    {"box-shadow", "none", "none", ValueKind::Shadows, kOwn},
    {"box-sizing", "content-box", "content-box border-box", ValueKind::Keyword, kOwn},
    {"box-decoration-break", "slice", "slice clone", ValueKind::Keyword, kOwn},
    {"width", "auto", kSizeKeywords, ValueKind::PositiveLengthPercentage, kOwn},
    {"height", "auto", kSizeKeywords, ValueKind::PositiveLengthPercentage, kOwn},
    {"min-width", "0px", kSizeKeywords, ValueKind::PositiveLengthPercentage, kOwn},
    {"min-height", "0px", kSizeKeywords, ValueKind::PositiveLengthPercentage, kOwn},
    {"max-width", "none", kMostSizeKeywords, ValueKind::PositiveLengthPercentage, kOwn},
    {"max-height", "none", kMostSizeKeywords, ValueKind::PositiveLengthPercentage, kOwn},
    {"aspect-ratio", "auto", "auto", ValueKind::Ratio, kOwn},
    {"overflow-x", "visible", kOverflows, ValueKind::Keyword, kOwn},
    {"overflow-y", "visible", kOverflows, ValueKind::Keyword, kOwn},
    {"overflow-anchor", "auto", "auto none", ValueKind::Keyword, kOwn},
    {"overscroll-behavior-x", "auto", "auto contain none", ValueKind::Keyword, kOwn},
    {"overscroll-behavior-y", "auto", "auto contain none", ValueKind::Keyword, kOwn},
    {"scroll-behavior", "auto", "auto smooth", ValueKind::Keyword, kOwn},
    {"scroll-snap-type", "none", "none", ValueKind::Any, kOwn},
    {"scroll-snap-align", "none", "none", ValueKind::Any, kOwn},
    {"scrollbar-width", "auto", "auto thin none", ValueKind::Keyword, kOwn},
    {"scrollbar-color", "auto", "auto", ValueKind::Components, kInherited},
    {"scrollbar-gutter", "auto", "auto", ValueKind::Any, kOwn},
    {"display", "inline",
     "none inline block list-item inline-block table inline-table table-row-group "
     "table-header-group table-footer-group table-row table-column-group table-column table-cell "
     "table-caption flow-root flex inline-flex grid inline-grid contents ruby ruby-text math "
     "-webkit-box -webkit-inline-box -webkit-flex=flex -webkit-inline-flex=inline-flex "
     "flow=block",
     ValueKind::Keyword, kOwn},
    {"position", "static", "static relative absolute fixed sticky", ValueKind::Keyword, kOwn},
    {"top", "auto", "auto", ValueKind::LengthPercentage, kOwn},
    {"right", "auto", "auto", ValueKind::LengthPercentage, kOwn},
    {"bottom", "auto", "auto", ValueKind::LengthPercentage, kOwn},
    {"left", "auto", "auto", ValueKind::LengthPercentage, kOwn},
    {"float", "none", "none left right inline-start inline-end", ValueKind::Keyword, kOwn},
    {"clear", "none", "none left right both inline-start inline-end", ValueKind::Keyword, kOwn},
    {"z-index", "auto", "auto", ValueKind::Integer, kOwn},
    {"clip", "auto", "auto", ValueKind::Clip, kOwn},
    {"visibility", "visible", "visible hidden collapse", ValueKind::Keyword, kInherited},
    {"zoom", "1", "normal=1", ValueKind::Factor, kOwn},
    {"contain", "none", "none", ValueKind::Any, kOwn},
    {"isolation", "auto", "auto isolate", ValueKind::Keyword, kOwn},
    {"vertical-align", "baseline",
     "baseline sub super top text-top middle bottom text-bottom -webkit-baseline-middle",
     ValueKind::LengthPercentage, kOwn},

    // Colours and backgrounds: CSS 2.1 chapter 14, CSS Backgrounds, Color, Compositing, Masking.
    {"color", "rgb(0, 0, 0)", "", ValueKind::Color, kInherited},
    {"opacity", "1", "", ValueKind::Alpha, kOwn},
    {"color-scheme", "normal", "normal", ValueKind::Any, kInherited},
    {"accent-color", "auto", "auto", ValueKind::Color, kInherited},
    {"caret-color", "currentcolor", "auto=currentcolor", ValueKind::Color, kInherited},
    {"background-color", "rgba(0, 0, 0, 0)", "", ValueKind::Color, kOwn},
    {"background-image", "none", "none", ValueKind::Images, kOwn},
    {"background-repeat", "repeat", "repeat repeat-x repeat-y no-repeat space round",
     ValueKind::Repeats, kOwn},
    {"background-attachment", "scroll", "scroll fixed local", ValueKind::KeywordLayers, kOwn},
    {"background-position", "0% 0%", "", ValueKind::Positions, kOwn},
    {"background-size", "auto", "auto cover contain", ValueKind::Sizes, kOwn},
    {"background-origin", "padding-box", kBoxes, ValueKind::KeywordLayers, kOwn},
    {"background-clip", "border-box", "border-box padding-box content-box text border-area",
     ValueKind::KeywordLayers, kOwn},
    {"background-blend-mode", "normal", "normal", ValueKind::Any, kOwn},
    {"mix-blend-mode", "normal",
     "normal multiply screen overlay darken lighten color-dodge color-burn hard-light soft-light "
     "difference exclusion hue saturation color luminosity plus-lighter",
     ValueKind::Keyword, kOwn},
    {"clip-path", "none", "none", ValueKind::Components, kOwn},
    {"mask-image", "none", "none", ValueKind::Images, kOwn},
    {"mask-repeat", "repeat", "repeat repeat-x repeat-y no-repeat space round", ValueKind::Repeats,
     kOwn},
    {"mask-position", "0% 0%", "", ValueKind::Positions, kOwn},
    {"mask-size", "auto", "auto cover contain", ValueKind::Sizes, kOwn},
    {"mask-origin", "border-box", kMaskBoxes, ValueKind::KeywordLayers, kOwn},
    {"mask-clip", "border-box", "no-clip", ValueKind::Any, kOwn},
    {"mask-mode", "match-source", "alpha luminance match-source", ValueKind::KeywordLayers, kOwn},
    {"mask-composite", "add", "add subtract intersect exclude", ValueKind::KeywordLayers, kOwn},
    {"mask-type", "luminance", "luminance alpha", ValueKind::Keyword, kOwn},
    {"filter", "none", "none", ValueKind::Components, kOwn},
    {"backdrop-filter", "none", "none", ValueKind::Components, kOwn},
    {"object-fit", "fill", "fill contain cover none scale-down", ValueKind::Keyword, kOwn},
    {"object-position", "50% 50%", "", ValueKind::Positions, kOwn},
    {"image-rendering", "auto", "auto crisp-edges pixelated -webkit-optimize-contrast",
     ValueKind::Keyword, kInherited},
    {"print-color-adjust", "economy", "economy exact", ValueKind::Keyword, kInherited},

    // Fonts and text: CSS 2.1 chapters 15 and 16, CSS Fonts, Text, Text Decoration, Writing Modes.
    {"font-family", "\"Times New Roman\"", "", ValueKind::FontFamily, kInherited},
    {"font-size", "16px", "", ValueKind::FontSize, kInherited},
    {"font-style", "normal", "normal italic oblique", ValueKind::FontStyle, kInherited},
    {"font-variant", "normal", kFontVariants, ValueKind::KeywordSet, kInherited},
    {"font-weight", "400", "", ValueKind::FontWeight, kInherited},
    {"font-stretch", "100%", "", ValueKind::FontStretch, kInherited},
    {"font-size-adjust", "none", "none", ValueKind::Any, kInherited},
    {"font-kerning", "auto", "auto normal none", ValueKind::Keyword, kInherited},
    {"font-variant-alternates", "normal", "normal", ValueKind::Any, kInherited},
    {"font-variant-caps", "normal",
     "normal small-caps all-small-caps petite-caps all-petite-caps unicase titling-caps",
     ValueKind::Keyword, kInherited},
    {"font-variant-east-asian", "normal", "normal", ValueKind::Any, kInherited},
    {"font-variant-ligatures", "normal", "normal none", ValueKind::Any, kInherited},
    {"font-variant-numeric", "normal", "normal", ValueKind::Any, kInherited},
    {"font-variant-position", "normal", "normal sub super", ValueKind::Keyword, kInherited},
    {"font-feature-settings", "normal", "normal", ValueKind::Any, kInherited},
    {"font-variation-settings", "normal", "normal", ValueKind::Any, kInherited},
    {"font-optical-sizing", "auto", "auto none", ValueKind::Keyword, kInherited},
    {"line-height", "normal", "normal", ValueKind::LineHeight, kInherited},
    {"letter-spacing", "normal", "", ValueKind::Spacing, kInherited},
    {"word-spacing", "0px", "", ValueKind::Spacing, kInherited},
    {"text-align", "start",
     "start end left right center justify -webkit-auto=start -webkit-left "
     "-webkit-right -webkit-center",
     ValueKind::Keyword, kInherited},
    {"text-align-last", "auto", "auto start end left right center justify", ValueKind::Keyword,
     kInherited},
    {"text-indent", "0px", "", ValueKind::LengthPercentage, kInherited},
    {"text-transform", "none", "none capitalize uppercase lowercase math-auto", ValueKind::Keyword,
     kInherited},
    {"text-decoration-line", "none", "none underline overline line-through blink",
     ValueKind::KeywordSet, kOwn},
    {"text-decoration-style", "solid", "solid double dotted dashed wavy", ValueKind::Keyword, kOwn},
    {"text-decoration-color", "currentcolor", "", ValueKind::Color, kOwn},
    {"text-decoration-thickness", "auto", "auto from-font", ValueKind::LengthPercentage, kOwn},
    {"text-decoration-skip-ink", "auto", "auto none all", ValueKind::Keyword, kInherited},
    {"text-underline-offset", "auto", "auto", ValueKind::LengthPercentage, kInherited},
    {"text-underline-position", "auto", "auto from-font under left right", ValueKind::KeywordSet,
     kInherited},
    {"text-emphasis-style", "none", "none", ValueKind::Any, kInherited},
    {"text-emphasis-color", "currentcolor", "", ValueKind::Color, kInherited},
    {"text-emphasis-position", "over", "", ValueKind::Any, kInherited},
    {"text-shadow", "none", "none", ValueKind::TextShadows, kInherited},
    {"text-overflow", "clip", "clip ellipsis", ValueKind::Keyword, kOwn},
    {"text-rendering", "auto", "auto optimizespeed optimizelegibility geometricprecision",
     ValueKind::Keyword, kInherited},
    {"text-justify", "auto", "auto none inter-word inter-character distribute=inter-character",
     ValueKind::Keyword, kInherited},
    {"text-size-adjust", "auto", "auto none=100%", ValueKind::Any, kInherited},
    {"white-space", "normal", "normal pre nowrap pre-wrap pre-line break-spaces",
     ValueKind::Keyword, kInherited},
    {"overflow-wrap", "normal", "normal break-word anywhere", ValueKind::Keyword, kInherited},
    {"word-break", "normal", "normal break-all keep-all break-word auto-phrase", ValueKind::Keyword,
     kInherited},
    {"line-break", "auto", "auto loose normal strict anywhere", ValueKind::Keyword, kInherited},
    {"hyphens", "manual", "none manual auto", ValueKind::Keyword, kInherited},
    {"tab-size", "8", "", ValueKind::LengthOrNumber, kInherited},
    {"direction", "ltr", "ltr rtl", ValueKind::Keyword, kInherited},
    {"unicode-bidi", "normal",
     "normal embed isolate bidi-override isolate-override plaintext -webkit-isolate=isolate "
     "-webkit-isolate-override=isolate-override -webkit-plaintext=plaintext",
     ValueKind::Keyword, kOwn},
    {"writing-mode", "horizontal-tb",
     "horizontal-tb vertical-rl vertical-lr sideways-rl sideways-lr lr=horizontal-tb "
     "lr-tb=horizontal-tb rl=horizontal-tb rl-tb=horizontal-tb tb=vertical-rl tb-rl=vertical-rl",
     ValueKind::Keyword, kInherited},
    {"text-orientation", "mixed", "mixed upright sideways sideways-right=sideways",
     ValueKind::Keyword, kInherited},
    {"text-combine-upright", "none", "none all", ValueKind::Keyword, kInherited},
    {"ruby-align", "space-around", "start center space-between space-around", ValueKind::Keyword,
     kInherited},
    {"ruby-position", "over", "over under", ValueKind::Keyword, kInherited},

    // Lists, tables and content: CSS 2.1 chapters 12 and 17.
    {"content", "normal", "normal none", ValueKind::Content, kOwn},
    {"quotes", "auto", "auto none", ValueKind::QuotePairs, kInherited},
    {"counter-increment", "none", "none", ValueKind::CounterChanges, kOwn},
    {"counter-reset", "none", "none", ValueKind::CounterValues, kOwn},
    {"counter-set", "none", "none", ValueKind::CounterValues, kOwn},
    {"list-style-type", "disc",
     "none disc circle square decimal decimal-leading-zero lower-roman upper-roman lower-greek "
     "lower-latin upper-latin armenian georgian lower-alpha upper-alpha disclosure-open "
     "disclosure-closed",
     ValueKind::Any, kInherited},
    {"list-style-position", "outside", "inside outside", ValueKind::Keyword, kInherited},
    {"list-style-image", "none", "none", ValueKind::Image, kInherited},
    {"border-collapse", "separate", "separate collapse", ValueKind::Keyword, kInherited},
    {"border-spacing", "0px", "", ValueKind::LengthPair, kInherited},
    {"caption-side", "top", "top bottom", ValueKind::Keyword, kInherited},
    {"empty-cells", "show", "show hide", ValueKind::Keyword, kInherited},
    {"table-layout", "auto", "auto fixed", ValueKind::Keyword, kOwn},

    // Paged media and columns: CSS 2.1 chapter 13, CSS Fragmentation, Multi-column Layout.
    {"page-break-before", "auto", kPageBreaks, ValueKind::Keyword, kOwn},
    {"page-break-after", "auto", kPageBreaks, ValueKind::Keyword, kOwn},
    {"page-break-inside", "auto", "auto avoid", ValueKind::Keyword, kOwn},
    {"break-before", "auto", kBreaks, ValueKind::Keyword, kOwn},
    {"break-after", "auto", kBreaks, ValueKind::Keyword, kOwn},
    {"break-inside", "auto", "auto avoid avoid-page avoid-column", ValueKind::Keyword, kOwn},
    {"orphans", "2", "", ValueKind::PositiveInteger, kInherited},
    {"widows", "2", "", ValueKind::PositiveInteger, kInherited},
    {"page", "auto", "auto", ValueKind::Any, kOwn},
    {"column-count", "auto", "auto", ValueKind::PositiveInteger, kOwn},
    {"column-width", "auto", "auto", ValueKind::PositiveLength, kOwn},
    {"column-fill", "balance", "balance auto", ValueKind::Keyword, kOwn},
    {"column-span", "none", "none all", ValueKind::Keyword, kOwn},
    {"column-rule-color", "currentcolor", "", ValueKind::Color, kOwn},
    {"column-rule-style", "none", kLineStyles, ValueKind::Keyword, kOwn},
    {"column-rule-width", "0px", "", ValueKind::LineWidth, kOwn},
    {"column-gap", "normal", "normal", ValueKind::PositiveLengthPercentage, kOwn},
    {"row-gap", "normal", "normal", ValueKind::PositiveLengthPercentage, kOwn},

    // Flexible boxes and grids: CSS Flexible Box Layout, Grid Layout, Box Alignment.
    {"flex-basis", "auto", "auto content min-content max-content fit-content stretch",
     ValueKind::PositiveLengthPercentage, kOwn},
    {"flex-direction", "row", "row row-reverse column column-reverse", ValueKind::Keyword, kOwn},
    {"flex-grow", "0", "", ValueKind::PositiveNumber, kOwn},
    {"flex-shrink", "1", "", ValueKind::PositiveNumber, kOwn},
    {"flex-wrap", "nowrap", "nowrap wrap wrap-reverse", ValueKind::Keyword, kOwn},
    {"order", "0", "", ValueKind::Integer, kOwn},
    {"align-content", "normal", kAlignContent, ValueKind::Alignment, kOwn},
    {"align-items", "normal", kAlignItems, ValueKind::Alignment, kOwn},
    {"align-self", "auto", kAlignSelf, ValueKind::Alignment, kOwn},
    {"justify-content", "normal", kJustifyContent, ValueKind::Alignment, kOwn},
    {"justify-items", "normal", kJustifyItems, ValueKind::Alignment, kOwn},
    {"justify-self", "auto", kJustifySelf, ValueKind::Alignment, kOwn},
    {"grid-auto-columns", "auto", "auto", ValueKind::Components, kOwn},
    {"grid-auto-rows", "auto", "auto", ValueKind::Components, kOwn},
    {"grid-auto-flow", "row", "row column dense", ValueKind::KeywordSet, kOwn},
    {"grid-template-areas", "none", "none", ValueKind::Any, kOwn},
    {"grid-template-columns", "none", "none", ValueKind::Components, kOwn},
    {"grid-template-rows", "none", "none", ValueKind::Components, kOwn},
    {"grid-column-start", "auto", "auto", ValueKind::Any, kOwn},
    {"grid-column-end", "auto", "auto", ValueKind::Any, kOwn},
    {"grid-row-start", "auto", "auto", ValueKind::Any, kOwn},
    {"grid-row-end", "auto", "auto", ValueKind::Any, kOwn},

    // Motion: CSS Transforms, Transitions, Animations, Will Change.
    {"transform", "none", "none", ValueKind::Components, kOwn},
    {"transform-box", "view-box", "content-box border-box fill-box stroke-box view-box",
     ValueKind::Keyword, kOwn},
    {"transform-origin", "50% 50%", "", ValueKind::Origin, kOwn},
    {"transform-style", "flat", "flat preserve-3d", ValueKind::Keyword, kOwn},
    {"perspective", "none", "none", ValueKind::PositiveLength, kOwn},
    {"perspective-origin", "50% 50%", "", ValueKind::Positions, kOwn},
    {"backface-visibility", "visible", "visible hidden", ValueKind::Keyword, kOwn},
    {"rotate", "none", "none", ValueKind::Components, kOwn},
    {"scale", "none", "none", ValueKind::Any, kOwn},
    {"translate", "none", "none", ValueKind::Components, kOwn},
    {"transition-property", "all", "all none", ValueKind::Any, kOwn},
    {"transition-duration", "0s", "", ValueKind::PositiveTimes, kOwn},
    {"transition-delay", "0s", "", ValueKind::Times, kOwn},
    {"transition-timing-function", "ease", "ease", ValueKind::Components, kOwn},
    {"animation-name", "none", "none", ValueKind::Any, kOwn},
    {"animation-duration", "0s", "auto=0s", ValueKind::PositiveTimes, kOwn},
    {"animation-delay", "0s", "", ValueKind::Times, kOwn},
    {"animation-timing-function", "ease", "ease", ValueKind::Components, kOwn},
    {"animation-iteration-count", "1", "", ValueKind::Any, kOwn},
    {"animation-direction", "normal", "normal reverse alternate alternate-reverse",
     ValueKind::KeywordLayers, kOwn},
    {"animation-fill-mode", "none", "none forwards backwards both", ValueKind::KeywordLayers, kOwn},
    {"animation-play-state", "running", "running paused", ValueKind::KeywordLayers, kOwn},
    {"will-change", "auto", "auto", ValueKind::Any, kOwn},

    // Interaction: CSS Basic User Interface.
    {"cursor", "auto",
     "auto none default context-menu help pointer progress wait cell crosshair text vertical-text "
     "alias copy move no-drop not-allowed grab grabbing e-resize n-resize ne-resize nw-resize "
     "s-resize se-resize sw-resize w-resize ew-resize ns-resize nesw-resize nwse-resize col-resize "
     "row-resize all-scroll zoom-in zoom-out -webkit-grab=grab -webkit-grabbing=grabbing "
     "-webkit-zoom-in=zoom-in -webkit-zoom-out=zoom-out",
     ValueKind::Cursor, kInherited},
    {"pointer-events", "auto",
     "auto none visiblepainted visiblefill visiblestroke visible painted fill stroke "
     "bounding-box all",
     ValueKind::Keyword, kInherited},
    {"resize", "none", "none both horizontal vertical block inline", ValueKind::Keyword, kOwn},
    {"user-select", "auto", "auto none text all", ValueKind::Keyword, kInherited},
    {"appearance", "none",
     "none auto base-select button checkbox listbox menulist menulist-button meter progress-bar "
     "radio searchfield  textarea textfield",
     ValueKind::Keyword, kOwn},
    {"touch-action", "auto", "auto", ValueKind::Any, kOwn},
    {"-webkit-box-orient", "horizontal",
     "horizontal vertical inline-axis=horizontal block-axis=vertical", ValueKind::Keyword, kOwn},
    {"-webkit-line-clamp", "none", "none", ValueKind::PositiveInteger, kOwn},
    {"-webkit-font-smoothing", "auto", "auto none antialiased subpixel-antialiased",
     ValueKind::Keyword, kInherited},
    {"-webkit-tap-highlight-color", "rgba(0, 0, 0, 0.18)", "", ValueKind::Color, kInherited},
    {"-webkit-text-fill-color", "currentcolor", "", ValueKind::Color, kInherited},
    {"-webkit-text-stroke-color", "currentcolor", "", ValueKind::Color, kInherited},
    {"-webkit-text-stroke-width", "0px", "thin=1px medium=3px thick=5px", ValueKind::PositiveLength,
     kInherited},

    // Drawings: SVG 2 appendix F, CSS Fill and Stroke, Filter Effects.
    {"alignment-baseline", "auto",
     "auto baseline before-edge text-before-edge middle central after-edge text-after-edge "
     "ideographic alphabetic hanging mathematical",
     ValueKind::Keyword, kOwn},
    {"baseline-shift", "0px", "baseline=0px sub super", ValueKind::NumericLength, kOwn},
    {"clip-rule", "nonzero", "nonzero evenodd", ValueKind::Keyword, kInherited},
    {"color-interpolation", "srgb", "auto srgb linearrgb", ValueKind::Keyword, kInherited},
    {"color-interpolation-filters", "linearrgb", "auto srgb linearrgb", ValueKind::Keyword,
     kInherited},
    {"color-rendering", "auto", "auto optimizespeed optimizequality", ValueKind::Keyword,
     kInherited},
    {"cx", "0px", "", ValueKind::NumericLength, kOwn},
    {"cy", "0px", "", ValueKind::NumericLength, kOwn},
    {"d", "none", "none", ValueKind::Any, kOwn},
    {"dominant-baseline", "auto",
     "auto alphabetic central hanging ideographic mathematical middle text-after-edge "
     "text-before-edge use-script no-change reset-size",
     ValueKind::Keyword, kInherited},
    {"fill", "rgb(0, 0, 0)", "none context-fill context-stroke", ValueKind::Paint, kInherited},
    {"fill-opacity", "1", "", ValueKind::Alpha, kInherited},
    {"fill-rule", "nonzero", "nonzero evenodd", ValueKind::Keyword, kInherited},
    {"flood-color", "rgb(0, 0, 0)", "", ValueKind::Color, kOwn},
    {"flood-opacity", "1", "", ValueKind::Alpha, kOwn},
    {"lighting-color", "rgb(255, 255, 255)", "", ValueKind::Color, kOwn},
    {"marker-start", "none", "none", ValueKind::Components, kInherited},
    {"marker-mid", "none", "none", ValueKind::Components, kInherited},
    {"marker-end", "none", "none", ValueKind::Components, kInherited},
    {"paint-order", "normal", "normal", ValueKind::Any, kInherited},
    {"r", "0px", "", ValueKind::PositiveNumericLength, kOwn},
    {"rx", "auto", "auto", ValueKind::PositiveNumericLength, kOwn},
    {"ry", "auto", "auto", ValueKind::PositiveNumericLength, kOwn},
    {"shape-rendering", "auto", "auto optimizespeed crispedges geometricprecision",
     ValueKind::Keyword, kInherited},
    {"stop-color", "rgb(0, 0, 0)", "", ValueKind::Color, kOwn},
    {"stop-opacity", "1", "", ValueKind::Alpha, kOwn},
    {"stroke", "none", "none context-fill context-stroke", ValueKind::Paint, kInherited},
    {"stroke-dasharray", "none", "none", ValueKind::Dashes, kInherited},
    {"stroke-dashoffset", "0px", "", ValueKind::NumericLength, kInherited},
    {"stroke-linecap", "butt", "butt round square", ValueKind::Keyword, kInherited},
    {"stroke-linejoin", "miter", "miter round bevel", ValueKind::Keyword, kInherited},
    {"stroke-miterlimit", "4", "", ValueKind::PositiveNumber, kInherited},
    {"stroke-opacity", "1", "", ValueKind::Alpha, kInherited},
    {"stroke-width", "1px", "", ValueKind::PositiveNumericLength, kInherited},
    {"text-anchor", "start", "start middle end", ValueKind::Keyword, kInherited},
    {"vector-effect", "none", "none non-scaling-stroke", ValueKind::Keyword, kOwn},
    {"x", "0px", "", ValueKind::NumericLength, kOwn},
    {"y", "0px", "", ValueKind::NumericLength, kOwn},
    {"shape-outside", "none", "none", ValueKind::Components, kOwn},
    {"shape-margin", "0px", "", ValueKind::PositiveLengthPercentage, kOwn},
    {"shape-image-threshold", "0", "", ValueKind::Alpha, kOwn},

    // Speech: CSS 2.1 appendix A.
    {"azimuth", "center", "", ValueKind::Any, kInherited},
    {"cue-after", "none", "none", ValueKind::Any, kOwn},
    {"cue-before", "none", "none", ValueKind::Any, kOwn},
    {"elevation", "level", "", ValueKind::Any, kInherited},
    {"pause-after", "0s", "", ValueKind::Any, kOwn},
    {"pause-before", "0s", "", ValueKind::Any, kOwn},
    {"pitch", "medium", "", ValueKind::Any, kInherited},
    {"pitch-range", "50", "", ValueKind::Any, kInherited},
    {"play-during", "auto", "auto none", ValueKind::Any, kOwn},
    {"richness", "50", "", ValueKind::Any, kInherited},
    {"speak", "normal", "normal none spell-out", ValueKind::Any, kInherited},
    {"speak-header", "once", "once always", ValueKind::Keyword, kInherited},
    {"speak-numeral", "continuous", "digits continuous", ValueKind::Keyword, kInherited},
    {"speak-punctuation", "none", "code none", ValueKind::Keyword, kInherited},
    {"speech-rate", "medium", "", ValueKind::Any, kInherited},
    {"stress", "50", "", ValueKind::Any, kInherited},
    {"voice-family", "", "", ValueKind::Any, kInherited},
    {"volume", "medium", "", ValueKind::Any, kInherited},
};

}  // namespace Dom::CSS::detail
