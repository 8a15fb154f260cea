// SPDX-License-Identifier: MIT
//
// Associating Style Sheets with XML documents 1.0:
// [1] StyleSheetPI    ::= '<?xml-stylesheet' (S PseudoAtt)* S? '?>'
// [2] PseudoAtt       ::= Name S? '=' S? PseudoAttValue
// [3] PseudoAttValue  ::= ('"' ([^"<&] | CharRef | PredefEntityRef)* '"' | ...)
//
// The white space between two is not asked for, and "<" may stand in a value.
#include "dom/PseudoAttributes.h"

#include "xml/Utf8Append.h"
#include "xml/XmlCharacters.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <iterator>
#include <system_error>

namespace Dom::detail {

namespace {

constexpr std::string_view kSpace = " \t\n\r";

constexpr struct {
    std::string_view name;
    char character;
} kNamed[] = {{"amp", '&'}, {"apos", '\''}, {"gt", '>'}, {"lt", '<'}, {"quot", '"'}};

// All that is not ASCII counts as a letter, as nearly all of it is in names.
bool BeginsName(char character) {
    const bool isLetter =
        (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z');
    return isLetter || character == '_' || character == ':' ||
           static_cast<unsigned char>(character) >= 0x80;
}

bool IsInName(char character) {
    return BeginsName(character) || (character >= '0' && character <= '9') || character == '-' ||
           character == '.';
}

// Reads the number of a character: all of a text, which is not empty. Returns -1 when it is none.
int NumberIn(std::string_view digits, int base) {
    int number = 0;
    const char* const end = digits.data() + digits.size();
    // No sign: what is left of a number behind it would be one that nobody wrote.
    if (digits.starts_with('-')) return -1;
    const auto [stop, error] = std::from_chars(digits.data(), end, number, base);
    return error == std::errc() && stop == end ? number : -1;
}

}  // namespace

bool PseudoAttributes::Next() {
    SkipSpace();
    if (!ReadName()) return false;
    SkipSpace();
    if (!SkipCharacter('=')) return false;
    SkipSpace();
    return ReadValue();
}

void PseudoAttributes::SkipSpace() {
    rest_.remove_prefix(std::min(rest_.find_first_not_of(kSpace), rest_.size()));
}

bool PseudoAttributes::SkipCharacter(char character) {
    if (!rest_.starts_with(character)) return false;
    rest_.remove_prefix(1);
    return true;
}

bool PseudoAttributes::ReadName() {
    if (rest_.empty() || !BeginsName(rest_.front())) return false;
    const auto* const end = std::find_if_not(rest_.begin(), rest_.end(), IsInName);
    name_ = rest_.substr(0, static_cast<std::size_t>(end - rest_.begin()));
    rest_.remove_prefix(name_.size());
    return true;
}

bool PseudoAttributes::ReadValue() {
    if (rest_.empty()) return false;
    const char quote = rest_.front();
    if (quote != '"' && quote != '\'') return false;
    rest_.remove_prefix(1);
    const char stops[] = {quote, '&', '\0'};
    value_.clear();
    for (;;) {
        const std::size_t length = rest_.find_first_of(std::string_view(stops, 2));
        if (length == std::string_view::npos) return false;
        value_ += rest_.substr(0, length);
        rest_.remove_prefix(length);
        if (SkipCharacter(quote)) return true;
        if (!ReadReference()) return false;
    }
}

// [66] CharRef ::= '&#' [0-9]+ ';' | '&#x' [0-9a-fA-F]+ ';', or one of the five names.
bool PseudoAttributes::ReadReference() {
    const std::size_t end = rest_.find(';');
    if (end == std::string_view::npos) return false;
    std::string_view name = rest_.substr(1, end - 1);
    rest_.remove_prefix(end + 1);
    if (!name.starts_with('#')) {
        const auto* const found = std::find_if(std::begin(kNamed), std::end(kNamed),
                                               [name](const auto& n) { return n.name == name; });
        if (found == std::end(kNamed)) return false;
        value_ += found->character;
        return true;
    }
    name.remove_prefix(1);
    const bool isHexadecimal = name.starts_with('x');
    if (isHexadecimal) name.remove_prefix(1);
    const int code = NumberIn(name, isHexadecimal ? 16 : 10);
    if (code < 0 || !Xml::detail::IsXmlCharacter(code)) return false;
    Xml::detail::AppendUtf8(value_, code);
    return true;
}

}  // namespace Dom::detail
