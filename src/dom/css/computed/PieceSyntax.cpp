// SPDX-License-Identifier: MIT
#include "dom/css/computed/PieceSyntax.h"

#include "dom/css/AsciiCase.h"
#include "dom/css/CharacterFlags.h"
#include "dom/css/TextCursor.h"
#include "dom/css/computed/ColorNames.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace Dom::CSS::detail {

namespace {

using Kind = Piece::Kind;

// CSS Values Level 4 section 6; those relative to containers are of CSS Contain Level 3.
constexpr std::string_view kLengthUnits =
    "px em rem ex ch cap ic lh rlh vw vh vi vb vmin vmax svw svh svi svb svmin svmax lvw lvh lvi "
    "lvb lvmin lvmax dvw dvh dvi dvb dvmin dvmax cqw cqh cqi cqb cqmin cqmax cm mm q in pt pc";
constexpr std::string_view kTimeUnits = "s ms";
constexpr std::string_view kAngleUnits = "deg grad rad turn";

// Section 10.
constexpr std::string_view kMathFunctions =
    "calc min max clamp round mod rem sin cos tan asin acos atan atan2 pow sqrt hypot log exp abs "
    "sign";
// CSS Environment Variables Level 1: may be anything.
constexpr std::string_view kEnvironment = "env";

constexpr std::string_view kColorFunctions =
    "rgb rgba hsl hsla hwb lab lch oklab oklch color color-mix light-dark";

// CSS Images Level 4.
constexpr std::string_view kImageFunctions =
    "linear-gradient repeating-linear-gradient radial-gradient repeating-radial-gradient "
    "conic-gradient repeating-conic-gradient image image-set cross-fade element";

// What colours are besides those that have a name: CSS Color Level 4 section 6.2 and appendix A,
// with those of CSS 2.1 section 18.2.
constexpr std::string_view kColorKeywords =
    "transparent currentcolor accentcolor accentcolortext activetext buttonborder buttonface "
    "buttontext canvas canvastext field fieldtext graytext highlight highlighttext linktext mark "
    "marktext selecteditem selecteditemtext visitedtext activeborder activecaption appworkspace "
    "background buttonhighlight buttonshadow captiontext inactiveborder inactivecaption "
    "inactivecaptiontext infobackground infotext menu menutext scrollbar threeddarkshadow "
    "threedface threedhighlight threedlightshadow threedshadow window windowframe windowtext";

constexpr std::string_view kWideKeywords = "inherit initial unset revert revert-layer";

bool HasWord(std::string_view words, std::string_view word) {
    while (!words.empty()) {
        const std::size_t length = std::min(words.find(' '), words.size());
        if (length == word.size() && EqualIgnoringCase(words.substr(0, length), word)) return true;
        words.remove_prefix(std::min(length + 1, words.size()));
    }
    return false;
}

bool IsColorName(std::string_view name) {
    return NamedColor(name).has_value() || HasWord(kColorKeywords, name);
}

bool IsHexColor(std::string_view digits) {
    const std::size_t count = digits.size();
    return (count == 3 || count == 4 || count == 6 || count == 8) &&
           std::ranges::all_of(digits, [](char digit) { return HexDigit(digit) >= 0; });
}

// A name that the author may make up is none that stands for something everywhere.
bool IsMadeUp(std::string_view name) {
    return !HasWord(kWideKeywords, name) && !EqualIgnoringCase(name, "default");
}

bool FitsNumber(const Piece& piece, unsigned types) {
    if ((types & kNumberPiece) != 0) return true;
    if ((types & kIntegerPiece) != 0 && piece.isInteger) return true;
    return (types & kLengthPiece) != 0 && piece.number == 0;
}

bool FitsDimension(const Piece& piece, unsigned types) {
    return ((types & kLengthPiece) != 0 && HasWord(kLengthUnits, piece.name)) ||
           ((types & kTimePiece) != 0 && HasWord(kTimeUnits, piece.name)) ||
           ((types & kAnglePiece) != 0 && HasWord(kAngleUnits, piece.name));
}

// What is calculated is of the type that the units in it are of. Angles may be there for others.
bool FitsMath(std::string_view text, unsigned types) {
    unsigned found = 0;
    for (std::string_view unit; FindNumber(text, unit);) {
        if (unit == "%") {
            found |= kPercentagePiece;
        } else if (HasWord(kLengthUnits, unit)) {
            found |= kLengthPiece;
        } else if (HasWord(kTimeUnits, unit)) {
            found |= kTimePiece;
        } else if (HasWord(kAngleUnits, unit)) {
            found |= types & kAnglePiece;
        } else if (!unit.empty()) {
            return false;
        }
    }
    if (found == 0) return (types & (kNumberPiece | kIntegerPiece)) != 0;
    return (found & ~types) == 0;
}

bool FitsFunction(const Piece& function, const PieceSyntax& syntax) {
    constexpr unsigned kCalculated =
        kLengthPiece | kPercentagePiece | kNumberPiece | kIntegerPiece | kTimePiece | kAnglePiece;
    const std::string_view name = function.name;
    if ((syntax.types & kCalculated) != 0) {
        if (EqualIgnoringCase(name, kEnvironment)) return true;
        if (HasWord(kMathFunctions, name)) return FitsMath(function.text, syntax.types);
    }
    return ((syntax.types & kColorPiece) != 0 && HasWord(kColorFunctions, name)) ||
           ((syntax.types & kImagePiece) != 0 && HasWord(kImageFunctions, name)) ||
           HasWord(syntax.functions, name);
}

}  // namespace

bool IsKeyword(const Piece& piece, std::string_view keywords) {
    return piece.kind == Kind::Ident && HasWord(keywords, piece.name);
}

bool IsWideKeyword(const Piece& piece) { return IsKeyword(piece, kWideKeywords); }

bool Fits(const Piece& piece, const PieceSyntax& syntax) {
    const unsigned types = syntax.types;
    const bool isInRange = (types & kNotNegative) == 0 || piece.number >= 0;
    switch (piece.kind) {
    case Kind::Ident:
        return HasWord(syntax.keywords, piece.name) ||
               ((types & kColorPiece) != 0 && IsColorName(piece.name)) ||
               ((types & kNamePiece) != 0 && IsMadeUp(piece.name));
    case Kind::Number: return isInRange && FitsNumber(piece, types);
    case Kind::Percentage: return isInRange && (types & kPercentagePiece) != 0;
    case Kind::Dimension: return isInRange && FitsDimension(piece, types);
    case Kind::Hash: return (types & kColorPiece) != 0 && IsHexColor(piece.name);
    case Kind::String: return (types & kStringPiece) != 0;
    case Kind::Address: return (types & kImagePiece) != 0;
    case Kind::Function: return FitsFunction(piece, syntax);
    case Kind::Block:
    case Kind::Comma:
    case Kind::Slash: return false;
    }
    return false;
}

}  // namespace Dom::CSS::detail
