// SPDX-License-Identifier: MIT
#include "dom/css/computed/VariableSubstitution.h"

#include "dom/css/AsciiCase.h"
#include "dom/css/CssCharacters.h"
#include "dom/css/TextCursor.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

// A value is gone through once. What is open, a bracket or a "var()", is in a list, so that nesting
// takes no recursion:
//
//     var( --a , fallback )
//         |     |         |
//         |     |         the fallback is cut off again when the variable has a value
//         |     its name is known: what is in front of the fallback is what it adds to
//         the list gets an entry
//
// A fallback that is not needed is looked through all the same: the brackets in it must match, and
// what is no "var()" there makes the value wrong, too; but variables in it need no value.

namespace Dom::CSS::detail {

namespace {

constexpr std::string_view kVar = "var(";

// Moves behind a string, a comment or an escape, or behind one other byte.
void SkipUnit(TextCursor& cursor) {
    const char front = *cursor.at++;
    if (front == '"' || front == '\'') {
        while (cursor.at != cursor.end && *cursor.at != front) {
            if (*cursor.at == '\\' && cursor.at + 1 != cursor.end) ++cursor.at;
            ++cursor.at;
        }
        if (cursor.at != cursor.end) ++cursor.at;
    } else if (front == '/' && cursor.Front() == '*') {
        const std::string_view rest(cursor.at, static_cast<std::size_t>(cursor.end - cursor.at));
        const std::size_t end = rest.find("*/", 1);
        cursor.at = end == rest.npos ? cursor.end : cursor.at + end + 2;
    } else if (front == '\\' && cursor.at != cursor.end) {
        ++cursor.at;
    }
}

// Skips blanks and comments.
void SkipSpace(TextCursor& cursor) {
    while (SkipBlanks(cursor) ||
           (cursor.end - cursor.at >= 2 && cursor.at[0] == '/' && cursor.at[1] == '*')) {
        if (cursor.Front() == '/') SkipUnit(cursor);
    }
}

// Moves behind "url(...)" without quotes, where the cursor is behind "url(" (CSS Syntax Level 3
// section 4.3.6); with quotes it is a function like others.
void SkipAddress(TextCursor& cursor) {
    TextCursor inside = cursor;
    SkipBlanks(inside);
    if (inside.Front() == '"' || inside.Front() == '\'') return;
    while (cursor.at != cursor.end && *cursor.at != ')') {
        if (*cursor.at == '\\' && cursor.at + 1 != cursor.end) ++cursor.at;
        ++cursor.at;
    }
    if (cursor.at != cursor.end) ++cursor.at;
}

// What can begin at a place in a text.
enum class Piece { Variable, Address, Opening, Closing, Name, Other };

// Tells what begins at the cursor, and moves it behind names, their parenthesis and brackets.
Piece ReadPiece(TextCursor& cursor) {
    const char front = cursor.Front();
    if (front == '(' || front == '[' || front == '{') {
        ++cursor.at;
        return Piece::Opening;
    }
    if (front == ')' || front == ']' || front == '}') {
        ++cursor.at;
        return Piece::Closing;
    }
    const char* const begin = cursor.at;
    SkipUnit(cursor);
    // "#var" and "@var" are tokens of their own, as is "1var".
    if (!Is(front, kName) && front != '\\' && front != '#' && front != '@') return Piece::Other;
    while (cursor.at != cursor.end && (cursor.IsAt(kName) || *cursor.at == '\\'))
        SkipUnit(cursor);
    const std::string_view name = cursor.Since(begin);
    if (cursor.Front() != '(') return Piece::Name;
    ++cursor.at;
    if (EqualIgnoringCase(name, kVar.substr(0, kVar.size() - 1))) return Piece::Variable;
    return EqualIgnoringCase(name, "url") ? Piece::Address : Piece::Opening;
}

// Tells whether two texts, of which these are the ends, would become one token.
bool WouldJoin(char last, char first) {
    return (Is(last, kName) || last == '#' || last == '@' || last == '.') &&
           (Is(first, kName) || first == '(' || first == '%' || first == '.');
}

char ClosingOf(char opening) { return opening == '(' ? ')' : opening == '[' ? ']' : '}'; }

class Substitution {
public:
    Substitution(std::string_view value, const VariableLookup& lookup, std::size_t most)
        : cursor_(value), lookup_(lookup), most_(most) {}

