// SPDX-License-Identifier: MIT
#include "reader/Bombs.h"

#include <string_view>

namespace bench {

namespace {

constexpr char kTooMuch[] = "Entity expansion limit exceeded";
constexpr char kTooDeep[] = "Entity nesting limit exceeded";
constexpr char kCyclic[] = "Cyclic entity reference";

std::string Repeat(std::string_view piece, int count) {
    std::string text;
    text.reserve(piece.size() * static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        text += piece;
    }
    return text;
}

void AppendDeclaration(std::string& text, const std::string& name, std::string_view value) {
    text += "<!ENTITY ";
    text += name;
    text += " \"";
    text += value;
    text += "\">\n";
}

// Returns a document with these declarations and with `references` where they have to be.
std::string DocumentWith(std::string_view declarations, BombPlace where,
                         std::string_view references) {
    const bool isContent = where == BombPlace::Content;
    std::string document;
    document.reserve(declarations.size() + references.size() + 100);
    document += "<!DOCTYPE r [\n";
    document += declarations;
    document += isContent ? "]><r>" : "]><r a=\"";
    document += references;
    document += isContent ? "</r>" : "\"/>";
    return document;
}

// Declares `levels` entities, each with `width` references to the one before it between `begin` and
// `end`; the first one has `text`. Refers to the last one.
std::string Levels(BombPlace where, std::string_view text, int levels, int width,
                   const std::string& begin = "", const std::string& end = "") {
    std::string declarations;
    AppendDeclaration(declarations, "e0", text);
    for (int level = 1; level <= levels; ++level) {
        const std::string below = begin + "&e" + std::to_string(level - 1) + ";" + end;
        AppendDeclaration(declarations, "e" + std::to_string(level), Repeat(below, width));
    }
    return DocumentWith(declarations, where, "&e" + std::to_string(levels) + ";");
}

std::string BillionLaughs(BombPlace where) { return Levels(where, "lol", 10, 10); }

std::string WideMarkup(BombPlace where) { return Levels(where, "<x/>", 3, 1000, "<b>", "</b>"); }

std::string EmptyGrowth(BombPlace where) { return Levels(where, "", 60, 2); }

// One long text, a hundred thousand times, each reference on a line of its own.
constexpr int kLongText = 100'000;
constexpr int kFirstReference = 3;  // is on this line

std::string QuadraticBlowup(BombPlace where) {
    std::string declarations;
    AppendDeclaration(declarations, "e", std::string(kLongText, 'x'));
    return DocumentWith(declarations, where, Repeat("&e;\n", 100'000));
}

// The references are refused for being more than 100 times the input. Without that rule this
// would be on the line on which they come to be more than 8 MiB.
constexpr int kBehind8MiB = kFirstReference + 8 * 1024 * 1024 / kLongText + 1;

std::string Chain(BombPlace where) {
    constexpr int kCount = 100'000;
    std::string declarations;
    declarations.reserve(kCount * std::string_view("<!ENTITY e00000 \"&e00000;\">\n").size());
    for (int i = 0; i + 1 < kCount; ++i) {
        AppendDeclaration(declarations, "e" + std::to_string(i),
                          "&e" + std::to_string(i + 1) + ";");
    }
    AppendDeclaration(declarations, "e" + std::to_string(kCount - 1), "end");
    return DocumentWith(declarations, where, "&e0;");
}

std::string DirectCycle(BombPlace where) {
    return DocumentWith("<!ENTITY e \"text &e; text\">\n", where, "&e;");
}

std::string IndirectCycle(BombPlace where) {
    constexpr int kCount = 100;
    std::string declarations;
    for (int i = 0; i < kCount; ++i) {
        AppendDeclaration(declarations, "e" + std::to_string(i),
                          "text &e" + std::to_string((i + 1) % kCount) + "; text");
    }
    return DocumentWith(declarations, where, "&e0;");
}

constexpr BombPlace kContent = BombPlace::Content;
constexpr BombPlace kAttribute = BombPlace::Attribute;

// clang-format off
constexpr Bomb kBombs[] = {
    {"billion laughs, 10 levels of 10",    kContent,   BillionLaughs,   kTooMuch, 1},
    {"billion laughs, 10 levels of 10",    kAttribute, BillionLaughs,   kTooMuch, 1},
    {"3 levels of 1,000 with markup",      kContent,   WideMarkup,      kTooMuch, 1},
    {"100 KB, 100,000 times",              kContent,   QuadraticBlowup, kTooMuch, kBehind8MiB},
    {"100 KB, 100,000 times",              kAttribute, QuadraticBlowup, kTooMuch, kBehind8MiB},
    {"empty entities, 60 levels of 2",     kContent,   EmptyGrowth,     kTooMuch, 1},
    {"empty entities, 60 levels of 2",     kAttribute, EmptyGrowth,     kTooMuch, 1},
    {"100,000 that each name the next",    kContent,   Chain,           kTooDeep, 1},
    {"100,000 that each name the next",    kAttribute, Chain,           kTooDeep, 1},
    {"an entity that names itself",        kContent,   DirectCycle,     kCyclic,  1},
    {"an entity that names itself",        kAttribute, DirectCycle,     kCyclic,  1},
    {"a ring of 100 entities",             kContent,   IndirectCycle,   kCyclic,  1},
    {"a ring of 100 entities",             kAttribute, IndirectCycle,   kCyclic,  1},
};
// clang-format on

}  // namespace

std::span<const Bomb> Bombs() { return kBombs; }

}  // namespace bench
