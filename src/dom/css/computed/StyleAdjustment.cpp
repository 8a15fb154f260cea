// SPDX-License-Identifier: MIT
#include "dom/css/computed/StyleAdjustment.h"

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

namespace Dom::CSS::detail {

namespace {

struct Display {
    std::string_view inside;  // in the lines of its parent
    std::string_view alone;
};

std::string_view ValueOf(const ValueList& own, PropertyId id) {
    const SharedText* const value = own.Find(id);
    return value != nullptr ? (*value)->view() : KnownProperties()[id].initial;
}

SharedText Share(std::string_view text) { return std::make_shared<const astring>(text); }

// Returns what an element that makes a box of its own is displayed as.
std::string_view AsBlock(std::string_view display) {
    constexpr Display kBlocks[] = {
        {"inline", "block"},          {"inline-block", "block"}, {"inline-table", "table"},
        {"inline-flex", "flex"},      {"inline-grid", "grid"},   {"ruby", "block"},
        {"table-row-group", "block"}, {"table-column", "block"}, {"table-column-group", "block"},
        {"table-row", "block"},       {"table-cell", "block"},   {"table-header-group", "block"},
        {"table-caption", "block"},   {"ruby-text", "block"},    {"table-footer-group", "block"},
    };
    const auto* const block = std::ranges::find(kBlocks, display, &Display::inside);
    return block != std::end(kBlocks) ? block->alone : display;
}

void AdjustDisplay(ValueList& own, bool isBlock) {
    static const PropertyId kDisplay = *FindProperty("display");
    static const PropertyId kFloat = *FindProperty("float");
    static const PropertyId kPosition = *FindProperty("position");
    const std::string_view position = ValueOf(own, kPosition);
    const bool isPositioned = position == "absolute" || position == "fixed";
    if (isPositioned && own.Find(kFloat) != nullptr) own.Set(kFloat, Share("none"));
    if (!isBlock && !isPositioned && ValueOf(own, kFloat) == "none") return;
    const std::string_view display = ValueOf(own, kDisplay);
    if (display == "none" || display == "contents") return;
    const std::string_view block = AsBlock(display);
    if (block != display) own.Set(kDisplay, Share(block));
}

struct Line {
    PropertyId style;
    PropertyId width;
};

Line LineOf(std::string_view prefix) {
    const std::string name(prefix);
    return {*FindProperty(name + "-style"), *FindProperty(name + "-width")};
}

// A line without a style has no width; one without a width that is declared is of "medium" width.
void AdjustLine(ValueList& own, const Line& line) {
    const std::string_view style = ValueOf(own, line.style);
    const bool isThere = style != "none" && style != "hidden";
    const bool hasWidth = own.Find(line.width) != nullptr;
    if (isThere == hasWidth) return;
    own.Set(line.width, Share(isThere ? "3px" : "0px"));
}

bool IsContainer(std::string_view display) {
    return display.ends_with("flex") || display.ends_with("grid");
}

}  // namespace

void AdjustStyle(StyleData& style, StyledPlace place) {
    static const std::array kLines = {LineOf("border-top"),    LineOf("border-right"),
                                      LineOf("border-bottom"), LineOf("border-left"),
                                      LineOf("outline"),       LineOf("column-rule")};
    static const PropertyId kContent = *FindProperty("content");
    static const PropertyId kDisplay = *FindProperty("display");
    AdjustDisplay(style.own, place.isRoot || place.isItem);
    style.hasItems = IsContainer(ValueOf(style.own, kDisplay));
    for (const Line& line : kLines)
        AdjustLine(style.own, line);
    if (!place.isPart && ValueOf(style.own, kContent) == "none") style.own.Remove(kContent);
}

}  // namespace Dom::CSS::detail
