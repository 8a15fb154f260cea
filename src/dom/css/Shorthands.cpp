// SPDX-License-Identifier: MIT
#include <espalier/dom/DOMException.h>

#include "dom/css/AsciiCase.h"
#include "dom/css/CharacterFlags.h"
#include "dom/css/Messages.h"
#include "dom/css/PropertyBuilder.h"
#include "dom/css/computed/ShorthandExpansion.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstddef>
#include <vector>

// How the properties that stand for several others are taken apart. Values are split at white
// space alone: neither quotes nor parentheses keep a piece together.

namespace Dom::CSS::detail {

namespace {

constexpr unsigned kSideCount = 4;

constexpr std::string_view kMargins[kSideCount] = {"margin-top", "margin-right", "margin-bottom",
                                                   "margin-left"};
constexpr std::string_view kPaddings[kSideCount] = {"padding-top", "padding-right",
                                                    "padding-bottom", "padding-left"};

enum BorderPart : unsigned { kWidth, kStyle, kColor, kPartCount };

constexpr std::string_view kBorders[kPartCount][kSideCount] = {
    {"border-top-width", "border-right-width", "border-bottom-width", "border-left-width"},
    {"border-top-style", "border-right-style", "border-bottom-style", "border-left-style"},
    {"border-top-color", "border-right-color", "border-bottom-color", "border-left-color"},
};

// By side; then all of them.
constexpr std::string_view kBorderShorthands[] = {"border-top", "border-right", "border-bottom",
                                                  "border-left", "border"};

constexpr std::string_view kBorderStyles[] = {"none",   "hidden", "dotted", "dashed", "solid",
                                              "double", "groove", "ridge",  "inset",  "outset"};

// The first pieces of a value, as many as a shorthand takes; the others are ignored.
template <std::size_t Most>
class Tokens {
public:
    explicit Tokens(std::string_view value) {
        const char* at = value.data();
        const char* const end = at + value.size();
        while (count_ < Most) {
            while (at != end && Is(*at, kBlank))
                ++at;
            if (at == end) return;
            const char* const begin = at;
            while (at != end && !Is(*at, kBlank))
                ++at;
            tokens_[count_++] = {begin, static_cast<std::size_t>(at - begin)};
        }
    }