    std::optional<astring> Run();

private:
    // What is open.
    struct Open {
        char closing;
        bool isVariable;
        bool hasValue;       // of a variable: its fallback is not needed
        std::size_t length;  // of the result, where a fallback that is not needed begins
    };

    bool TakePiece();
    bool OpenVariable();
    bool Close(char closing);
    bool Append(std::string_view text);
    bool IsSkipping() const { return skipped_ > 0; }

    TextCursor cursor_;
    const VariableLookup& lookup_;
    const std::size_t most_;
    astring result_;
    bool isAtSeam_ = false;  // the result ends with what a variable stood for, or goes on with it
    std::vector<Open> open_;
    std::size_t skipped_ = 0;  // fallbacks that are open and not needed
};

std::optional<astring> Substitution::Run() {
    while (cursor_.at != cursor_.end) {
        if (!TakePiece()) return {};
    }
    for (const Open& open : open_) {
        if (open.isVariable) return {};
    }
    return std::move(result_);
}

// Tokens stay apart where a variable begins or ends (CSS Custom Properties Level 1 section 3).
bool Substitution::Append(std::string_view text) {
    if (text.empty()) return true;
    if (isAtSeam_ && !result_.empty() && WouldJoin(result_.back(), text.front())) result_ += ' ';
    isAtSeam_ = false;
    if (text.size() > most_ - std::min(result_.size(), most_)) return false;
    result_ += text;
    return true;
}

bool Substitution::TakePiece() {
    const char* const begin = cursor_.at;
    const Piece piece = ReadPiece(cursor_);
    if (piece == Piece::Variable) return OpenVariable();
    if (piece == Piece::Address) {
        SkipAddress(cursor_);
        // With quotes it is open still.
        if (cursor_.at[-1] == '(') open_.push_back({')', false, false, 0});
    } else if (piece == Piece::Opening) {
        open_.push_back({ClosingOf(cursor_.at[-1]), false, false, 0});
    } else if (piece == Piece::Closing) {
        const bool isOfVariable = !open_.empty() && open_.back().isVariable;
        if (!Close(*begin)) return false;
        if (isOfVariable) return true;
    }
    return IsSkipping() || Append(cursor_.Since(begin));
}

// CSS Custom Properties Level 1 section 3: var( <custom-property-name> [, <declaration-value>? ]? )
// Entered behind the parenthesis.
bool Substitution::OpenVariable() {
    SkipSpace(cursor_);
    astring buffer;
    const std::string_view name = ReadName(cursor_, buffer);
    if (!name.starts_with("--") || name.size() <= 2) return false;
    SkipSpace(cursor_);
    const char front = cursor_.Front();
    if (front != ',' && front != ')') return false;
    ++cursor_.at;
    bool hasValue = IsSkipping();
    if (!IsSkipping()) {
        const std::optional<std::string_view> value = lookup_(name);
        hasValue = value.has_value();
        isAtSeam_ = true;
        if (value && !Append(Trimmed(*value))) return false;
        isAtSeam_ = true;
        if (!value && front == ')') return false;
    }
    if (front == ')') return true;
    SkipSpace(cursor_);
    open_.push_back({')', true, hasValue, result_.size()});
    if (hasValue) ++skipped_;
    return true;
}

bool Substitution::Close(char closing) {
    if (open_.empty()) return false;
    const Open open = open_.back();
    if (open.closing != closing) return false;
    open_.pop_back();
    isAtSeam_ = isAtSeam_ || open.isVariable;
    if (open.isVariable && open.hasValue) {
        --skipped_;
    } else if (open.isVariable) {
        // Blanks at the end of a fallback are no part of it.
        while (result_.size() > open.length && IsSpace(result_.back()))
            result_.resize(result_.size() - 1);
    }
    return true;
}

}  // namespace

bool HasVariables(std::string_view value) {
    if (value.find('(') == value.npos) return false;
    TextCursor cursor(value);
    while (cursor.at != cursor.end) {
        const Piece piece = ReadPiece(cursor);
        if (piece == Piece::Variable) return true;
        if (piece == Piece::Address) SkipAddress(cursor);
    }
    return false;
}

std::optional<astring> SubstituteVariables(std::string_view value, const VariableLookup& lookup,
                                           std::size_t most) {
    return Substitution(value, lookup, most).Run();
}

}  // namespace Dom::CSS::detail
