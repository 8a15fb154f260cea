// SPDX-License-Identifier: MIT
#include "css/MadeSheet.h"

#include "css/Vocabulary.h"

#include <cstdio>
#include <utility>

namespace bench {

namespace {

constexpr unsigned kSeed = 20261121;       // any fixed number
constexpr unsigned kRulesPerComment = 50;  // about

constexpr const char* kKeywords[][2] = {
    {"display", "block"},           {"display", "none"},       {"float", "left"},
    {"position", "relative"},       {"position", "absolute"},  {"clear", "both"},
    {"overflow", "hidden"},         {"text-align", "center"},  {"text-align", "right"},
    {"font-weight", "bold"},        {"font-style", "italic"},  {"text-decoration", "none"},
    {"vertical-align", "middle"},   {"white-space", "nowrap"}, {"cursor", "pointer"},
    {"list-style-type", "none"},    {"visibility", "hidden"},  {"text-transform", "uppercase"},
    {"border-collapse", "collapse"}};

constexpr const char* kLengthNames[] = {
    "width",       "height",     "margin-top", "margin-bottom", "margin-left",
    "padding-top", "min-height", "max-width",  "padding-left",  "font-size",
    "line-height", "top",        "left",       "text-indent"};

constexpr const char* kColourNames[] = {"color", "background-color", "border-color"};

constexpr const char* kFamilies[] = {
    "Arial, Helvetica, sans-serif", "\"Helvetica Neue\", Arial, sans-serif",
    "Georgia, \"Times New Roman\", serif", "Menlo, Consolas, monospace"};

constexpr const char* kPseudoClasses[] = {":hover",  ":focus",      ":first-child",
                                          ":link",   ":last-child", ":active",
                                          ":before", ":after",      ":first-child"};

constexpr const char* kInputs[] = {"input[type=\"text\"]", "input[disabled]", "a[rel=external]",
                                   "button[type=\"submit\"]"};

class SheetMaker {
public:
    // Adds a rule, and now and then a comment before it.
    void AddRule();

    std::size_t Size() const { return sheet_.text.size(); }
    MadeSheet Take() { return std::move(sheet_); }

private:
    void AddComment();
    void AddSelectors();
    std::string Selector();
    std::string Compound();
    std::string Declarations();
    std::string Declaration();
    std::string Shorthand();
    std::string Length();
    std::string Sides();
    std::string Colour();

    Dice dice_{kSeed};
    MadeSheet sheet_;
    std::string previous_;  // declarations
};

void SheetMaker::AddRule() {
    if (dice_.Below(kRulesPerComment) == 0) AddComment();
    AddSelectors();
    std::string declarations = Declarations();
    while (declarations == previous_)
        declarations = Declarations();
    sheet_.text += " {\n" + declarations + "}\n";
    previous_ = std::move(declarations);
    ++sheet_.totals.rules;
}

void SheetMaker::AddComment() {
    sheet_.text += "\n/* The " + dice_.ClassName() + " and what stands beside the ";
    sheet_.text += dice_.ClassName() + ": see " + dice_.ElementName() + " above. */\n";
}

// One selector is the usual case.
void SheetMaker::AddSelectors() {
    const unsigned chance = dice_.Below(10);
    const unsigned count = chance < 7 ? 1 : chance - 5;
    for (unsigned i = 0; i < count; ++i) {
        if (i > 0) sheet_.text += dice_.Below(2) == 0 ? ", " : ",\n";
        sheet_.text += Selector();
    }
    sheet_.totals.selectors += count;
}

std::string SheetMaker::Selector() {
    const unsigned chance = dice_.Below(100);
    if (chance < 45) return Compound();
    if (chance < 65) return Compound() + " " + Compound();
    if (chance < 72) return Compound() + " " + dice_.ElementName();
    if (chance < 80) return Compound() + " > " + Compound();
    if (chance < 83) return Compound() + " + " + Compound();
    if (chance < 95) return Compound() + dice_.OneOf(kPseudoClasses);
    return "." + dice_.ClassName() + " " + dice_.OneOf(kInputs);
}

std::string SheetMaker::Compound() {
    const unsigned chance = dice_.Below(100);
    if (chance < 60) return "." + dice_.ClassName();
    if (chance < 80) return dice_.ElementName() + "." + dice_.ClassName();
    if (chance < 86) return "." + dice_.ClassName() + "." + dice_.ClassName();
    if (chance < 92) return "#" + dice_.Id();
    return dice_.ElementName();
}

std::string SheetMaker::Declarations() {
    std::string text;
    for (unsigned count = 1 + dice_.Below(6); count > 0; --count) {
        text += "  " + Declaration();
        text += dice_.Below(60) == 0 ? " !important;\n" : ";\n";
    }
    return text;
}

std::string SheetMaker::Declaration() {
    const unsigned chance = dice_.Below(100);
    if (chance < 30) {
        const auto& keyword = dice_.OneOf(kKeywords);
        return std::string(keyword[0]) + ": " + keyword[1];
    }
    if (chance < 58) return std::string(dice_.OneOf(kLengthNames)) + ": " + Length();
    if (chance < 75) return std::string(dice_.OneOf(kColourNames)) + ": " + Colour();
    return Shorthand();
}

std::string SheetMaker::Shorthand() {
    switch (dice_.Below(8)) {
    case 0:
    case 1: return "margin: " + Sides();
    case 2:
    case 3: return "padding: " + Sides();
    case 4: return "border: 1px solid " + Colour();
    case 5: return "border-bottom: 2px dotted " + Colour();
    case 6:
        return "background: url(\"images/" + dice_.ClassName() + ".png\") no-repeat 0 -" + Length();
    default: return std::string("font-family: ") + dice_.OneOf(kFamilies);
    }
}

std::string SheetMaker::Length() {
    const unsigned number = dice_.Below(100);
    switch (dice_.Below(8)) {
    case 0: return "0";
    case 1: return std::to_string(number) + "%";
    case 2:
    case 3: return std::to_string(number / 10) + "." + std::to_string(number % 10) + "em";
    default: return std::to_string(number) + "px";
    }
}

std::string SheetMaker::Sides() {
    std::string text = Length();
    for (unsigned more = dice_.Below(4); more > 0; --more)
        text += " " + Length();
    return text;
}

std::string SheetMaker::Colour() {
    const unsigned chance = dice_.Below(10);
    char text[24];
    if (chance < 3) {
        std::snprintf(text, sizeof text, "#%03x", dice_.Below(0x1000));
    } else if (chance < 8) {
        std::snprintf(text, sizeof text, "#%06x", dice_.Below(0x1000000));
    } else {
        return chance == 8 ? "rgb(10, 20, 30)" : "red";
    }
    return text;
}

}  // namespace

MadeSheet MakeSheetOfSize(std::size_t bytes) {
    SheetMaker maker;
    while (maker.Size() < bytes)
        maker.AddRule();
    return maker.Take();
}

MadeSheet MakeSheetOfRules(std::size_t rules) {
    SheetMaker maker;
    for (std::size_t i = 0; i < rules; ++i)
        maker.AddRule();
    return maker.Take();
}

std::string WithoutComments(const std::string& text) {
    std::string rest;
    std::size_t position = 0;
    while (true) {
        const std::size_t begin = text.find("/*", position);
        rest.append(text, position, begin - position);
        if (begin == std::string::npos) return rest;
        position = text.find("*/", begin) + 2;
    }
}

}  // namespace bench