    std::size_t count() const { return count_; }
    std::string_view operator[](std::size_t index) const {
        assert(index < count_);
        return tokens_[index];
    }

private:
    std::array<std::string_view, Most> tokens_;
    std::size_t count_ = 0;
};

template <std::size_t Most>
Tokens<Most> RequiredTokens(std::string_view value) {
    const Tokens<Most> tokens(value);
    if (tokens.count() == 0) {
        DOMException::ThrowDOMException(DOMException::SYNTAX_ERR, Message::kValueMissing);
    }
    return tokens;
}

constexpr std::string_view kShorthands[] = {
    "margin",     "padding",      "background",    "border-width", "border-style", "border-color",
    "border-top", "border-right", "border-bottom", "border-left",  "border"};

// Finds one by its name in any case; null when there is none.
const std::string_view* FindShorthand(std::string_view name) {
    constexpr std::string_view kFirstLetters = "mpb";
    if (name.empty() || kFirstLetters.find(ToLower(name.front())) == std::string_view::npos) {
        return nullptr;
    }
    for (const std::string_view& shorthand : kShorthands) {
        if (EqualIgnoringCase(shorthand, name)) return &shorthand;
    }
    return nullptr;
}

bool BeginsWithOneOf(std::string_view token, std::string_view characters) {
    return characters.find(token.front()) != std::string_view::npos;
}

// Deliberate: of colours only "#..." and what begins with "r" is one here; other names are dropped.
bool IsBorderPart(unsigned part, std::string_view token) {
    switch (part) {
    case kWidth: return Is(token.front(), kDigit);
    case kStyle: return std::ranges::find(kBorderStyles, token) != std::end(kBorderStyles);
    default: return BeginsWithOneOf(token, "r#");
    }
}

bool IsImage(std::string_view token) {
    return EqualIgnoringCase(token.substr(0, 4), "url(") || EqualIgnoringCase(token, "none");
}

// Returns two pieces as one text, with a space between them.
astring Joined(std::string_view first, std::string_view second) {
    astring both = first;
    both += ' ';
    both += second;
    return both;
}

}  // namespace

bool PropertyBuilder::AddShorthand(std::string_view name, std::string_view value) {
    if (name == "margin") {
        AddSides(kMargins, value);
    } else if (name == "padding") {
        AddSides(kPaddings, value);
    } else if (name == "background") {
        AddBackground(value);
    } else if (name == "border-width") {
        AddSides(kBorders[kWidth], value);
    } else if (name == "border-style") {
        AddSides(kBorders[kStyle], value);
    } else if (name == "border-color") {
        AddSides(kBorders[kColor], value);
    } else {
        const auto* const border = std::ranges::find(kBorderShorthands, name);
        if (border == std::end(kBorderShorthands)) return false;
        const auto side = static_cast<unsigned>(border - kBorderShorthands);
        if (side < kSideCount) {
            AddBorder(side, side + 1, value);
        } else {
            AddBorder(0, kSideCount, value);
        }
    }
    return true;
}

// CSS 2.1 section 8.3: one value is for all sides; of two the second is for left and right; of
// three the second, too, and the third for the bottom.
void PropertyBuilder::AddSides(const std::string_view (&names)[4], std::string_view value) {
    constexpr std::size_t kTokenOfSide[kSideCount][kSideCount] = {
        {0, 0, 0, 0}, {0, 1, 0, 1}, {0, 1, 2, 1}, {0, 1, 2, 3}};
    const auto tokens = RequiredTokens<kSideCount>(value);
    for (std::size_t side = 0; side < kSideCount; ++side)
        Add(names[side], tokens[kTokenOfSide[tokens.count() - 1][side]], Made::FromShorthand);
}

// Width, style and colour are looked for once each, in this order; a piece that is not what is
// looked for waits for the next. Pieces that are left are dropped.
void PropertyBuilder::AddBorder(unsigned firstSide, unsigned endSide, std::string_view value) {
    const auto tokens = RequiredTokens<kPartCount>(value);
    std::size_t next = 0;
    for (unsigned part = 0; part < kPartCount && next < tokens.count(); ++part) {
        if (!IsBorderPart(part, tokens[next])) continue;
        for (unsigned side = firstSide; side < endSide; ++side)
            Add(kBorders[part][side], tokens[next], Made::FromShorthand);
        ++next;
    }
}

// A colour, an image, and then a position of two pieces, a repetition and an attachment in any
// order; all of them are told by how they begin.
void PropertyBuilder::AddBackground(std::string_view value) {
    constexpr std::size_t kMostTokens = 5;
    const Tokens<kMostTokens> tokens(value);
    std::size_t next = 0;
    if (next < tokens.count() && !IsImage(tokens[next])) {
        Add("background-color", tokens[next++], Made::FromShorthand);
    }
    if (next == tokens.count() || !BeginsWithOneOf(tokens[next], "uUnN")) return;
    Add("background-image", tokens[next++], Made::FromShorthand);
    while (next < tokens.count()) {
        const std::string_view token = tokens[next++];
        if (next < tokens.count() && BeginsWithOneOf(token, "0123456789tTcCbB")) {
            Add("background-position", Joined(token, tokens[next++]), Made::FromShorthand);
        } else if (BeginsWithOneOf(token, "rRnN")) {
            Add("background-repeat", token, Made::FromShorthand);
        } else if (BeginsWithOneOf(token, "sSfF")) {
            Add("background-attachment", token, Made::FromShorthand);
        }
    }
}

// The names are those that AddShorthand() knows, in any case.
bool PropertyBuilder::AddExactShorthand(std::string_view name, std::string_view value) {
    const std::string_view* const known = FindShorthand(name);
    if (known == nullptr) return false;
    std::vector<Longhand> longhands;
    longhands.reserve(LonghandsOf(*known).size());
    if (!ExpandShorthand(*known, value, longhands)) return false;
    for (const Longhand& longhand : longhands)
        Add(longhand.name, longhand.value, Made::FromShorthand);
    return true;
}

}  // namespace Dom::CSS::detail
