// SPDX-License-Identifier: MIT
#include "dom/css/computed/ValuePieces.h"

#include "dom/css/AsciiCase.h"
#include "dom/css/CharacterFlags.h"
#include "dom/css/ComponentScanner.h"
#include "dom/css/CssCharacters.h"
#include "dom/css/NumberText.h"
#include "dom/css/TextCursor.h"

#include <algorithm>
#include <cstddef>

namespace Dom::CSS::detail {

namespace {

using Kind = Piece::Kind;

std::string_view TextBetween(const char* begin, const char* end) {
    return {begin, static_cast<std::size_t>(end - begin)};
}

// CSS Syntax Level 3 section 4.3.9.
bool BeginsName(const char* at) {
    if (*at == '-') {
        ++at;
        if (*at == '-') return true;
    }
    return Is(*at, kNameStart) || (*at == '\\' && IsEscape(at));
}

// Section 4.3.10.
bool BeginsNumber(const char* at) {
    if (*at == '+' || *at == '-') ++at;
    if (*at == '.') ++at;
    return Is(*at, kDigit);
}

const char* BehindDigits(const char* at) {
    while (Is(*at, kDigit))
        ++at;
    return at;
}

// Section 4.3.12. `isInteger` is whether there is neither a fraction nor an exponent.
const char* BehindNumber(const char* at, bool& isInteger) {
    isInteger = true;
    if (*at == '+' || *at == '-') ++at;
    at = BehindDigits(at);
    if (*at == '.' && Is(at[1], kDigit)) {
        isInteger = false;
        at = BehindDigits(at + 1);
    }
    if (*at != 'e' && *at != 'E') return at;
    const char* const sign = at + 1;
    const char* const digits = *sign == '+' || *sign == '-' ? sign + 1 : sign;
    if (!Is(*digits, kDigit)) return at;
    isInteger = false;
    return BehindDigits(digits);
}

double NumberOf(std::string_view text) {
    if (text.starts_with('+')) text.remove_prefix(1);
    return TakeDecimal(text).value_or(0);
}

// Tells whether a name needs no escapes.
bool IsPlainName(std::string_view name) {
    const std::size_t letter = name.find_first_not_of('-');
    return letter <= 1 && IsLetter(name[letter]) && std::ranges::all_of(name, IsInName);
}

// Tells whether there is a "var(" in a function, outside of strings.
bool HasVariable(std::string_view function) {
    constexpr std::string_view kVariable = "var";
    char quote = '\0';
    for (std::size_t i = 0; i < function.size(); ++i) {
        const char character = function[i];
        if (character == '\\') {
            ++i;
        } else if (quote != '\0') {
            if (character == quote) quote = '\0';
        } else if (character == '"' || character == '\'') {
            quote = character;
        } else if (character == '(' && i >= kVariable.size()) {
            const std::size_t begin = i - kVariable.size();
            const bool isWhole = begin == 0 || !Is(function[begin - 1], kName);
            if (isWhole && EqualIgnoringCase(function.substr(begin, kVariable.size()), kVariable)) {
                return true;
            }
        }
    }
    return false;
}

}  // namespace

ValuePieces::ValuePieces(std::string_view value) : text_(value) {
    constexpr std::size_t kFew = 8;
    pieces_.reserve(kFew);
    const char* at = text_.c_str();
    const char* const end = at + text_.size();
    for (;;) {
        ComponentScanner scanner(at);
        scanner.SkipSpace();
        at = scanner.At();
        if (at == end) return;
        if (Read(at)) continue;
        isWhole_ = false;
        return;
    }
}

bool ValuePieces::Read(const char*& at) {
    const char first = *at;
    if (first == ',' || first == '/') {
        pieces_.push_back({first == ',' ? Kind::Comma : Kind::Slash, false, 0, {at, 1}, {}});
        ++at;
        return true;
    }
    if (BeginsNumber(at)) return ReadNumber(at);
    if (BeginsName(at)) return ReadName(at);
    if (first == '"' || first == '\'') return ReadComponent(at, Kind::String, {});
    if (first == '(' || first == '[') return ReadComponent(at, Kind::Block, {});
    if (first != '#') return false;
    ComponentScanner scanner(at + 1);
    const std::string_view digits = scanner.SkipName();
    if (digits.empty()) return false;
    pieces_.push_back({Kind::Hash, false, 0, TextBetween(at, scanner.At()), digits});
    at = scanner.At();
    return true;
}

bool ValuePieces::ReadNumber(const char*& at) {
    Piece piece{Kind::Number};
    const char* const unit = BehindNumber(at, piece.isInteger);
    piece.number = NumberOf(TextBetween(at, unit));
    ComponentScanner scanner(unit);
    if (*unit == '%') {
        piece.kind = Kind::Percentage;
        scanner.Step();
    } else if (BeginsName(unit)) {
        piece.kind = Kind::Dimension;
        piece.name = WithoutEscapes(scanner.SkipName());
    }
    piece.text = TextBetween(at, scanner.At());
    pieces_.push_back(piece);
    at = scanner.At();
    return true;
}

// A keyword may have escapes, too; those who look at it later need not know.
bool ValuePieces::ReadName(const char*& at) {
    ComponentScanner scanner(at);
    const std::string_view written = scanner.SkipName();
    if (written.empty()) return false;
    const std::string_view name = WithoutEscapes(written);
    if (scanner.Front() == '(') {
        const bool isAddress = EqualIgnoringCase(name, "url");
        return ReadComponent(at, isAddress ? Kind::Address : Kind::Function, name);
    }
    pieces_.push_back({Kind::Ident, false, 0, IsPlainName(name) ? name : written, name});
    at = scanner.At();
    return true;
}

bool ValuePieces::ReadComponent(const char*& at, Kind kind, std::string_view name) {
    ComponentScanner scanner(at);
    const unsigned seen = scanner.ScanComponent();
    if ((seen & (ComponentScanner::kBad | ComponentScanner::kUnclosed)) != 0) return false;
    const std::string_view text = TextBetween(at, scanner.At());
    pieces_.push_back({kind, false, 0, text, name});
    if (kind == Kind::Function && HasVariable(text)) hasVariables_ = true;
    at = scanner.At();
    return true;
}

std::string_view ValuePieces::WithoutEscapes(std::string_view name) {
    if (name.find('\\') == std::string_view::npos) return name;
    TextCursor cursor(name);
    astring buffer;
    const std::string_view bare = detail::ReadName(cursor, buffer);
    return names_.emplace_front(bare);
}

// A function ends with a parenthesis, so no number is at the end of the text.
bool FindNumber(std::string_view& text, std::string_view& unit) {
    const char* const end = text.data() + text.size();
    const char* at = text.data();
    while (at != end) {
        if (BeginsName(at)) {
            ComponentScanner scanner(at);
            scanner.SkipName();
            at = std::max(at + 1, scanner.At());
        } else if (BeginsNumber(at)) {
            bool isInteger = false;
            at = BehindNumber(at, isInteger);
            ComponentScanner scanner(at);
            unit = *at == '%' ? std::string_view(at, 1) : scanner.SkipName();
            at += unit.size();
            text = TextBetween(at, end);
            return true;
        } else {
            ++at;
        }
    }
    return false;
}

astring TextOf(std::span<const Piece> pieces) {
    astring text;
    for (const Piece& piece : pieces) {
        if (!text.empty() && piece.kind != Kind::Comma) text += ' ';
        text += piece.text;
    }
    return text;
}

}  // namespace Dom::CSS::detail
